// Limits files: JSON in UTF-8.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "evaluation/Learning.h"
#include "evaluation/Limits.h"

/// What is wrong with a limits file, on one line in UTF-8: the file, where in it, what it is and
/// what would be right.
class CLimitsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

constexpr std::size_t MAX_LIMITS_LENGTH = 16 << 20;  ///< bytes of a file

/// A limits file with everything as its writer has put it, so that what is added to it leaves the
/// rest as it was.
class CLimitsFile {
  public:
    /// Without title and objects, in values.
    CLimitsFile();
    /// Reads a text.
    /// @param strName what errors call the file
    /// @throws CLimitsError
    CLimitsFile(const std::string& strName, std::string_view strText);
    ~CLimitsFile();
    CLimitsFile(CLimitsFile&&) noexcept;
    CLimitsFile& operator=(CLimitsFile&&) noexcept;

    const Limits& GetLimits() const { return m_limits; }

    /// Puts what was learned in the place of the object of its name, "learned forward" or "learned
    /// return", or behind all others.
    /// @return the object as it reads back
    /// @throws CLimitsError when the scales leave no difference between its corners
    LimitObject SetEnvelope(const LearnedEnvelope& envelope);

    /// The text of the file, which reads back the same.
    std::string GetText() const;

  private:
    struct Document;
    std::unique_ptr<Document> m_pDocument;
    Limits m_limits;
};

/// @throws CLimitsError, CFileException
CLimitsFile ReadLimitsFile(const std::wstring& strPath);

/// Limits that say anything of a stroke.
/// @throws CLimitsError also when the file has no objects, CFileException
Limits ReadLimitsToJudgeBy(const std::wstring& strPath);
