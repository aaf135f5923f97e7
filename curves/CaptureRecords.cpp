#include "curves/CaptureRecords.h"

#include "platform/system/Archive.h"
#include "platform/system/NumberedText.h"

namespace {

std::uint8_t ReadByte(CArchive& ar) {
    std::uint8_t by = 0;
    ar >> by;
    return by;
}

}  // namespace

void WriteScreenRecord(CArchive& ar, const RTScreenRecord& record) {
    ar << RTScreenRecord::CURRENT_VERSION << record.m_nMode.value_or(0)
       << record.m_nPositionInput.value_or(0) << record.m_nValueRate << record.m_nAuxRate;
}

void ReadScreenRecord(CArchive& ar, RTScreenRecord& record) {
    record.m_nMode = record.m_nPositionInput = std::nullopt;
    record.m_nRatesRead = 0;
    ar >> record.m_nVersion;
    if (record.m_nVersion >= 2) record.m_nMode = ReadByte(ar);
    if (record.m_nVersion >= 3) record.m_nPositionInput = ReadByte(ar);
    if (record.m_nVersion >= 4) {
        for (std::uint16_t* const pRate : {&record.m_nValueRate, &record.m_nAuxRate}) {
            ar >> *pRate;
            ++record.m_nRatesRead;
        }
    } else {
        const bool bAnalogue = record.m_nPositionInput.value_or(0) >= 2;
        record.m_nValueRate = bAnalogue ? 32000 : 40000;
        record.m_nAuxRate = bAnalogue ? 16000 : 20000;
        record.m_nRatesRead = 2;
    }
}

void WritePlotRecord(CArchive& ar, const RTPlotRecord& record) {
    ar << static_cast<BYTE>(record.m_anSpans.size());
    for (const std::int32_t nSpan : record.m_anSpans) ar << nSpan;
}

void ReadPlotRecord(CArchive& ar, RTPlotRecord& record) {
    record.m_nPlots = 0;
    const std::uint8_t nPlots = ReadByte(ar);
    if (nPlots > record.m_anSpans.size())
        ar.RefuseContents(GetText({3146, L"The file lists %1 plots; a capture has at most 3."},
                                  {std::to_wstring(nPlots)}));
    while (record.m_nPlots < nPlots) {
        ar >> record.m_anSpans[record.m_nPlots];
        ++record.m_nPlots;
    }
}
