// Numbers as CSV rows have them, formed where they are to stand.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "curves/RTValueSummary.h"

/// The texts of all values of a range, in thousandths: -32768 is "-32.768". A long curve has many
/// more values than there are different ones, and to copy a text takes half as long as to form it.
class CThousandths {
  public:
    explicit CThousandths(RTMinMax range);

    /// Copies the eight characters of a text, of which those behind its end do not count.
    /// @return the text's end
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

    void Form(int nValue);

    int m_nFirst;
    std::vector<Text> m_texts;
};

/// The times of one step after the other, each a number of value indices long: milliseconds with
/// three decimals, toward zero. Without a rate the value indices themselves.
class CStepTimes {
  public:
    /// Characters that Append writes at the most.
    static constexpr std::size_t MAX_LENGTH = 24;

    /// @param nValueRate values per second; 0: no rate
    CStepTimes(std::uint16_t nValueRate, unsigned nStepValues);

    /// Appends the time of a step and goes on to the next one; the first is at 0.
    char* Append(char* pTo);

  private:
    void FormWhole();

    std::uint32_t m_nRate;
    // What a step adds, and where the next one stands: whole microseconds, and the rest in shares
    // of the rate. No step needs a division.
    std::uint32_t m_nStepMicroseconds;
    std::uint32_t m_nStepRest;
    std::uint64_t m_nWhole = 0;  ///< milliseconds, or value indices
    std::uint32_t m_nMicroseconds = 0;
    std::uint32_t m_nRest = 0;
    std::array<char, 20> m_whole{};
    std::size_t m_nWholeLength = 0;
};
