// Conversion of computed positions to whole numbers.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

/// Far outside of every surface, and still leaves room for a few more additions in 32 bits.
constexpr int FAR_PIXEL = 1 << 29;

/// Toward zero; what is no pixel position ends far outside, what is no number at 0.
inline int TruncateToPixel(double dValue) {
    if (std::isnan(dValue)) return 0;
    return static_cast<int>(
        std::clamp(dValue, -static_cast<double>(FAR_PIXEL), static_cast<double>(FAR_PIXEL)));
}

/// Toward zero, limited to 32 bits; what is no number gives 0. In 64 bits, for sums.
inline std::int64_t TruncateToIndex(double dValue) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(dValue)) return 0;
    return static_cast<std::int64_t>(
        std::clamp(dValue, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

inline std::int32_t ClampToIndex(std::int64_t nValue) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(nValue, Limits::min(), Limits::max()));
}
