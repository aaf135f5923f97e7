#include "curves/CsvTable.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "curves/CsvFile.h"
#include "curves/CsvText.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Progress.h"
#include "platform/system/TextFile.h"

namespace {

constexpr std::uint32_t ROWS_PER_PART = 512;
constexpr std::uint32_t ROWS_PER_REPORT = 128 * ROWS_PER_PART;
constexpr unsigned LINE_COUNT = 4;

/// The curve's number and a comma, a time, six values and four lines, each behind a comma, "\r\n",
/// and some may stand behind the last.
constexpr std::size_t MAX_ROW_LENGTH = 21 + CStepTimes::MAX_LENGTH + 48 + 8 + 2 + 8;
static_assert(ROWS_PER_PART * MAX_ROW_LENGTH <= CTextFile::MAX_ROOM);

/// One channel's part of the rows of a curve.
struct Column {
    const std::int16_t* m_pValues = nullptr;
    std::uint32_t m_nSteps = 0;
    const RTPulseList* m_pPulses = nullptr;
};

/// The digital lines from step to step, as the ends of rows.
class CLineTexts {
  public:
    explicit CLineTexts(const RTPulseList* pPulses)
        : m_pPulses(pPulses), m_nRuns(pPulses ? pPulses->CountRuns() : 0) {
        for (unsigned nState = 0; nState < m_states.size(); ++nState)
            for (unsigned nLine = 0; nLine < LINE_COUNT; ++nLine)
                m_states[nState][2 * nLine + 1] = nState >> nLine & 1u ? '1' : '0';
    }

    /// @param nIndex of a value; never below the one before
    char* Append(char* pTo, std::int64_t nIndex) {
        // A state holds for the values in front of its record's position.
        while (m_nRun < m_nRuns && m_pPulses->GetRun(m_nRun).m_nPosition <= nIndex) ++m_nRun;
        if (m_nRun == m_nRuns) return std::copy(UNKNOWN.begin(), UNKNOWN.end(), pTo);
        const auto& text = m_states[m_pPulses->GetRun(m_nRun).m_byState % m_states.size()];
        return std::copy(text.begin(), text.end(), pTo);
    }

  private:
    static constexpr std::string_view UNKNOWN = ",,,,\r\n";
    using Text = std::array<char, 2 * LINE_COUNT + 2>;
    static constexpr Text PATTERN{',', '0', ',', '0', ',', '0', ',', '0', '\r', '\n'};

    const RTPulseList* m_pPulses;
    std::size_t m_nRuns;
    std::size_t m_nRun = 0;  ///< whose state holds
    std::array<Text, 1u << LINE_COUNT> m_states = [] {
        std::array<Text, 1u << LINE_COUNT> states;
        states.fill(PATTERN);
        return states;
    }();
};

using Columns = std::array<Column, CRTCurves::CHANNEL_COUNT>;

Columns TakeColumns(const CRTCurves& curves, std::size_t nCurve, unsigned nStepValues) {
    Columns columns;
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const RTCurveList& list = curves.m_lstCurves[k];
        if (nCurve >= list.size()) continue;
        const RTCurveData& curve = *list[nCurve];
        columns[k] = {curve.GetValues(), curve.GetCount() / nStepValues, &curve.GetPulses()};
    }
    return columns;
}

std::uint32_t CountSteps(const Columns& columns) {
    return std::ranges::max_element(columns, {}, &Column::m_nSteps)->m_nSteps;
}

/// The pulse records of the longest curve that has any; null: none has.
const RTPulseList* FindPulses(const Columns& columns) {
    const Column* pLongest = nullptr;
    for (const Column& column : columns)
        if (column.m_pPulses && column.m_pPulses->CountRuns() > 0 &&
            (!pLongest || column.m_nSteps > pLongest->m_nSteps))
            pLongest = &column;
    return pLongest ? pLongest->m_pPulses : nullptr;
}

class CTableWriter {
  public:
    CTableWriter(CTextFile& file, const CRTCurves& curves, const RTTableOptions& options,
                 IProgress* pProgress);

    void Write();

  private:
    void WriteHeader();
    template <unsigned STEP_VALUES>
    void WriteCurve(std::size_t nCurve);

    CTextFile& m_file;
    const CRTCurves& m_curves;
    const RTTableOptions& m_options;
    IProgress* m_pProgress;
    const CThousandths m_texts{{INT16_MIN, INT16_MAX}};
    std::vector<std::size_t> m_channels;  ///< that have curves, from 0
    std::size_t m_nCurves = 0;
    std::uint64_t m_nRows = 0;  ///< of all curves
    std::uint64_t m_nRowsDone = 0;
};

CTableWriter::CTableWriter(CTextFile& file, const CRTCurves& curves, const RTTableOptions& options,
                           IProgress* pProgress)
    : m_file(file), m_curves(curves), m_options(options), m_pProgress(pProgress) {
    for (std::size_t k = 0; k < CRTCurves::CHANNEL_COUNT; ++k) {
        if (curves.m_lstCurves[k].empty()) continue;
        m_channels.push_back(k);
        m_nCurves = std::max(m_nCurves, curves.m_lstCurves[k].size());
    }
    for (std::size_t n = 0; n < m_nCurves; ++n)
        m_nRows += CountSteps(TakeColumns(curves, n, options.m_bPairs ? 2 : 1));
}

void CTableWriter::Write() {
    WriteHeader();
    for (std::size_t n = 0; n < m_nCurves; ++n) {
        if (m_options.m_bPairs)
            WriteCurve<2>(n);
        else
            WriteCurve<1>(n);
    }
}

void CTableWriter::WriteHeader() {
    const char* const pSecond =
        m_options.m_secondInput == SecondInput::Voltage ? "_voltage" : "_position";
    std::string strHeader = "curve,time_ms";
    for (const std::size_t k : m_channels) {
        const std::string strChannel = ",ch" + std::to_string(k + 1);
        strHeader += strChannel + "_force";
        if (m_options.m_bPairs) strHeader += strChannel + pSecond;
    }
    m_file.WriteString(strHeader + ",line1,line2,line3,line4\n");
}

template <unsigned STEP_VALUES>
void CTableWriter::WriteCurve(std::size_t nCurve) {
    const Columns columns = TakeColumns(m_curves, nCurve, STEP_VALUES);
    const std::uint32_t nSteps = CountSteps(columns);
    const std::string strCurve = std::to_string(nCurve + 1) + ",";
    CStepTimes times(m_options.m_nValueRate, STEP_VALUES);
    CLineTexts lines(FindPulses(columns));
    std::uint32_t nStep = 0;
    while (nStep < nSteps) {
        const std::uint32_t nPartEnd = std::min(nSteps, nStep + ROWS_PER_PART);
        char* pTo = m_file.GetBuffer();
        for (; nStep < nPartEnd; ++nStep, ++m_nRowsDone) {
            const std::size_t nIndex = STEP_VALUES * std::size_t{nStep};
            pTo = std::copy(strCurve.begin(), strCurve.end(), pTo);
            pTo = times.Append(pTo);
            for (const std::size_t k : m_channels) {
                const bool bHasStep = nStep < columns[k].m_nSteps;
                for (unsigned nValue = 0; nValue < STEP_VALUES; ++nValue) {
                    *pTo++ = ',';
                    if (bHasStep) pTo = m_texts.Append(pTo, columns[k].m_pValues[nIndex + nValue]);
                }
            }
            pTo = lines.Append(pTo, static_cast<std::int64_t>(nIndex));
        }
        m_file.ReleaseBuffer(pTo);
        if (m_pProgress && m_nRowsDone % ROWS_PER_REPORT < ROWS_PER_PART &&
            !m_pProgress->Advance(m_nRowsDone, m_nRows))
            throw CUserException();
    }
}

}  // namespace

void WriteTableCsv(CTextFile& file, const CRTCurves& curves, const RTTableOptions& options,
                   IProgress* pProgress) {
    WriteCsv(file, [&] { CTableWriter(file, curves, options, pProgress).Write(); });
}
