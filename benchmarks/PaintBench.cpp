// One repaint of a plot of the screen's size, against the bare drawing of as many lines and texts.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "platform/Graphics.h"
#include "plot/RTPlot.h"

namespace {

constexpr int WIDTH = 698;
constexpr int HEIGHT = 343;
constexpr std::uint16_t RATE = 40000;
constexpr std::uint32_t VALUES_PER_BLOCK = 800;  ///< 20 ms, as a link delivers them

/// Three strokes with noise, whatever the length, and lines that change now and then.
void FillCurve(RTCurveData& curve, unsigned nSeed) {
    std::uint32_t nRandom = nSeed * 2654435761u + 1;
    const auto free = curve.GetFreeValues();
    for (std::uint32_t i = 0; i < free.size(); ++i) {
        nRandom = nRandom * 1664525u + 1013904223u;
        const double dPhase = std::sin(i * 3 * 3.14159265 / static_cast<double>(free.size()));
        free[i] = static_cast<std::int16_t>(4000 * dPhase * dPhase + (nRandom >> 24));
    }
    const auto nCount = static_cast<std::uint32_t>(free.size());
    for (std::uint32_t i = VALUES_PER_BLOCK; i <= nCount; i += VALUES_PER_BLOCK) {
        curve.PublishCount(i);
        curve.AddPulse(static_cast<std::int32_t>(i),
                       static_cast<std::uint8_t>(i / (nCount / 12 + 1)));
    }
    curve.RecomputeExtremes();
}

struct PaintedPlot {
    PaintedPlot(std::size_t nCurves, std::uint32_t nValues) {
        const auto spCurves = std::make_shared<CRTCurves>();
        for (std::size_t k = 0; k < nCurves; ++k)
            FillCurve(*spCurves->AddCurve(0, nValues), static_cast<unsigned>(k));
        graph.m_nGraphRate = RATE;
        plot.m_spCurves = spCurves;
        plot.m_pGraph = &graph;
        plot.m_nSpanValues = static_cast<std::int32_t>(nValues);
        plot.m_nWidth = WIDTH;
        plot.m_nHeight = plot.m_nBottom = HEIGHT;
        plot.ZoomAll();
        bitmap.CreateBitmap(WIDTH, HEIGHT);
        dc.CreateCompatibleDC(nullptr);
        dc.SelectBitmap(&bitmap);
    }

    RTGraphSettings graph;
    RTPlot plot;
    CBitmap bitmap;
    CDC dc;
};

void BM_Repaint(benchmark::State& state) {
    PaintedPlot painted(static_cast<std::size_t>(state.range(0)),
                        static_cast<std::uint32_t>(state.range(1)));
    for (auto _ : state) painted.plot.Paint(painted.dc);
}
BENCHMARK(BM_Repaint)
    ->ArgNames({"curves", "values"})
    ->Args({1, 120'000})
    ->Args({1, 2'400'000})
    ->Args({20, 120'000})
    ->Args({20, 2'400'000})
    ->Unit(benchmark::kMicrosecond);

/// The same number of texts, axis lines, trace steps and curve segments, at positions that are
/// there beforehand.
void BM_BareDrawing(benchmark::State& state) {
    const auto nCurves = static_cast<std::size_t>(state.range(0));
    PaintedPlot target(1, VALUES_PER_BLOCK);
    std::vector<std::wstring> texts{L"I #1", L"I #2", L"I #3", L"I #4", L"(ms)"};
    for (int k = 0; k < 9; ++k) texts.push_back(std::to_wstring(k * 375));
    for (int k = 0; k < 11; ++k) texts.push_back(std::to_wstring(-5000 + k * 1000));
    if (nCurves > 1)
        for (std::size_t k = 0; k < nCurves; ++k) texts.push_back(L"Curve #" + std::to_wstring(k));

    // Five hundred columns, each of a segment down and one up by the height of the noise.
    std::vector<CPoint> curve;
    for (int k = 0; k < 500; ++k) {
        const double dPhase = std::sin(k * 3.14159265 / 167);
        const int x = 40 + k * (WIDTH - 42) / 500;
        const int y = 210 - static_cast<int>(160 * dPhase * dPhase);
        curve.push_back({x, y});
        curve.push_back({x, y - 10});
    }
    const CBrush background(RGB(192, 192, 192));
    const CPen grid(PS_DOT, RGB(255, 255, 0));
    const CPen line(PS_SOLID, RGB(0, 0, 255));
    const CRgn area({40, 17, WIDTH, 220});
    CDC& dc = target.dc;
    dc.SetBkMode(TRANSPARENT);
    for (auto _ : state) {
        dc.SelectPen(nullptr);
        dc.Rectangle({0, 0, WIDTH, HEIGHT}, &background);
        for (std::size_t k = 0; k < texts.size(); ++k)
            dc.TextOut(static_cast<int>(k * 20), static_cast<int>(k * 10), texts[k]);
        dc.SelectPen(&grid);
        for (int k = 0; k < 11; ++k) {
            dc.MoveTo(40, 20 + 18 * k);
            dc.LineTo(WIDTH, 20 + 18 * k);
        }
        dc.SelectPen(&line);
        for (int k = 0; k < 4 * 12; ++k) {
            dc.MoveTo(40 + k * 50 % 600, 240 + k);
            dc.LineTo(90 + k * 50 % 600, 240 + k);
            dc.LineTo(90 + k * 50 % 600, 248 + k);
        }
        dc.SelectClipRgn(&area);
        for (std::size_t k = 0; k < nCurves; ++k) {
            dc.MoveTo(40, 200);
            dc.PolylineTo(curve);
        }
        dc.SelectClipRgn(nullptr);
    }
}
BENCHMARK(BM_BareDrawing)->ArgName("curves")->Arg(1)->Arg(20)->Unit(benchmark::kMicrosecond);

}  // namespace
