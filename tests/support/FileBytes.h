// A writer of .rt3 bytes of any version, apart from the one under test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FileBytes {
    std::vector<std::uint8_t> m_bytes;

    FileBytes& Number(std::int64_t nValue, int nSize) {
        for (int n = 0; n < nSize; ++n)
            m_bytes.push_back(static_cast<std::uint8_t>(nValue >> (8 * n)));
        return *this;
    }
    FileBytes& Byte(std::int64_t nValue) { return Number(nValue, 1); }
    FileBytes& Word(std::int64_t nValue) { return Number(nValue, 2); }
    FileBytes& Long(std::int64_t nValue) { return Number(nValue, 4); }

    /// Screen record of version 4 and three spans.
    FileBytes& Head() { return Long(4).Byte(1).Byte(0).Word(40000).Word(20000).Spans({4, 1, 1}); }
    FileBytes& Spans(const std::vector<std::int32_t>& anSpans) {
        Byte(static_cast<std::int64_t>(anSpans.size()));
        for (const std::int32_t nSpan : anSpans) Long(nSpan);
        return *this;
    }
    FileBytes& Values(const std::vector<int>& anValues) {
        Word(0x5A5A).Long(static_cast<std::int64_t>(anValues.size())).Long(1000);
        for (const int nValue : anValues) Word(nValue);
        return *this;
    }
    FileBytes& Pulses(const std::vector<std::pair<int, int>>& pulses) {
        Long(static_cast<std::int64_t>(pulses.size()));
        for (const auto& [nPosition, nState] : pulses) Long(nPosition).Byte(nState);
        return *this;
    }
    FileBytes& Longs(const std::vector<int>& anNumbers) {
        for (const int nNumber : anNumbers) Long(nNumber);
        return *this;
    }
    FileBytes& Words(const std::vector<int>& anNumbers) {
        for (const int nNumber : anNumbers) Word(nNumber);
        return *this;
    }

    /// 112 bytes, written out by hand: one curve 100, -200, 300, -50 on channel 0, one pulse.
    static std::vector<std::uint8_t> SmallCapture() {
        // clang-format off
        return {
            0x04, 0, 0, 0,                                   // screen record version
            0x01, 0x00, 0x40, 0x9C, 0x20, 0x4E,              // mode, second input, rates
            0x03, 4, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0,        // spans
            0x0E, 0x03, 1, 0, 0, 0,                          // version, channels, curves
            0, 0, 4, 0, 0, 0, 4, 0, 0, 0,                    // reserved, count, capacity
            0x64, 0x00, 0x38, 0xFF, 0x2C, 0x01, 0xCE, 0xFF,  // values
            1, 0, 0, 0, 4, 0, 0, 0, 5,                       // pulses
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,      // markers
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
            0xCE, 0xFF, 0x38, 0xFF, 0x2C, 0x01, 0x64, 0x00,  // extremes
            0, 0, 0, 0, 0, 0, 0, 0,                          // no curves on channels 1 and 2
        };
        // clang-format on
    }
};
