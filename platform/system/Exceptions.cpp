#include "platform/system/Exceptions.h"

#include <cstring>

#include "platform/system/Text.h"

std::wstring CMemoryException::GetErrorMessage() const { return L"Out of memory."; }

std::wstring CFileException::GetErrorMessage() const {
    std::wstring strMessage = m_strFileName + L"\n" + m_strDetail;
    if (m_lOsError == 0) return strMessage;
    char buffer[256];
    return strMessage + (m_strDetail.empty() ? L"" : L" ") +
           FromUtf8(strerror_r(m_lOsError, buffer, sizeof buffer)) + L".";
}

std::wstring CArchiveException::GetErrorMessage() const {
    std::wstring strMessage = m_strFileName + L"\n";
    switch (m_cause) {
    case endOfFile:
        strMessage += L"The file ends too early.";
        break;
    case readOnly:
        strMessage += L"The file is open for reading only.";
        break;
    case writeOnly:
        strMessage += L"The file is open for writing only.";
        break;
    case badContents:
        return strMessage + m_strDetail;
    }
    return m_strDetail.empty() ? strMessage : strMessage + L" " + m_strDetail;
}
