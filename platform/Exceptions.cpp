#include "platform/Exceptions.h"

#include <cstring>

#include "platform/Text.h"

std::wstring CMemoryException::GetErrorMessage() const { return L"Out of memory."; }

std::wstring CFileException::GetErrorMessage() const {
    char buffer[256];
    return m_strFileName + L"\n" + FromUtf8(strerror_r(m_lOsError, buffer, sizeof buffer)) + L".";
}

std::wstring CArchiveException::GetErrorMessage() const {
    switch (m_cause) {
    case endOfFile:
        return m_strFileName + L"\nThe file ends too early.";
    case readOnly:
        return m_strFileName + L"\nThe file is open for reading only.";
    case writeOnly:
        return m_strFileName + L"\nThe file is open for writing only.";
    case badContents:
        break;
    }
    return m_strFileName + L"\n" + m_strDetail;
}
