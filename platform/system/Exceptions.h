// The framework's exceptions: what the operator must hear about. They are thrown by value; one that
// leaves a message handler is caught by the message dispatch, which shows the standard error box.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "platform/system/Export.h"

class PLATFORM_API CException : public std::exception {
  public:
    /// The text of the standard error box, for the operator.
    virtual std::wstring GetErrorMessage() const = 0;
    const char* what() const noexcept override { return "framework exception"; }
};

/// Memory that could not be had.
class PLATFORM_API CMemoryException : public CException {
  public:
    std::wstring GetErrorMessage() const override;
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
    std::wstring GetErrorMessage() const override { return {}; }
    const char* what() const noexcept override { return "user exception"; }
};

/// A file that could not be opened, read, written, flushed or renamed.
class PLATFORM_API CFileException : public CException {
  public:
    /// @param strFileName the file's path as the operator knows it
    /// @param nSystemError the system's error number (errno); 0 when the detail is the reason
    CFileException(std::wstring strFileName, int nSystemError, std::wstring strDetail = {})
        : m_strFileName(std::move(strFileName)), m_lOsError(nSystemError),
          m_strDetail(std::move(strDetail)) {}

    /// The file's name, the detail and the system's reason.
    std::wstring GetErrorMessage() const override;
    const char* what() const noexcept override { return "file exception"; }

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

    /// The file's name and what was wrong with it.
    std::wstring GetErrorMessage() const override;
    const char* what() const noexcept override { return "archive exception"; }

    Cause m_cause;
    std::wstring m_strFileName;
    std::wstring m_strDetail;  ///< a sentence about what was found; always there for badContents
};
