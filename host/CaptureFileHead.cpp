#include "host/CaptureFileHead.h"

#include "platform/system/Archive.h"
#include "platform/system/File.h"

CaptureFileHead ReadCaptureFileHead(const std::wstring& strPath) {
    CaptureFileHead head;
    try {
        CFile file(strPath, CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        std::int32_t nVersion = 0;
        BYTE byField = 0;
        ar >> nVersion;
        if (nVersion > 1) {
            ar >> byField;
            head.m_nMode = byField;
        }
        if (nVersion > 2) {
            ar >> byField;
            head.m_nPositionInput = byField;
        }
    } catch (const CException&) {
        // What was read before the fault stands; the screen reports the fault itself.
    }
    return head;
}
