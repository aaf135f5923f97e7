// A whole .rt3 file: the one way in which captures are saved and loaded.
#pragma once

#include <cstdint>
#include <string>

#include "curves/CaptureRecords.h"
#include "curves/RTCurves.h"

class CFile;
class IProgress;

/// What stands in a capture file, without a screen.
struct RTCaptureFile : CObject {
    /// Stores the three records in their current versions, or loads those of any version. At an
    /// exception the capture holds what was read before it: fields and spans one by one, curves as
    /// far as they are complete; what was not read stays as it was.
    /// @throws CFileException, CArchiveException, CMemoryException, CUserException
    void Serialize(CArchive& ar) override;

    RTScreenRecord m_screen;
    RTPlotRecord m_plots;
    CRTCurves m_curves;
    /// Of the file that was loaded: how many bytes stand behind the records. They are not stored.
    std::uint64_t m_nBytesBehind = 0;
};

// A capture is what its Serialize stores and loads: an RTCaptureFile, or the screen with the
// capture that it has in hand.

/// Loads from where a file stands.
/// @throws CFileException, CArchiveException, CMemoryException, CUserException
void ReadCapture(CFile& file, CObject& capture, IProgress* pProgress = nullptr);

/// Stores to where a file stands; does not close it.
/// @throws CFileException, CMemoryException, CUserException
void WriteCapture(CFile& file, CObject& capture, IProgress* pProgress = nullptr);

// The work on a whole file; file listeners hear of it.

/// Writes a capture to a path as a whole: at any exception an older file of that path is untouched.
/// @throws CFileException, CMemoryException, CUserException
void SaveCapture(const std::wstring& strPath, CObject& capture, IProgress* pProgress = nullptr);

/// Loads a capture from a path.
/// @throws CFileException, CArchiveException, CMemoryException, CUserException
void LoadCapture(const std::wstring& strPath, CObject& capture, IProgress* pProgress = nullptr);
