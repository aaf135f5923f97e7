#include "host/FitText.h"

std::wstring LeaveOutMiddle(const CDC& dc, const std::wstring& strText, std::size_t nHead,
                            int nWidth) {
    if (dc.GetTextExtent(strText).cx <= nWidth) return strText;
    const auto keep = [&](std::size_t nKept) {
        const std::size_t nEnd = nKept / 2;
        return strText.substr(0, nHead + nKept - nEnd) + L'\u2026' +
               strText.substr(strText.size() - nEnd);
    };
    std::size_t nFits = 0;
    std::size_t nTooMany = strText.size() - nHead;
    while (nTooMany - nFits > 1) {
        const std::size_t nTried = nFits + (nTooMany - nFits) / 2;
        (dc.GetTextExtent(keep(nTried)).cx <= nWidth ? nFits : nTooMany) = nTried;
    }
    return keep(nFits);
}
