#include "platform/commandline/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "platform/system/Exceptions.h"

namespace {

constexpr std::size_t HELP_COLUMN = 30;
constexpr std::size_t HELP_WIDTH = 66;

constexpr const char* CONCLUSION =
    "\nDefaults stand in brackets. Exit code: 0, 1 when something failed, 2 when the command line\n"
    "cannot be carried out.\n";

/// The text in lines of the help's width.
std::string Wrap(std::string strText) {
    for (std::size_t nLine = 0; strText.size() - nLine > HELP_WIDTH;) {
        const std::size_t nSpace = strText.rfind(' ', nLine + HELP_WIDTH);
        if (nSpace == std::string::npos || nSpace < nLine) break;
        strText[nSpace] = '\n';
        nLine = nSpace + 1;
    }
    return strText;
}

std::string DescribeRange(double dMin, double dMax) {
    const auto format = [](double d) {
        char text[32];
        const auto end = std::to_chars(text, text + sizeof text, d, std::chars_format::general, 10);
        return std::string(text, end.ptr);
    };
    return format(dMin) + " to " + format(dMax);
}

CUsageError MakeEmptyError(const CLI::Option& option) {
    return CUsageError(option.get_name() + ": its " + option.get_option_text() + " is empty");
}

/// Values behind "=" where none may stand, or none stands.
void CheckAssignment(const CLI::App& app, const std::string& strArgument) {
    const std::size_t nEquals = strArgument.find('=');
    const CLI::Option* const pOption =
        nEquals == std::string::npos ? nullptr
                                     : app.get_option_no_throw(strArgument.substr(0, nEquals));
    if (pOption == nullptr) return;
    if (pOption->get_expected_max() == 0)
        throw CUsageError(pOption->get_name() + " takes no argument");
    if (nEquals + 1 == strArgument.size()) throw MakeEmptyError(*pOption);
}

}  // namespace

CCommandLine::CCommandLine(const char* pUsage, const char* pAbout)
    : m_strProgram(pUsage, std::strcspn(pUsage, " ")),
      m_strIntroduction(std::string("usage: ") + pUsage + "\n\n" + pAbout),
      m_pApp(std::make_unique<CLI::App>()) {
    m_pApp->set_help_flag();
    m_pApp->allow_extras();
}

CCommandLine::~CCommandLine() = default;

void CCommandLine::AddFlag(const char* pNames, bool& bValue, const char* pHelp) {
    m_pApp->add_flag(pNames, bValue, Wrap(pHelp));
}

void CCommandLine::Add(const char* pNames, const char* pArgument, const std::string& strHelp,
                       bool bRepeated, std::function<void(const std::string& strValue)> apply) {
    CLI::Option* const pOption = m_pApp->add_option(pNames, CLI::callback_t(), Wrap(strHelp));
    pOption->option_text(pArgument);
    bRepeated ? pOption->take_all() : pOption->take_last();
    pOption->each([pOption, apply = std::move(apply)](const std::string& strValue) {
        if (strValue.empty()) throw MakeEmptyError(*pOption);
        try {
            apply(strValue);
        } catch (const CUsageError& error) {
            throw CUsageError(pOption->get_name() + ": " + error.what());
        }
    });
}

void CCommandLine::AddNumber(const char* pNames, const char* pArgument, bool bWhole,
                             std::function<void(double)> store, double dMin, double dMax,
                             const char* pHelp) {
    AddOption(pNames, pArgument, std::string(pHelp) + "; " + DescribeRange(dMin, dMax),
              [=, store = std::move(store)](const std::string& strValue) {
                  store(ReadNumber(strValue, bWhole, dMin, dMax));
              });
}

std::vector<std::wstring> CCommandLine::Parse(Arguments arguments) {
    m_pApp
        ->add_flag_callback(
            "-h,--help", [this] { throw CHelpRequest(MakeHelp()); }, "this text")
        ->trigger_on_parse();
    m_pApp
        ->add_flag_callback(
            "--version", [this] { throw CHelpRequest(m_strProgram + " " RT_VERSION "\n"); },
            "the program's version")
        ->trigger_on_parse();
    const std::vector<std::string> arrArguments(arguments.begin(), arguments.end());
    for (const std::string& strArgument : arrArguments) {
        if (strArgument == "--") break;
        CheckAssignment(*m_pApp, strArgument);
    }
    try {
        m_pApp->parse(std::vector(arrArguments.rbegin(), arrArguments.rend()));
    } catch (const CLI::ArgumentMismatch&) {  // what is missing is the value of the last one
        const CLI::Option& option = *m_pApp->get_option(arrArguments.back());
        throw CUsageError(option.get_name() + " needs its " + option.get_option_text());
    }

    std::vector<std::wstring> arrFiles;
    bool bOptions = true;
    for (const std::string& str : m_pApp->remaining()) {
        if (bOptions && str == "--")
            bOptions = false;
        else if (bOptions && str.size() > 1 && str.front() == '-')
            throw CUsageError("there is no option '" + str.substr(0, str.find('=')) + "'");
        else
            arrFiles.push_back(FromUtf8(str));
    }
    return arrFiles;
}

std::vector<std::wstring> CCommandLine::ParseFiles(Arguments arguments) {
    auto arrFiles = Parse(arguments);
    if (arrFiles.empty()) throw CUsageError("a file is missing");
    return arrFiles;
}

bool CCommandLine::Has(const char* pName) const { return m_pApp->count(pName) > 0; }

std::string CCommandLine::MakeHelp() const {
    CLI::Formatter formatter;
    formatter.column_width(HELP_COLUMN);
    return m_strIntroduction + formatter.make_groups(m_pApp.get(), CLI::AppFormatMode::Normal) +
           CONCLUSION;
}

double ReadNumber(const std::string& strText, bool bWhole, double dMin, double dMax) {
    const char* const pFirst = strText.data();
    const char* const pLast = pFirst + strText.size();
    double dValue = 0;
    std::from_chars_result result{};
    if (bWhole) {
        const bool bHex = strText.starts_with("0x") || strText.starts_with("0X");
        std::uint64_t nValue = 0;
        result = std::from_chars(pFirst + (bHex ? 2 : 0), pLast, nValue, bHex ? 16 : 10);
        dValue = static_cast<double>(nValue);
    } else {
        result = std::from_chars(pFirst, pLast, dValue);
    }
    if (result.ec != std::errc() || result.ptr != pLast || !(dValue >= dMin && dValue <= dMax))
        throw CUsageError("'" + strText + "' is not a " + (bWhole ? "whole " : "") +
                          "number from " + DescribeRange(dMin, dMax));
    return dValue;
}

std::string DescribeError(const std::exception& error) {
    const auto* const pException = dynamic_cast<const CException*>(&error);
    std::string strText = pException ? ToUtf8(pException->GetErrorMessage()) : error.what();
    // The last break stands before the reason; others are a name's own.
    const std::size_t nBreak = strText.rfind('\n');
    if (nBreak != std::string::npos) strText.replace(nBreak, 1, ": ");
    return strText;
}

std::string MakePrintable(const std::string& strText) {
    std::string strPrintable;
    for (const wchar_t c : FromUtf8(strText)) {
        const bool bControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
        const bool bStrayByte = c >= 0xDC80 && c <= 0xDCFF;
        char code[8];
        std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(c) & 0xFF);
        if (c == L'\n')
            strPrintable += "\\n";
        else
            strPrintable += bControl || bStrayByte ? code : ToUtf8({&c, 1});
    }
    return strPrintable;
}

void PrintError(const char* pName, const std::string& strText) {
    std::fprintf(stderr, "%s: %s\n", pName, MakePrintable(strText).c_str());
}

int RunProgram(const char* pName, int argc, char** argv,
               const std::function<int(Arguments arguments)>& run) {
    int nExitCode = 0;
    try {
        nExitCode = run({argv + 1, static_cast<std::size_t>(std::max(argc - 1, 0))});
    } catch (const CHelpRequest& help) {
        std::fputs(help.what(), stdout);
    } catch (const CUsageError& error) {
        PrintError(pName, error.what());
        std::fprintf(stderr, "%s --help lists the options.\n", pName);
        return 2;
    } catch (const std::exception& error) {
        PrintError(pName, DescribeError(error));
        return 1;
    }
    if (std::fflush(stdout) == 0) return nExitCode;
    std::fprintf(stderr, "%s: ", pName);
    std::perror("standard output");
    return 1;
}
