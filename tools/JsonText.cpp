#include "tools/JsonText.h"

#include <charconv>

#include "platform/system/Text.h"

std::string QuoteJson(std::wstring_view strText) {
    constexpr const char* HEX = "0123456789abcdef";
    std::string strQuoted = "\"";
    for (const wchar_t c : strText) {
        if (c == L'"' || c == L'\\') {
            strQuoted += '\\';
            strQuoted += static_cast<char>(c);
        } else if (c < 0x20) {
            strQuoted += "\\u00";
            strQuoted += HEX[c >> 4];
            strQuoted += HEX[c & 0xF];
        } else {
            // A stray byte of a file name stands as a code point that must not reach the text.
            const bool bSurrogate = c >= 0xD800 && c <= 0xDFFF;
            strQuoted += ToUtf8(std::wstring(1, bSurrogate ? L'\uFFFD' : c));
        }
    }
    return strQuoted += '"';
}

std::string ToJson(double dValue) {
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, dValue).ptr};
}

std::string MakeJsonObject(const std::vector<std::pair<const char*, std::string>>& members) {
    std::string strObject;
    for (const auto& [pName, strValue] : members)
        strObject += (strObject.empty() ? "{\"" : ",\"") + std::string(pName) + "\":" + strValue;
    return strObject.empty() ? "{}" : strObject + "}";
}

std::string MakeJsonArray(const std::vector<std::string>& elements) {
    std::string strArray;
    for (const std::string& strElement : elements)
        strArray += (strArray.empty() ? "[" : ",") + strElement;
    return strArray.empty() ? "[]" : strArray + "]";
}
