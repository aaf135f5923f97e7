// The framework's exceptions: what the operator must hear about. They are thrown by value; one that
// leaves a message handler is caught by the message dispatch, which shows the standard error box.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "platform/system/Export.h"

/// All texts are in the operator's language.
class PLATFORM_API CException : public std::exception {
  public:
    /// What has happened, in plain words: the beginning of the standard error box.
    virtual std::wstring GetSummary() const = 0;
    /// The particulars: for a file, its name, and on a line of its own the reason. Where there are
    /// none, the summary.
    virtual std::wstring GetErrorMessage() const { return GetSummary(); }
    const char* what() const noexcept override { return "framework exception"; }
};

/// Memory that could not be had.
class PLATFORM_API CMemoryException : public CException {
  public:
    std::wstring GetSummary() const override;
    const char* what() const noexcept override { return "out of memory"; }
};

/// Runs work; what it finds no memory for becomes the framework's exception.
/// @throws CMemoryException, and what the work throws
template <class Work>
decltype(auto) CallWithMemoryException(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

/// Raised when the operator has already been told, or has asked to stop: the dispatch shows
/// nothing.
class PLATFORM_API CUserException : public CException {
  public:
    std::wstring GetSummary() const override { return {}; }
    const char* what() const noexcept override { return "user exception"; }
};

/// A file that could not be opened, read, written, flushed or renamed, or a folder that could not
/// be looked into.
class PLATFORM_API CFileException : public CException {
  public:
    enum Cause { cannotOpen, cannotRead, cannotWrite, cannotOpenFolder };

    /// @param strFileName the file's path as the operator knows it
    /// @param nSystemError the system's error number (errno); 0 when the detail is the reason
    CFileException(Cause cause, std::wstring strFileName, int nSystemError,
                   std::wstring strDetail = {})
        : m_cause(cause), m_strFileName(std::move(strFileName)), m_lOsError(nSystemError),
          m_strDetail(std::move(strDetail)) {}

    std::wstring GetSummary() const override;
    /// The file's name, the detail and the system's reason.
    std::wstring GetErrorMessage() const override;
    const char* what() const noexcept override { return "file exception"; }

    Cause m_cause;
    std::wstring m_strFileName;
    int m_lOsError;
    std::wstring m_strDetail;  ///< a sentence about the file; empty: the reason says it all
};

/// An archive that ended early, was used against its direction, or holds impossible contents.
class PLATFORM_API CArchiveException : public CException {
  public:
    enum Cause { endOfFile, readOnly, writeOnly, badContents };

    CArchiveException(Cause cause, std::wstring strFileName, std::wstring strDetail = {})
        : m_cause(cause), m_strFileName(std::move(strFileName)), m_strDetail(std::move(strDetail)) {
    }

    std::wstring GetSummary() const override;
    /// The file's name and what was wrong with it.
    std::wstring GetErrorMessage() const override;
    const char* what() const noexcept override { return "archive exception"; }

    Cause m_cause;
    std::wstring m_strFileName;
    std::wstring m_strDetail;  ///< a sentence about what was found; always there for badContents
};
