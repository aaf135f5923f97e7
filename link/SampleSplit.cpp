#include "link/SampleSplit.h"

#include <algorithm>

namespace {

constexpr std::size_t BLOCK_HEAD = 3;  // digital lines, count of values high byte first

}  // namespace

std::vector<PayloadBytes> SplitSamples(PayloadView payload, std::size_t nMost,
                                       std::size_t nSetValues) {
    if (payload.size() <= nMost) return {PayloadBytes(payload.begin(), payload.end())};
    const std::uint8_t byHeader = payload[0];
    const std::size_t nSetBytes = nSetValues * sizeof(std::int16_t);
    const std::size_t nRoom = nMost > 1 + BLOCK_HEAD ? nMost - 1 - BLOCK_HEAD : 0;
    const std::size_t nPart = std::max(nRoom / nSetBytes, std::size_t{1}) * nSetBytes;

    std::vector<PayloadBytes> parts;
    for (PayloadView rest = payload.subspan(1); !rest.empty();) {
        std::size_t nBytes = 0;
        if (rest.size() >= BLOCK_HEAD) nBytes = (rest[1] * 256u + rest[2]) * sizeof(std::int16_t);
        if (rest.size() < BLOCK_HEAD + nBytes)
            return {PayloadBytes(payload.begin(), payload.end())};
        for (std::size_t n = 0; n < nBytes; n += nPart) {
            const PayloadView values = rest.subspan(BLOCK_HEAD + n, std::min(nPart, nBytes - n));
            const std::size_t nCount = values.size() / sizeof(std::int16_t);
            if (parts.empty() || parts.back().size() + BLOCK_HEAD + values.size() > nMost)
                parts.push_back({byHeader});
            PayloadBytes& part = parts.back();
            part.insert(part.end(), {rest[0], static_cast<std::uint8_t>(nCount / 256),
                                     static_cast<std::uint8_t>(nCount % 256)});
            part.insert(part.end(), values.begin(), values.end());
        }
        rest = rest.subspan(BLOCK_HEAD + nBytes);
    }
    return parts;
}
