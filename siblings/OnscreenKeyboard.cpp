#include "siblings/OnscreenKeyboard.h"

#include "siblings/KeyboardWindow.h"
#include "siblings/NumberPadWindow.h"

unsigned char ShowKeyboard(const std::wstring* pError, const std::wstring* pTitle,
                           std::wstring* pValue, unsigned char*, unsigned char*, unsigned char*) {
    CKeyboardWindow window(pTitle ? *pTitle : std::wstring(), pError ? *pError : std::wstring(),
                           pValue ? *pValue : std::wstring());
    if (window.DoModal() != IDOK) return 0;
    if (pValue) *pValue = window.GetText();
    return 1;
}

// Its texts come by value, as the callers of the library pass them.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
unsigned char ShowNumberPad(std::wstring strTitle, std::wstring strInitial, std::wstring* pResult,
                            double* pNumber, unsigned char* pOption1, unsigned char*) {
    CNumberPadWindow window(strTitle, strInitial, pOption1 && *pOption1 ? 3 : 1);
    if (window.DoModal() != IDOK) return 0;
    if (pResult) *pResult = window.GetValue().m_strText;
    if (pNumber) *pNumber = window.GetValue().m_dNumber;
    return 1;
}
