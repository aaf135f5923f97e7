#include "platform/system/NumberedText.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace {

std::mutex g_mutex;

/// The youngest last.
std::vector<const CTextSource*>& Sources() {
    static std::vector<const CTextSource*> sources;
    return sources;
}

std::wstring FindWords(const NumberedText& text) {
    const std::lock_guard lock(g_mutex);
    const std::wstring* const pText =
        Sources().empty() ? nullptr : Sources().back()->m_findText(text.m_nString);
    return pText ? *pText : text.m_pEnglish;
}

}  // namespace

CTextSource::CTextSource(FindText findText) : m_findText(std::move(findText)) {
    const std::lock_guard lock(g_mutex);
    Sources().push_back(this);
}

CTextSource::~CTextSource() {
    const std::lock_guard lock(g_mutex);
    std::erase(Sources(), this);
}

std::wstring FillText(const std::wstring& strWords, std::span<const std::wstring> arguments) {
    std::wstring strText;
    for (std::size_t n = 0; n < strWords.size(); ++n) {
        const std::size_t nArgument =
            strWords[n] == L'%' && n + 1 < strWords.size()
                ? static_cast<std::size_t>(strWords[n + 1]) - static_cast<std::size_t>(L'1')
                : arguments.size();
        if (nArgument < arguments.size()) {
            strText += arguments[nArgument];
            ++n;
        } else {
            strText += strWords[n];
        }
    }
    return strText;
}

std::wstring GetText(const NumberedText& text, std::initializer_list<std::wstring> arguments) {
    return FillText(FindWords(text), {arguments.begin(), arguments.size()});
}
