// Numbers as bytes, least significant first.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

/// Writes a number at the beginning of `bytes`, which must have room for it.
template <std::unsigned_integral T>
constexpr void PutNumber(std::span<std::uint8_t> bytes, T n) {
    for (std::size_t i = 0; i < sizeof(T); ++i) bytes[i] = static_cast<std::uint8_t>(n >> (8 * i));
}

/// The number at the beginning of `bytes`, which must hold it.
template <std::unsigned_integral T>
constexpr T GetNumber(std::span<const std::uint8_t> bytes) {
    T n = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i)
        n = static_cast<T>(n | static_cast<T>(T{bytes[i]} << (8 * i)));
    return n;
}
