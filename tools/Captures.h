// Where the commands read captures from and write their results to.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "curves/CaptureFile.h"
#include "curves/InstrumentMode.h"
#include "platform/system/Exceptions.h"

/// Reads a capture (an RTCaptureFile, an RTCaptureOutline) from a path, or from standard input for
/// "-". What has no length (a pipe) is read to its end first. At an exception the capture holds
/// what was read completely.
/// @throws CFileException, CArchiveException, CMemoryException
void ReadInput(const std::wstring& strPath, CObject& capture);

/// Whether a capture has any curve.
bool HasCurves(const RTCaptureFile& capture);

/// The second input that a capture was made with; of a file too old to hold it, the one that it is
/// written with again.
SecondInput GetSecondInput(const RTScreenRecord& screen);

/// Whether the values of a capture come in pairs, as far as the file says so.
bool HoldsPairs(const RTScreenRecord& screen);

/// Does something for each file; a file that fails is reported on standard error and does not keep
/// the others from their turn.
/// @return the exit code: 0, or 1 when a file failed
int ForEachFile(const std::vector<std::wstring>& arrFiles,
                const std::function<void(const std::wstring& strPath)>& work);

/// "rt3: ..." on standard error.
void Report(const std::string& strText);

/// Writes a file that replaces an older one only when it is complete, or to standard output for
/// "-".
/// @throws CFileException
void WriteWhole(const std::wstring& strPath, std::string_view strBytes);

/// Where the results of several inputs go.
class COutput {
  public:
    /// @param strOutput what the person gave: a file, an existing folder, or "-"
    /// @param pExtension of a file in a folder, which otherwise has its input's name
    /// @throws CUsageError when results would go over each other
    COutput(std::wstring strOutput, const wchar_t* pExtension,
            const std::vector<std::wstring>& arrInputs);

    std::wstring GetPath(const std::wstring& strInput) const;

    /// @param bOwn false: a result may take the place of its own input, which has been read by then
    /// @throws CUsageError when an input would be overwritten
    void KeepInputs(const std::vector<std::wstring>& arrInputs, bool bOwn = true) const;

  private:
    std::wstring m_strOutput;
    std::wstring m_strExtension;
    bool m_bFolder;
};
