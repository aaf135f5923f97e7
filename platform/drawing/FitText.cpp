#include "platform/drawing/FitText.h"

#include <QFontMetrics>
#include <QStringList>
#include <algorithm>

#include "platform/drawing/qt/Surface.h"

namespace {

/// Far more than there is room for; what is measured again and again is not to be longer.
constexpr qsizetype MAX_LENGTH = 4000;
const QChar ELLIPSIS(0x2026);

/// How many units of a text make its first row; at least one.
qsizetype FindRowEnd(QStringView text, const QFontMetrics& metrics, int nWidth) {
    qsizetype nFits = 0;
    qsizetype nBeyond = text.size() + 1;
    while (nBeyond - nFits > 1) {
        const qsizetype nMiddle = (nFits + nBeyond) / 2;
        if (metrics.horizontalAdvance(text.first(nMiddle).toString()) <= nWidth)
            nFits = nMiddle;
        else
            nBeyond = nMiddle;
    }
    if (nFits == text.size()) return nFits;
    // A row that would be left half empty breaks in the middle of a word instead.
    for (qsizetype n = nFits; n > nFits / 2; --n)
        if (text[n - 1] == QLatin1Char(' ') || text[n - 1] == QLatin1Char('/')) return n;
    if (nFits > 1 && text[nFits - 1].isHighSurrogate()) --nFits;
    return std::max<qsizetype>(nFits, 1);
}

QStringList BreakRows(QStringView text, const QFontMetrics& metrics, int nWidth) {
    QStringList rows;
    while (!text.isEmpty()) {
        const qsizetype nEnd = FindRowEnd(text, metrics, nWidth);
        rows << text.first(nEnd).toString();
        text = text.sliced(nEnd);
    }
    return rows;
}

}  // namespace

std::wstring FitText(const std::wstring& strText, const CFont& font, int nWidth, int nMaxRows) {
    const QFontMetrics metrics(ToQFont(font));
    QString text = QString::fromStdWString(strText).replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (text.size() > MAX_LENGTH)
        text = text.first(MAX_LENGTH / 2) + ELLIPSIS + text.last(MAX_LENGTH / 2);
    QStringList rows = BreakRows(text, metrics, nWidth);
    // Rows that break early leave less room than their widths add up to.
    for (int nRoom = nWidth * nMaxRows; rows.size() > nMaxRows && nRoom > 0;
         nRoom -= nWidth / 16 + 1)
        rows = BreakRows(metrics.elidedText(text, Qt::ElideMiddle, nRoom), metrics, nWidth);
    return rows.first(std::min<qsizetype>(rows.size(), nMaxRows))
        .join(QLatin1Char('\n'))
        .toStdWString();
}
