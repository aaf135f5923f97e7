// The colours of a plot.
#pragma once

#include <array>

#include "platform/drawing/Geometry.h"

/// 50 colours, most of them from the host's settings store.
struct RTPlotColours {
    static constexpr std::size_t SLOT_COUNT = 20;    ///< curves with a colour of their own
    static constexpr std::size_t STORED_SLOTS = 10;  ///< of them with a settings key
    /// From the 21st curve of a plot on.
    static constexpr COLORREF FURTHER_CURVES = RGB(35, 65, 98);

    COLORREF m_crTimeMarker;
    COLORREF m_crToolPulse;
    COLORREF m_crStart;
    COLORREF m_crEnd;
    COLORREF m_crTrigger;
    COLORREF m_crBackground;
    std::array<COLORREF, SLOT_COUNT> m_acrGraphLine;   ///< by curve, values at even indices
    std::array<COLORREF, SLOT_COUNT> m_acrGraphLine2;  ///< by curve, values at odd indices
    COLORREF m_crToolSyncPulse;
    COLORREF m_crHomePulseCB;
    COLORREF m_crText;
    COLORREF m_crGridLines;

    /// Reads the colours from the application's settings store, section "RealTimeMonitor\Colours";
    /// a key that is absent, or an absent application, gives the default.
    void Load();

    friend bool operator==(const RTPlotColours&, const RTPlotColours&) = default;
};
