#include "platform/windows/KeyboardCalls.h"

#include "platform/system/DynamicLibrary.h"

namespace {

constexpr const wchar_t* LIBRARY = L"OnscreenKeyboard.dll";

}  // namespace

BYTE CallKeyboard(const std::wstring& strError, const std::wstring& strTitle,
                  std::wstring* pValue) {
    const CDynamicLibrary library(LIBRARY);
    auto* const pShowKeyboard = library.GetFunction<ShowKeyboardFunction>("ShowKeyboard");
    if (!pShowKeyboard) return 0;
    BYTE aFlags[3] = {};
    return pShowKeyboard(&strError, &strTitle, pValue, &aFlags[0], &aFlags[1], &aFlags[2]);
}

BYTE CallNumberPad(const std::wstring& strTitle, const std::wstring& strInitial,
                   std::wstring* pResult, double* pNumber, BYTE nOption1, BYTE nOption2) {
    const CDynamicLibrary library(LIBRARY);
    auto* const pShowNumberPad = library.GetFunction<ShowNumberPadFunction>("ShowNumberPad");
    if (!pShowNumberPad) return 0;
    return pShowNumberPad(strTitle, strInitial, pResult, pNumber, &nOption1, &nOption2);
}
