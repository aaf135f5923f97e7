// The command lines of the programs: one manner of options, help, errors and exit codes for all.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/system/Text.h"

namespace CLI {
class App;
}

/// The arguments behind the name of a program or command, as the system gives them.
using Arguments = std::span<const char* const>;

/// A command line that cannot be carried out. The text says which option, and why, in UTF-8.
class CUsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Thrown where --help or --version is asked for. The text is the answer.
class CHelpRequest : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The options of a program, or of one of its commands. A value stands in the next argument,
/// whatever it begins with, or behind "=" of a long name; the last one counts, but where several
/// may. A "--" ends the options; a "-" is a file.
class CCommandLine {
  public:
    /// @param pUsage what stands behind "usage: "; its first word is the program's name
    /// @param pAbout what the program does, in whole lines
    CCommandLine(const char* pUsage, const char* pAbout);
    ~CCommandLine();

    // Names are such as "-o,--output", of which errors say the last; pArgument is what help and
    // errors call the value, pHelp says the default in brackets. What they fill must outlive Parse.
    void AddFlag(const char* pNames, bool& bValue, const char* pHelp);
    void AddText(const char* pNames, const char* pArgument, std::string& strValue,
                 const char* pHelp) {
        AddOption(pNames, pArgument, pHelp, [&](const std::string& str) { strValue = str; });
    }
    void AddText(const char* pNames, const char* pArgument, std::wstring& strValue,
                 const char* pHelp) {
        AddOption(pNames, pArgument, pHelp,
                  [&](const std::string& str) { strValue = FromUtf8(str); });
    }
    /// For a number from dMin to dMax, which help says.
    template <class Number>
    void AddNumber(const char* pNames, const char* pArgument, Number& number, double dMin,
                   double dMax, const char* pHelp) {
        AddNumber(
            pNames, pArgument, std::is_integral_v<Number>,
            [&number](double dValue) { number = static_cast<Number>(dValue); }, dMin, dMax, pHelp);
    }
    void AddNumber(const char* pNames, const char* pArgument, bool bWhole,
                   std::function<void(double)> store, double dMin, double dMax, const char* pHelp);
    /// @param apply gets the value, which is not empty, and may throw a CUsageError that says what
    /// is wrong with it
    void AddOption(const char* pNames, const char* pArgument, const std::string& strHelp,
                   std::function<void(const std::string& strValue)> apply) {
        Add(pNames, pArgument, strHelp, false, std::move(apply));
    }
    /// For an option that may be given several times: each value is applied, in their order.
    void AddRepeated(const char* pNames, const char* pArgument, const std::string& strHelp,
                     std::function<void(const std::string& strValue)> apply) {
        Add(pNames, pArgument, strHelp, true, std::move(apply));
    }

    /// Reads the options and returns the other arguments, the files. To be called once.
    /// @throws CUsageError, CHelpRequest
    std::vector<std::wstring> Parse(Arguments arguments);
    /// As Parse, for what needs at least one file.
    std::vector<std::wstring> ParseFiles(Arguments arguments);

    /// After Parse: whether an option was given.
    bool Has(const char* pName) const;

  private:
    void Add(const char* pNames, const char* pArgument, const std::string& strHelp, bool bRepeated,
             std::function<void(const std::string& strValue)> apply);
    std::string MakeHelp() const;

    std::string m_strProgram;
    std::string m_strIntroduction;
    std::unique_ptr<CLI::App> m_pApp;
};

/// A number that is the whole text, independently of the locale; a whole one may be hexadecimal
/// with 0x.
/// @throws CUsageError when there is none, or none from dMin to dMax
double ReadNumber(const std::string& strText, bool bWhole, double dMin, double dMax);

/// An exception's text on one line, in UTF-8; names in it stand as they are.
std::string DescribeError(const std::exception& error);

/// Text in which each control character, and each byte that is not UTF-8, is shown as \n or \x1b:
/// what a name holds does not work the terminal.
std::string MakePrintable(const std::string& strText);

/// "NAME: TEXT" on standard error, made printable.
void PrintError(const char* pName, const std::string& strText);

/// What main of a program does: prints the help or version that is asked for, or the error that
/// ends it.
/// @return the exit code: what run returns, 0 after such an answer, 1 after an error (also of
/// standard output), 2 after a CUsageError
int RunProgram(const char* pName, int argc, char** argv,
               const std::function<int(Arguments arguments)>& run);
