#include "curves/CsvExport.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "platform/system/Exceptions.h"
#include "platform/system/Interrupt.h"
#include "platform/system/Progress.h"
#include "platform/system/TextFile.h"

namespace {

constexpr std::uint32_t ROWS_PER_PART = 1024;
constexpr std::uint32_t ROWS_PER_REPORT = 64 * ROWS_PER_PART;
/// "\r\n-32.768,-32.768" has 17 characters, a time 20 more, and a table entry is copied whole.
constexpr std::size_t MAX_ROW_LENGTH = 48;
static_assert(ROWS_PER_PART * MAX_ROW_LENGTH <= CTextFile::BUFFER_SIZE);

/// The text of every number of thousandths there can be in front of the last three digits.
struct WholePart {
    std::array<char, 4> m_text{};  ///< such as "-32."
    std::uint8_t m_nLength = 0;
};

/// How many there are of either sign: 0 to 32.
constexpr std::size_t WHOLE_COUNT = 33;

/// Those of positive values, then those of negative ones.
constexpr std::array<WholePart, 2 * WHOLE_COUNT> MakeWholeParts() {
    std::array<WholePart, 2 * WHOLE_COUNT> parts{};
    for (std::size_t n = 0; n < parts.size(); ++n) {
        WholePart& part = parts[n];
        const auto append = [&part](std::size_t c) {
            part.m_text[part.m_nLength++] = static_cast<char>(c);
        };
        const std::size_t nWhole = n % WHOLE_COUNT;
        if (n >= WHOLE_COUNT) append('-');
        if (nWhole >= 10) append('0' + nWhole / 10);
        append('0' + nWhole % 10);
        append('.');
    }
    return parts;
}

constexpr std::array<std::array<char, 4>, 1000> MakeThousandths() {
    std::array<std::array<char, 4>, 1000> texts{};
    for (int n = 0; n < 1000; ++n)
        texts[static_cast<std::size_t>(n)] = {static_cast<char>('0' + n / 100),
                                              static_cast<char>('0' + n / 10 % 10),
                                              static_cast<char>('0' + n % 10), ' '};
    return texts;
}

constexpr auto WHOLE_PARTS = MakeWholeParts();
constexpr auto THOUSANDTHS = MakeThousandths();

/// Copies four characters at a time and goes on behind those that count.
char* AppendThousandths(char* pTo, std::int16_t nValue) {
    const auto nMagnitude = static_cast<unsigned>(nValue < 0 ? -nValue : nValue);
    const WholePart& whole = WHOLE_PARTS[nMagnitude / 1000 + (nValue < 0 ? WHOLE_COUNT : 0)];
    std::memcpy(pTo, whole.m_text.data(), 4);
    pTo += whole.m_nLength;
    std::memcpy(pTo, THOUSANDTHS[nMagnitude % 1000].data(), 4);
    return pTo + 3;
}

char* AppendTime(char* pTo, std::uint64_t nIndex, std::uint16_t nValueRate) {
    constexpr std::size_t nRoom = 20;
    if (nValueRate == 0) {
        pTo = std::to_chars(pTo, pTo + nRoom, nIndex).ptr;
    } else {
        const std::uint64_t nMicroseconds = nIndex * 1'000'000 / nValueRate;
        pTo = std::to_chars(pTo, pTo + nRoom, nMicroseconds / 1000).ptr;
        *pTo++ = '.';
        std::memcpy(pTo, THOUSANDTHS[nMicroseconds % 1000].data(), 3);
        pTo += 3;
    }
    *pTo++ = ',';
    return pTo;
}

void WriteRows(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options,
               IProgress* pProgress) {
    const std::uint32_t nRows = curve.GetCount() / 2;
    file.WriteString(options.m_bTimeColumn ? "Time, Force, Distance" : "Force, Distance");

    std::uint32_t nRow = 0;
    while (nRow < nRows) {
        const std::uint32_t nPartEnd = std::min(nRows, nRow + ROWS_PER_PART);
        const std::int16_t* pValue = curve.GetValues() + 2 * std::size_t{nRow};
        char* pTo = file.GetBuffer(ROWS_PER_PART * MAX_ROW_LENGTH);
        for (; nRow < nPartEnd; ++nRow, pValue += 2) {
            *pTo++ = '\r';
            *pTo++ = '\n';
            if (options.m_bTimeColumn)
                pTo = AppendTime(pTo, 2 * std::uint64_t{nRow}, options.m_nValueRate);
            pTo = AppendThousandths(pTo, pValue[0]);
            *pTo++ = ',';
            pTo = AppendThousandths(pTo, pValue[1]);
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
        if (bKept) error.m_strDetail = L"The lines written before the failure are kept.";
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
