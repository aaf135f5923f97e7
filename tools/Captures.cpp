#include "tools/Captures.h"

#include <algorithm>
#include <map>
#include <new>
#include <set>

#include "curves/FileStore.h"
#include "platform/commandline/CommandLine.h"
#include "platform/system/MemFile.h"
#include "platform/system/Paths.h"
#include "platform/system/ReplaceFile.h"
#include "tools/ConsoleProgress.h"

namespace {

std::vector<std::uint8_t> ReadToEnd(CFile& file) {
    constexpr std::size_t nPart = 1 << 20;
    std::vector<std::uint8_t> bytes;
    try {
        for (;;) {
            const std::size_t nLength = bytes.size();
            bytes.resize(nLength + nPart);
            const std::size_t nRead = file.Read(bytes.data() + nLength, nPart);
            bytes.resize(nLength + nRead);
            if (nRead < nPart) return bytes;
        }
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

/// The path of the file that an input is read from.
std::wstring FindInput(const std::wstring& strInput) {
    return strInput == L"-" ? L"/dev/stdin" : FindFileOfAnyCase(strInput);
}

}  // namespace

void ReadInput(const std::wstring& strPath, CObject& capture) {
    CFile file;
    if (strPath == L"-")
        file.OpenStandardInput();
    else
        file.Open(strPath, CFile::modeRead);

    if (!file.IsRegular()) {
        CMemFile copy(file.GetFilePath(), ReadToEnd(file));
        ReadCapture(copy, capture);
        return;
    }
    CConsoleProgress progress(L"Reading " + strPath);
    ReadCapture(file, capture, &progress);
}

bool HasCurves(const RTCaptureFile& capture) {
    return std::any_of(capture.m_curves.m_lstCurves.begin(), capture.m_curves.m_lstCurves.end(),
                       [](const RTCurveList& list) { return !list.empty(); });
}

SecondInput GetSecondInput(const RTScreenRecord& screen) {
    return SecondInput{screen.m_nPositionInput.value_or(0)};
}

bool HoldsPairs(const RTScreenRecord& screen) {
    return screen.m_nMode && HasValuePairs(*screen.m_nMode, GetSecondInput(screen));
}

void Report(const std::string& strText) { PrintError("rt3", strText); }

int ForEachFile(const std::vector<std::wstring>& arrFiles,
                const std::function<void(const std::wstring& strPath)>& work) {
    int nExitCode = 0;
    for (const std::wstring& strPath : arrFiles) {
        try {
            work(strPath);
        } catch (const CException& error) {
            Report(DescribeError(error));
            nExitCode = 1;
        }
    }
    return nExitCode;
}

void WriteWhole(const std::wstring& strPath, std::string_view strBytes) {
    if (strPath == L"-") {
        CFile file;
        file.OpenStandardOutput();
        file.Write(strBytes.data(), strBytes.size());
        file.Close();
        return;
    }
    CReplaceFile file(strPath);
    file.Write(strBytes.data(), strBytes.size());
    file.Commit();
}

COutput::COutput(std::wstring strOutput, const wchar_t* pExtension,
                 const std::vector<std::wstring>& arrInputs)
    : m_strOutput(std::move(strOutput)), m_strExtension(pExtension),
      m_bFolder(FolderExists(m_strOutput)) {
    if (arrInputs.size() > 1 && !m_bFolder)
        throw CUsageError("several files need an existing folder behind -o");
    std::set<std::wstring> paths;
    for (const std::wstring& strInput : arrInputs) {
        if (m_bFolder && strInput == L"-")
            throw CUsageError("standard input has no name for a file in a folder");
        if (!paths.insert(GetPath(strInput)).second)
            throw CUsageError("two of the files would be written to " + ToUtf8(GetPath(strInput)));
    }
}

std::wstring COutput::GetPath(const std::wstring& strInput) const {
    if (!m_bFolder) return m_strOutput;
    return JoinPath(m_strOutput, RemoveExtension(GetNameOfPath(strInput)) + m_strExtension);
}

void COutput::KeepInputs(const std::vector<std::wstring>& arrInputs, bool bOwn) const {
    std::map<FileIdentity, std::wstring> inputs;
    for (const std::wstring& strInput : arrInputs)
        if (const auto identity = FindIdentity(FindInput(strInput)))
            inputs.emplace(*identity, strInput);
    for (const std::wstring& strInput : arrInputs) {
        const std::wstring strPath = GetPath(strInput);
        const auto identity = FindIdentity(strPath == L"-" ? L"/dev/stdout" : strPath);
        const auto overwritten = identity ? inputs.find(*identity) : inputs.end();
        if (overwritten == inputs.end() || (!bOwn && overwritten->second == strInput)) continue;
        const std::wstring& strLost = overwritten->second;
        throw CUsageError(ToUtf8(strLost == L"-" ? L"the file on standard input" : strLost) +
                          " would be overwritten");
    }
}
