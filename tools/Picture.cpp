#include "tools/Picture.h"

#include <algorithm>

#include "platform/commandline/CommandLine.h"
#include "platform/drawing/DisplayScale.h"

namespace {

constexpr int MAX_EXTENT = 10000;
constexpr int SVG_UNITS_PER_PIXEL = 1;
/// Below it the texts of a plot, 12 pixels high, cannot be read.
constexpr double MIN_SCALE = 0.85;

bool EndsWithSvg(const std::wstring& strPath) {
    const std::wstring strEnd =
        strPath.substr(strPath.size() - std::min<std::size_t>(strPath.size(), 4));
    return std::ranges::equal(strEnd, std::wstring_view(L".svg"), {},
                              [](wchar_t ch) { return ch >= L'A' && ch <= L'Z' ? ch + 32 : ch; });
}

}  // namespace

CSize ReadPictureSize(const std::string& strText) {
    const std::size_t nCross = strText.find('x');
    if (nCross == std::string::npos)
        throw CUsageError("'" + strText + "' is not WIDTHxHEIGHT, as in 698x343");
    const auto read = [](const std::string& strExtent) {
        return static_cast<int>(ReadNumber(strExtent, true, 1, MAX_EXTENT));
    };
    return {read(strText.substr(0, nCross)), read(strText.substr(nCross + 1))};
}

PictureFormat ReadPictureFormat(const std::string& strText) {
    if (strText == "png") return PictureFormat::Png;
    if (strText == "svg") return PictureFormat::Svg;
    throw CUsageError("'" + strText + "' is not one of png, svg");
}

PictureFormat FindPictureFormat(const std::wstring& strPath) {
    return EndsWithSvg(strPath) ? PictureFormat::Svg : PictureFormat::Png;
}

const wchar_t* GetExtension(PictureFormat format) {
    return format == PictureFormat::Svg ? L".svg" : L".png";
}

int GetUnitsPerPixel(PictureFormat format) {
    return format == PictureFormat::Svg ? SVG_UNITS_PER_PIXEL : 1;
}

void ScaleToPicture(PictureFormat format, CSize size, CSize design) {
    const double dScale = std::min(static_cast<double>(size.cx) / design.cx,
                                   static_cast<double>(size.cy) / design.cy);
    SetDisplayScale(std::max(dScale, MIN_SCALE) * GetUnitsPerPixel(format));
}

CPicture::CPicture(PictureFormat format, CSize extent) : m_extent(extent) {
    if (format == PictureFormat::Svg) {
        m_pSvg = std::make_unique<CSvgDC>(extent, SVG_UNITS_PER_PIXEL);
        return;
    }
    m_bitmap.CreateBitmap(extent.cx, extent.cy);
    m_pixelDC.SelectBitmap(&m_bitmap);
}

void CPicture::DrawPart(CPoint corner, CPicture& part) {
    if (m_pSvg && part.m_pSvg)
        m_pSvg->DrawPicture(corner, *part.m_pSvg);
    else
        m_pixelDC.CopyRect(corner.x, corner.y, part.m_extent.cx, part.m_extent.cy, &part.m_pixelDC,
                           0, 0);
}

std::vector<BYTE> CPicture::Encode() { return m_pSvg ? m_pSvg->EncodeSvg() : m_bitmap.EncodePng(); }
