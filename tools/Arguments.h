// The command line of one command, taken apart.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// A command line that makes no sense. The text says why, in UTF-8.
class CUsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// An option that a command knows.
struct OptionRule {
    const wchar_t* m_pName;   ///< such as "--channel"
    const wchar_t* m_pShort;  ///< such as "-o"; null: none
    bool m_bTakesValue;       ///< from the next argument, or behind "=" of a long name
    std::function<void(const std::wstring& strValue)> m_apply;
};

/// Applies the options in their order and returns the other arguments, the files. A "--" ends the
/// options; a "-" is a file.
/// @throws CUsageError
std::vector<std::wstring> ReadArguments(const std::vector<std::wstring>& arrArguments,
                                        const std::vector<OptionRule>& rules);

/// @throws CUsageError when the text is no whole number from nMin to nMax
unsigned ReadNumber(const std::wstring& strOption, const std::wstring& strText, unsigned nMin,
                    unsigned nMax);
