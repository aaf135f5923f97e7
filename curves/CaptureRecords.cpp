#include "curves/CaptureRecords.h"

#include "platform/system/Archive.h"

void WriteScreenRecord(CArchive& ar, const RTScreenRecord& record) {
    ar << RTScreenRecord::CURRENT_VERSION << record.m_nMode << record.m_nPositionInput
       << record.m_nValueRate << record.m_nAuxRate;
}

RTScreenRecord ReadScreenRecord(CArchive& ar) {
    RTScreenRecord record;
    ar >> record.m_nVersion;
    if (record.m_nVersion >= 2) ar >> record.m_nMode;
    if (record.m_nVersion >= 3) ar >> record.m_nPositionInput;
    if (record.m_nVersion >= 4) {
        ar >> record.m_nValueRate >> record.m_nAuxRate;
    } else if (record.m_nPositionInput >= 2) {
        record.m_nValueRate = 32000;
        record.m_nAuxRate = 16000;
    }
    return record;
}

void WritePlotRecord(CArchive& ar, const RTPlotRecord& record) {
    ar << static_cast<BYTE>(record.m_anSpans.size());
    for (const std::int32_t nSpan : record.m_anSpans) ar << nSpan;
}

void ReadPlotRecord(CArchive& ar, RTPlotRecord& record) {
    record.m_nPlots = 0;
    BYTE nPlots = 0;
    ar >> nPlots;
    if (nPlots > record.m_anSpans.size())
        ar.RefuseContents(L"The file tells of " + std::to_wstring(nPlots) +
                          L" plots; there are at most 3.");
    while (record.m_nPlots < nPlots) {
        ar >> record.m_anSpans[record.m_nPlots];
        ++record.m_nPlots;
    }
}
