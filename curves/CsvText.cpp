#include "curves/CsvText.h"

#include <charconv>

namespace {

char* AppendThreeDigits(char* pTo, unsigned nNumber) {
    for (const unsigned nDigit : {nNumber / 100, nNumber / 10 % 10, nNumber % 10})
        *pTo++ = static_cast<char>('0' + nDigit);
    return pTo;
}

}  // namespace

CThousandths::CThousandths(RTMinMax range)
    : m_nFirst(range.m_nMin), m_texts(static_cast<std::size_t>(range.m_nMax - m_nFirst) + 1) {
    for (int nValue = m_nFirst; nValue <= range.m_nMax; ++nValue) Form(nValue);
}

void CThousandths::Form(int nValue) {
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

CStepTimes::CStepTimes(std::uint16_t nValueRate, unsigned nStepValues)
    : m_nRate(nValueRate),
      m_nStepMicroseconds(nValueRate == 0 ? 1000 * nStepValues
                                          : 1'000'000 * nStepValues / nValueRate),
      m_nStepRest(nValueRate == 0 ? 0 : 1'000'000 * nStepValues % nValueRate) {
    FormWhole();
}

void CStepTimes::FormWhole() {
    m_nWholeLength = static_cast<std::size_t>(
        std::to_chars(m_whole.data(), m_whole.data() + m_whole.size(), m_nWhole).ptr -
        m_whole.data());
}

char* CStepTimes::Append(char* pTo) {
    std::memcpy(pTo, m_whole.data(), m_whole.size());
    pTo += m_nWholeLength;
    if (m_nRate != 0) {
        *pTo++ = '.';
        pTo = AppendThreeDigits(pTo, m_nMicroseconds);
    }

    m_nMicroseconds += m_nStepMicroseconds;
    m_nRest += m_nStepRest;
    if (m_nRest >= m_nRate && m_nRate != 0) {
        m_nRest -= m_nRate;
        ++m_nMicroseconds;
    }
    if (m_nMicroseconds >= 1000) {
        m_nWhole += m_nMicroseconds / 1000;
        m_nMicroseconds %= 1000;
        FormWhole();
    }
    return pTo;
}
