#include "curves/CsvExport.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <vector>

#include "platform/system/Exceptions.h"
#include "platform/system/Interrupt.h"
#include "platform/system/NumberedText.h"
#include "platform/system/Progress.h"
#include "platform/system/TextFile.h"

namespace {

constexpr std::uint32_t ROWS_PER_PART = 1024;
constexpr std::uint32_t ROWS_PER_REPORT = 64 * ROWS_PER_PART;
/// "\r\n-32.768,-32.768" has 17 characters, a time 20 more, and one may stand behind the last.
constexpr std::size_t MAX_ROW_LENGTH = 48;
static_assert(ROWS_PER_PART * MAX_ROW_LENGTH <= CTextFile::MAX_ROOM);

char* AppendThreeDigits(char* pTo, unsigned nNumber) {
    for (const unsigned nDigit : {nNumber / 100, nNumber / 10 % 10, nNumber % 10})
        *pTo++ = static_cast<char>('0' + nDigit);
    return pTo;
}

/// The texts of all values of a range. A long curve has many more values than there are different
/// ones, and to copy a text takes half as long as to form it.
class CThousandths {
  public:
    explicit CThousandths(RTMinMax range)
        : m_nFirst(range.m_nMin), m_texts(static_cast<std::size_t>(range.m_nMax - m_nFirst) + 1) {
        for (int nValue = m_nFirst; nValue <= range.m_nMax; ++nValue) Form(nValue);
    }

    /// Copies the eight characters of a text, of which those behind its end do not count.
    char* Append(char* pTo, std::int16_t nValue) const {
        const Text& text = m_texts[static_cast<std::size_t>(nValue - m_nFirst)];
        std::memcpy(pTo, &text, sizeof text);
        return pTo + text.m_nLength;
    }

  private:
    struct Text {
        std::array<char, 7> m_characters;  ///< such as "-32.768"
        std::uint8_t m_nLength;
    };

    void Form(int nValue) {
        Text& text = m_texts[static_cast<std::size_t>(nValue - m_nFirst)];
        char* pTo = text.m_characters.data();
        if (nValue < 0) *pTo++ = '-';
        const auto nMagnitude = static_cast<unsigned>(nValue < 0 ? -nValue : nValue);
        const unsigned nWhole = nMagnitude / 1000;
        if (nWhole >= 10) *pTo++ = static_cast<char>('0' + nWhole / 10);
        *pTo++ = static_cast<char>('0' + nWhole % 10);
        *pTo++ = '.';
        pTo = AppendThreeDigits(pTo, nMagnitude % 1000);
        text.m_nLength = static_cast<std::uint8_t>(pTo - text.m_characters.data());
    }

    int m_nFirst;
    std::vector<Text> m_texts;
};

char* AppendTime(char* pTo, std::uint64_t nIndex, std::uint16_t nValueRate) {
    constexpr std::size_t nRoom = 20;
    if (nValueRate == 0) {
        pTo = std::to_chars(pTo, pTo + nRoom, nIndex).ptr;
    } else {
        const std::uint64_t nMicroseconds = nIndex * 1'000'000 / nValueRate;
        pTo = std::to_chars(pTo, pTo + nRoom, nMicroseconds / 1000).ptr;
        *pTo++ = '.';
        pTo = AppendThreeDigits(pTo, static_cast<unsigned>(nMicroseconds % 1000));
    }
    *pTo++ = ',';
    return pTo;
}

void WriteRows(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options,
               IProgress* pProgress) {
    const std::uint32_t nRows = curve.GetCount() / 2;
    RTMinMax range{0, 0};
    range.Include(curve.FindMinMax(0, 2 * nRows));
    range.Include(curve.FindMinMax(1, 2 * nRows));
    const CThousandths texts(range);
    file.WriteString(options.m_bTimeColumn ? "Time, Force, Distance" : "Force, Distance");

    std::uint32_t nRow = 0;
    while (nRow < nRows) {
        const std::uint32_t nPartEnd = std::min(nRows, nRow + ROWS_PER_PART);
        const std::int16_t* pValue = curve.GetValues() + 2 * std::size_t{nRow};
        char* pTo = file.GetBuffer();
        for (; nRow < nPartEnd; ++nRow, pValue += 2) {
            *pTo++ = '\r';
            *pTo++ = '\n';
            if (options.m_bTimeColumn)
                pTo = AppendTime(pTo, 2 * std::uint64_t{nRow}, options.m_nValueRate);
            pTo = texts.Append(pTo, pValue[0]);
            *pTo++ = ',';
            pTo = texts.Append(pTo, pValue[1]);
        }
        file.ReleaseBuffer(pTo);
        if (pProgress && nRow % ROWS_PER_REPORT == 0 && !pProgress->Advance(nRow, nRows))
            throw CUserException();
    }
}

}  // namespace

void WriteCurveCsv(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options,
                   IProgress* pProgress) {
    const bool bKept = file.IsRegular();
    try {
        WriteRows(file, curve, options, pProgress);
        file.Close();
    } catch (CFileException& error) {
        if (bKept)
            error.m_strDetail = GetText({3149, L"The lines written before the failure are kept."});
        throw;
    }
}

void ExportCurveCsv(const std::wstring& strPath, const RTCurveData& curve,
                    const RTCsvOptions& options, IProgress* pProgress) {
    CTextFile file;
    CUnfinishedFile unfinished;
    unfinished.Create(file, strPath);
    try {
        WriteCurveCsv(file, curve, options, pProgress);
    } catch (const CUserException&) {
        unfinished.Remove();
        throw;
    }
}
