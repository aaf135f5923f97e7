// A whole .rt3 file: what a save writes and a load reads, without a screen.
#pragma once

#include <string>

#include "curves/CaptureRecords.h"
#include "curves/RTCurves.h"

class CFile;
class IRTProgress;

struct RTCaptureFile {
    RTScreenRecord m_screen;
    RTPlotRecord m_plots;
    CRTCurves m_curves;
};

/// Reads the three records from where a file stands. At an exception the capture holds what was
/// read completely.
/// @throws CFileException, CArchiveException, CMemoryException, CUserException
void ReadCapture(CFile& file, RTCaptureFile& capture, IRTProgress* pProgress = nullptr);

/// Writes the three records in their current versions.
/// @throws CFileException, CUserException
void WriteCapture(CFile& file, const RTCaptureFile& capture, IRTProgress* pProgress = nullptr);

/// Writes a capture to a path as a whole: at any exception an older file of that path is untouched.
/// @throws CFileException, CUserException
void SaveCapture(const std::wstring& strPath, const RTCaptureFile& capture,
                 IRTProgress* pProgress = nullptr);
