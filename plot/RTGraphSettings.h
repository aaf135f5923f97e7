// What all plots of a screen share: value range, rate of the time axis, auto zoom.
#pragma once

#include <atomic>
#include <cstdint>

#pragma pack(push, 1)
/// Byte-packed: part of the session record that the host is compiled against.
struct RTGraphSettings {
    std::int32_t m_nRangeMin = -5000;  ///< lower end of the value axis, millivolts
    std::int32_t m_nRangeMax = 5000;   ///< upper end of the value axis, millivolts
    std::uint16_t m_nGraphRate = 0;    ///< values per second of the curves shown
    std::uint8_t m_bAutoZoom = 1;      ///< 1: the value axis follows the curves' extremes

    friend bool operator==(const RTGraphSettings&, const RTGraphSettings&) = default;
};
#pragma pack(pop)

static_assert(sizeof(RTGraphSettings) == 11 && alignof(RTGraphSettings) == 1);

/// Auto zoom is switched on the user-interface thread and also read by the packet reader.
inline bool IsAutoZoom(const RTGraphSettings& graph) {
    // The reference is only read through; atomic_ref has no const form.
    return std::atomic_ref(const_cast<std::uint8_t&>(graph.m_bAutoZoom))
               .load(std::memory_order_relaxed) != 0;
}
inline void SetAutoZoom(RTGraphSettings& graph, bool bOn) {
    std::atomic_ref(graph.m_bAutoZoom).store(bOn ? 1 : 0, std::memory_order_relaxed);
}
