#include "plot/CurveLine.h"

#include <algorithm>

namespace {

struct Column {
    int m_nLow;
    int m_nHigh;
    int m_nSecondHigh;  ///< of the second quantity, and never below 0
};

/// The value that a main line reaches by a column: the end of it that is farther from where the
/// line comes from.
int PassColumn(int nLevel, int nLow, int nHigh) { return nLevel >= nHigh ? nLow : nHigh; }

/// The columns of one curve, each from the values themselves.
class CColumnReader {
  public:
    CColumnReader(const RTCurveData& data, const CurveLine::Source& source, std::int64_t nLast)
        : m_data(data), m_nWidth(source.m_time.m_nColumnWidth), m_bBoth(source.m_nDisplay == 2),
          m_nLast(nLast) {}

    Column Read(std::int64_t nIndex) const {
        const std::int64_t nEnd = std::min(nIndex + m_nWidth, m_nLast);
        const RTMinMax values = Find(nIndex, nEnd);
        Column column{values.m_nMin, values.m_nMax, 0};
        if (m_bBoth) {
            // Each value of the column brings the one behind it, also when that begins the next
            // column.
            const std::int64_t nLastOwn = nIndex + (nEnd - 1 - nIndex) / 2 * 2;
            const RTMinMax second = Find(nIndex + 1, std::min(nLastOwn + 2, m_nLast));
            column.m_nSecondHigh = std::max<int>(second.m_nMax, 0);
        }
        return column;
    }

    /// The main line's value after the columns from nIndex on, which are out of sight. They are
    /// walked from the last one back, only as far as the outcome still depends on them.
    int FindLevelAfter(std::int64_t nIndex, int nLevel) const {
        if (nIndex >= m_nLast) return nLevel;
        std::int64_t nAt = nIndex + (m_nLast - 1 - nIndex) / m_nWidth * m_nWidth;
        Column column = Read(nAt);
        int nIfLow = column.m_nLow;  // the outcome if the line leaves the column at its low end
        int nIfHigh = column.m_nHigh;
        while (nIfLow != nIfHigh && nAt > nIndex) {
            nAt -= m_nWidth;
            const Column before = Read(nAt);
            const int nFromLow = before.m_nLow >= column.m_nHigh ? nIfLow : nIfHigh;
            const int nFromHigh = before.m_nHigh >= column.m_nHigh ? nIfLow : nIfHigh;
            nIfLow = nFromLow;
            nIfHigh = nFromHigh;
            column = before;
        }
        return nLevel >= column.m_nHigh ? nIfLow : nIfHigh;
    }

  private:
    RTMinMax Find(std::int64_t nFirst, std::int64_t nEnd) const {
        return m_data.FindMinMax(static_cast<std::uint32_t>(nFirst),
                                 static_cast<std::uint32_t>(nEnd));
    }

    const RTCurveData& m_data;
    const std::int64_t m_nWidth;
    const bool m_bBoth;
    const std::int64_t m_nLast;
};

}  // namespace

ChangedSpan CurveLine::Update(const std::shared_ptr<const RTCurveData>& spData,
                              const Source& source, std::int64_t nLast) {
    const bool bSame = m_source && *m_source == source && spData == m_wpData.lock();
    if (bSame && nLast == m_nLast) return {};

    // Only the last column can have changed with the values behind it: those before it have read
    // nothing beyond its first value.
    ChangedSpan changed = ChangedSpan::Everything();
    const bool bGrown = bSame && nLast > m_nLast;
    if (bGrown) {
        m_mainPoints.resize(m_lastColumn.m_nMainPoints);
        if (!m_columnEnds.empty()) m_columnEnds.pop_back();
        changed.m_nFrom = m_mainPoints.empty() ? source.m_time.m_nLeft : m_mainPoints.back().x;
    } else {
        m_mainPoints.clear();
        m_columnEnds.clear();
        m_lastColumn = {source.m_nFirst, source.m_nLevel, 0};
    }
    m_source.reset();
    Trace(*spData, source, nLast);
    if (bGrown) changed.m_nEnd = m_mainPoints.back().x + 1;
    m_wpData = spData;
    m_source = source;
    m_nLast = nLast;
    return changed;
}

/// Appends the columns from m_lastColumn on.
void CurveLine::Trace(const RTCurveData& data, const Source& source, std::int64_t nLast) {
    const CColumnReader reader(data, source, nLast);
    const std::int64_t nWidth = source.m_time.m_nColumnWidth;
    m_nLevel = m_lastColumn.m_nLevel;
    for (std::int64_t i = m_lastColumn.m_nIndex; i < nLast; i += nWidth) {
        m_lastColumn = {i, m_nLevel, m_mainPoints.size()};
        const int x = source.m_time.XAt(i - source.m_nFirst);
        const Column column = reader.Read(i);
        const bool bStraddles = column.m_nLow < m_nLevel && column.m_nHigh > m_nLevel;
        if (bStraddles) m_mainPoints.push_back({x, source.m_value.YOf(column.m_nLow)});
        m_nLevel = PassColumn(m_nLevel, column.m_nLow, column.m_nHigh);
        m_mainPoints.push_back({x, source.m_value.YOf(m_nLevel)});
        if (source.m_nDisplay == 2)
            m_columnEnds.push_back(
                {m_mainPoints.size(), {x, source.m_value.YOf(column.m_nSecondHigh)}});
        if (x >= source.m_nWidth) {
            m_nLevel = reader.FindLevelAfter(i + nWidth, m_nLevel);
            return;
        }
    }
}
