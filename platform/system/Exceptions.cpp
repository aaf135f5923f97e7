#include "platform/system/Exceptions.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "platform/system/NumberedText.h"
#include "platform/system/Text.h"

namespace {

/// The reasons that an operator meets; the English words are the system's own.
constexpr struct {
    int m_nSystemError;
    NumberedText m_text;
} REASONS[] = {
    {ENOENT, {3120, L"No such file or directory."}}, {EACCES, {3121, L"Permission denied."}},
    {EPERM, {3122, L"Operation not permitted."}},    {ENOSPC, {3123, L"No space left on device."}},
    {EROFS, {3124, L"Read-only file system."}},      {EISDIR, {3125, L"Is a directory."}},
    {ENOTDIR, {3126, L"Not a directory."}},          {ENAMETOOLONG, {3127, L"File name too long."}},
    {EIO, {3128, L"Input/output error."}},           {EFBIG, {3129, L"File too large."}},
    {EDQUOT, {3130, L"Disk quota exceeded."}},
};

std::wstring DescribeSystemError(int nSystemError) {
    const auto* const pReason =
        std::find_if(std::begin(REASONS), std::end(REASONS), [nSystemError](const auto& reason) {
            return reason.m_nSystemError == nSystemError;
        });
    if (pReason != std::end(REASONS)) return GetText(pReason->m_text);
    char buffer[256];
    return FromUtf8(strerror_r(nSystemError, buffer, sizeof buffer)) + L".";
}

}  // namespace

std::wstring CMemoryException::GetSummary() const { return GetText({3101, L"Out of memory."}); }

std::wstring CFileException::GetSummary() const {
    switch (m_cause) {
    case cannotOpen:
        return GetText({3102, L"The file cannot be opened."});
    case cannotRead:
        return GetText({3103, L"The file cannot be read."});
    case cannotOpenFolder:
        return GetText({3104, L"The folder cannot be opened."});
    case cannotWrite:
        break;
    }
    return GetText({3105, L"The file cannot be saved."});
}

std::wstring CFileException::GetErrorMessage() const {
    std::wstring strMessage = m_strFileName + L"\n" + m_strDetail;
    if (m_lOsError == 0) return strMessage;
    return strMessage + (m_strDetail.empty() ? L"" : L" ") + DescribeSystemError(m_lOsError);
}

std::wstring CArchiveException::GetSummary() const {
    switch (m_cause) {
    case endOfFile:
        return GetText({3106, L"This capture is not complete."});
    case readOnly:
        return GetText({3105, L"The file cannot be saved."});
    case writeOnly:
        return GetText({3103, L"The file cannot be read."});
    case badContents:
        break;
    }
    return GetText({3107, L"This file is not a capture."});
}

std::wstring CArchiveException::GetErrorMessage() const {
    std::wstring strMessage = m_strFileName + L"\n";
    switch (m_cause) {
    case endOfFile:
        strMessage += GetText({3140, L"The file ends too early."});
        break;
    case readOnly:
        strMessage += GetText({3141, L"The file is open for reading only."});
        break;
    case writeOnly:
        strMessage += GetText({3142, L"The file is open for writing only."});
        break;
    case badContents:
        return strMessage + m_strDetail;
    }
    return m_strDetail.empty() ? strMessage : strMessage + L" " + m_strDetail;
}
