#include "evaluation/Json.h"

#include <charconv>
#include <cmath>

namespace {

void Append(std::string& strText, double dNumber) {
    if (!std::isfinite(dNumber)) {
        strText += "null";
        return;
    }
    char text[32];
    // 0 may come with a sign.
    const auto end = std::to_chars(text, text + sizeof text, dNumber == 0 ? 0 : dNumber).ptr;
    strText.append(text, end);
}

void Append(std::string& strText, const Json& value) {
    if (value.is_number_float()) {
        Append(strText, value.get<double>());
        return;
    }
    if (!value.is_structured()) {
        strText += value.dump(-1, ' ', false, Json::error_handler_t::replace);
        return;
    }
    strText += value.is_object() ? '{' : '[';
    bool bFirst = true;
    for (const auto& [strKey, member] : value.items()) {
        if (!bFirst) strText += ", ";
        bFirst = false;
        if (value.is_object()) strText += Json(strKey).dump() + ": ";
        Append(strText, member);
    }
    strText += value.is_object() ? '}' : ']';
}

}  // namespace

std::string WriteJson(const Json& value) {
    std::string strText;
    Append(strText, value);
    return strText;
}
