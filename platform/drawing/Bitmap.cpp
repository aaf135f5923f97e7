#include <QBuffer>
#include <QPainter>
#include <QSvgRenderer>

#include "platform/drawing/Graphics.h"
#include "platform/drawing/qt/Surface.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/system/Exceptions.h"
#include "platform/system/File.h"

namespace {

/// A drawing may state any size; its pixels stay within this one.
constexpr int MAX_NATURAL_SIZE = 1024;

QImage Rasterise(QSvgRenderer& drawing) {
    QSize size = drawing.defaultSize();
    if (size.width() > MAX_NATURAL_SIZE || size.height() > MAX_NATURAL_SIZE)
        size.scale(MAX_NATURAL_SIZE, MAX_NATURAL_SIZE, Qt::KeepAspectRatio);
    QImage pixels(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    drawing.render(&painter);
    return pixels;
}

}  // namespace

CBitmap::CBitmap() = default;
CBitmap::CBitmap(std::unique_ptr<Image> pImage) : m_pImage(std::move(pImage)) {}
CBitmap::~CBitmap() = default;
CBitmap::CBitmap(CBitmap&&) noexcept = default;
CBitmap& CBitmap::operator=(CBitmap&&) noexcept = default;

CBitmap::CBitmap(const CBitmap& other)
    : m_pImage(other.m_pImage ? std::make_unique<Image>(*other.m_pImage) : nullptr) {}

CBitmap& CBitmap::operator=(const CBitmap& other) {
    if (this != &other) *this = CBitmap(other);
    return *this;
}

CBitmap::operator bool() const { return m_pImage != nullptr; }

void CBitmap::CreateBitmap(int cx, int cy) {
    m_pImage.reset();
    if (cx <= 0 || cy <= 0) return;
    auto pImage = std::make_unique<Image>();
    pImage->m_pixels = QImage(cx, cy, QImage::Format_RGB32);
    if (pImage->m_pixels.isNull()) throw CMemoryException();
    m_pImage = std::move(pImage);
}

bool CBitmap::LoadBitmap(const CDynamicLibrary& library, UINT nID) {
    m_pImage.reset();
    auto* pFind = library.GetFunction<FindPictureFunction>("FindPicture");
    std::size_t nSize = 0;
    const unsigned char* pBytes = pFind ? pFind(nID, &nSize) : nullptr;
    if (!pBytes) return false;

    // The library may be unloaded before the picture is drawn: nothing points into it afterwards.
    const QByteArray bytes(reinterpret_cast<const char*>(pBytes), static_cast<qsizetype>(nSize));
    auto pImage = std::make_unique<Image>();
    if (bytes.startsWith("\x89PNG")) {
        pImage->m_pixels =
            QImage::fromData(bytes, "PNG").convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (pImage->m_pixels.isNull()) return false;
    } else {
        pImage->m_pDrawing = std::make_shared<QSvgRenderer>(bytes);
        if (!pImage->m_pDrawing->isValid()) return false;
        pImage->m_pixels = Rasterise(*pImage->m_pDrawing);
    }
    m_pImage = std::move(pImage);
    return true;
}

CSize CBitmap::GetSize() const {
    if (!m_pImage) return {};
    return {m_pImage->m_pixels.width(), m_pImage->m_pixels.height()};
}

COLORREF CBitmap::GetPixel(int x, int y) const { return ToColor(m_pImage->m_pixels.pixel(x, y)); }

std::vector<BYTE> CBitmap::EncodePng() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (m_pImage) m_pImage->m_pixels.save(&buffer, "PNG");
    return {bytes.begin(), bytes.end()};
}

void CBitmap::SavePng(const std::wstring& strPath) const {
    const std::vector<BYTE> bytes = EncodePng();
    CFile file(strPath, CFile::modeCreate | CFile::modeWrite);
    file.Write(bytes.data(), bytes.size());
    file.Close();
}
