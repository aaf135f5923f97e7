#include "host/VerdictLog.h"

#include "platform/system/Exceptions.h"
#include "platform/system/Paths.h"

namespace {

/// As left behind by a power failure.
bool EndsWithinLine(const std::wstring& strPath) {
    CFile file(strPath, CFile::modeRead);
    const std::uint64_t nLength = file.GetLength();
    if (nLength == 0) return false;
    file.Seek(nLength - 1);
    char chLast = '\n';
    file.Read(&chLast, 1);
    return chLast != '\n';
}

}  // namespace

CVerdictLog::CVerdictLog(const std::wstring& strPath)
    : m_file(strPath, CFile::modeWrite | CFile::modeAppend), m_bTorn(EndsWithinLine(strPath)) {}

void CVerdictLog::Append(const std::string& strLine) {
    const std::string strText = (m_bTorn ? "\n" : "") + strLine + '\n';
    m_bTorn = true;
    m_file.Write(strText.data(), strText.size());
    m_bTorn = false;
}
