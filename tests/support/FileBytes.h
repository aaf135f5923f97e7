// A writer of .rt3 bytes of any version, apart from the one under test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FileBytes {
    std::vector<std::uint8_t> m_bytes;

    std::string Text() const { return {m_bytes.begin(), m_bytes.end()}; }
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
        return Byte(static_cast<std::int64_t>(anSpans.size())).Longs(anSpans);
    }
    FileBytes& Values(const std::vector<int>& anValues) {
        Word(0x5A5A).Long(static_cast<std::int64_t>(anValues.size())).Long(1000);
        return Words(anValues);
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

    /// 112 bytes: one curve 100, -200, 300, -50 on channel 0, one pulse.
    static std::vector<std::uint8_t> SmallCapture() {
        FileBytes bytes;
        bytes.Head().Byte(14).Byte(3).Long(1).Word(0).Long(4).Long(4).Words({100, -200, 300, -50});
        bytes.Pulses({{4, 5}}).Longs(std::vector(10, -1)).Words({-50, -200, 300, 100});
        return bytes.Longs({0, 0}).m_bytes;
    }
};
