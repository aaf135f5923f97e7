// A plot with a memory context to paint it into, and the means to look at the picture.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "platform/drawing/Graphics.h"
#include "plot/PlotCache.h"
#include "plot/RTPlot.h"

using Pixels = std::set<std::pair<int, int>>;

struct PlotSheet {
    explicit PlotSheet(int nWidth = 698, int nHeight = 343) {
        m_spCurves = std::make_shared<CRTCurves>();
        m_graph.m_nGraphRate = 40000;
        m_plot.m_spCurves = m_spCurves;
        m_plot.m_pGraph = &m_graph;
        m_plot.m_nWidth = nWidth;
        m_plot.m_nHeight = m_plot.m_nBottom = nHeight;
        m_bitmap.CreateBitmap(nWidth, nHeight);
        m_dc.CreateCompatibleDC(nullptr);
        m_dc.SelectBitmap(&m_bitmap);
        m_dc.FillSolidRect({0, 0, nWidth, nHeight}, RGB(240, 240, 240));
    }

    /// Appends a finished curve with a value for each index, and shows all of it.
    RTCurveData& Add(std::uint32_t nCount, const std::function<int(std::uint32_t)>& valueAt) {
        const auto spCurve = m_spCurves->AddCurve(m_plot.m_nChannel, nCount);
        const auto free = spCurve->GetFreeValues();
        for (std::uint32_t i = 0; i < nCount; ++i) free[i] = static_cast<std::int16_t>(valueAt(i));
        spCurve->PublishCount(nCount);
        spCurve->RecomputeExtremes();
        m_plot.m_nSpanValues = static_cast<std::int32_t>(nCount);
        m_plot.ZoomAll();
        return *spCurve;
    }

    /// Takes over what a plot shows, as far as it decides about the picture.
    void ShowAs(const RTPlot& plot) {
        const auto fields = [](auto& of) {
            return std::tie(of.m_spCurves, of.m_nViewStart, of.m_nViewEnd, of.m_bZoomed,
                            of.m_nSpanValues, of.m_nDisplay, of.m_nMode, of.m_nChannel,
                            of.m_nMarkerA, of.m_nMarkerB, of.m_nTriggerLevel);
        };
        fields(m_plot) = fields(plot);
        m_spCurves = plot.m_spCurves;
    }

    CRect Paint() { return m_plot.Paint(m_dc, &m_cache); }

    Pixels Find(COLORREF color) const { return FindIn(m_dc, color); }
    Pixels FindIn(const CDC& dc, COLORREF color) const {
        Pixels found;
        for (int y = 0; y < m_plot.m_nHeight; ++y)
            for (int x = 0; x < m_plot.m_nWidth; ++x)
                if (dc.GetPixel(x, y) == color) found.insert({x, y});
        return found;
    }
    /// How many pixels of a column, or of a row, have a colour.
    int CountInColumn(int x, COLORREF color) const {
        int nCount = 0;
        for (int y = 0; y < m_plot.m_nHeight; ++y) nCount += m_dc.GetPixel(x, y) == color;
        return nCount;
    }
    int CountInRow(int y, COLORREF color) const {
        int nCount = 0;
        for (int x = 0; x < m_plot.m_nWidth; ++x) nCount += m_dc.GetPixel(x, y) == color;
        return nCount;
    }
    /// The pixels of a text at a point.
    Pixels InkOf(int x, int y, const wchar_t* pText, TextAlign align = TextAlign::Left) const {
        CBitmap stencil;
        stencil.CreateBitmap(m_plot.m_nWidth, m_plot.m_nHeight);
        CDC other;
        other.CreateCompatibleDC(nullptr);
        other.SelectBitmap(&stencil);
        other.FillSolidRect({0, 0, m_plot.m_nWidth, m_plot.m_nHeight}, RGB(255, 255, 255));
        other.SetBackgroundMode(BackgroundMode::Transparent);
        other.SetTextAlign(align);
        other.TextOut(x, y, pText);
        return FindIn(other, RGB(0, 0, 0));
    }
    /// Whether a text stands at a point in a colour, its pixels all there.
    bool HasText(int x, int y, const wchar_t* pText, COLORREF color,
                 TextAlign align = TextAlign::Left) const {
        const Pixels ink = InkOf(x, y, pText, align);
        return !ink.empty() && std::ranges::all_of(ink, [&](const auto& pixel) {
            return m_dc.GetPixel(pixel.first, pixel.second) == color;
        });
    }
    /// Whether the margin, beside the frame, holds this black label at a height and nothing else.
    bool HasLabel(int y, const wchar_t* pText) const {
        const auto isOther = [y](const auto& pixel) {
            return pixel.first == 0 || pixel.first >= 40 || pixel.second < y ||
                   pixel.second >= y + 16;
        };
        Pixels ink = InkOf(0, y, pText), found = Find(RGB(0, 0, 0));
        std::erase_if(ink, isOther);
        std::erase_if(found, isOther);
        return !ink.empty() && found == ink;
    }

    RTGraphSettings m_graph;
    std::shared_ptr<CRTCurves> m_spCurves;
    RTPlot m_plot;
    PlotCache m_cache;
    CBitmap m_bitmap;
    CDC m_dc;
};
