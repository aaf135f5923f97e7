// A plot alone in a window while its curve grows.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "PaintedPlot.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "ThreadTimes.h"
#include "platform/operator/Operator.h"
#include "platform/operator/PaintWatch.h"
#include "platform/windows/Dialog.h"
#include "plot/DialogDraw.h"

namespace {

constexpr unsigned CURVE_VALUES = 60 * PLOT_RATE;
constexpr auto PACKET_TIME = std::chrono::milliseconds(20);
constexpr unsigned PACKET_VALUES = PLOT_RATE / 50;
constexpr int PACKETS_IN_SLICE = 15;
constexpr int SLICES = 8;

/// A dialog unit is 3/2 pixels wide and 13/8 high.
constexpr int PLOT_ID = 1;
constexpr int UNITS_HIGH = 211;
constexpr DialogItem NARROW[] = {{PLOT_ID, ControlKind::StaticFrame, L"", 0, 0, 465, UNITS_HIGH}};
constexpr DialogItem WIDE[] = {{PLOT_ID, ControlKind::StaticFrame, L"", 0, 0, 2560, UNITS_HIGH}};
constexpr DialogTemplate NARROW_WINDOW{1, L"Plot", 465, UNITS_HIGH, L"MS Shell Dlg", 8, NARROW};
constexpr DialogTemplate WIDE_WINDOW{1, L"Plot", 2560, UNITS_HIGH, L"MS Shell Dlg", 8, WIDE};

Figures MeasureRepaints(const DialogTemplate& dialogTemplate) {
    PaintedPlot plot(std::make_shared<CRTCurves>(), CURVE_VALUES);
    const auto spCurve = plot.m_plot.m_spCurves->AddCurve(0, CURVE_VALUES);
    plot.m_plot.ZoomAll();
    std::vector<std::int16_t> values(CURVE_VALUES);
    FillStrokes(values, 0);
    CDialog window(dialogTemplate);
    CDialogDraw control;
    control.m_pPlot = &plot.m_plot;
    std::atomic<unsigned> nRepaints = 0;
    std::vector<double> seconds;  // of the user interface, per repaint

    window.Create(nullptr);
    control.AttachControl(PLOT_ID, &window);
    window.ShowWindow(true);
    const CPaintWatch watch(
        control, [] {}, [&] { ++nRepaints; });
    const ThreadId interface = GetThisThread();
    Operator::CScript writer([&] {
        const auto begin = std::chrono::steady_clock::now();
        double dBefore = 0;
        unsigned nBefore = 0;
        for (int n = 0; n <= PACKETS_IN_SLICE * (SLICES + 1); ++n) {
            std::this_thread::sleep_until(begin + n * PACKET_TIME);
            if (n % PACKETS_IN_SLICE == 0) {
                const double dNow = ReadThreadSeconds(interface);
                // The first slice begins with a picture that is all new.
                if (n > PACKETS_IN_SLICE)
                    seconds.push_back((dNow - dBefore) / (nRepaints - nBefore));
                dBefore = dNow;
                nBefore = nRepaints;
            }
            const std::uint32_t nCount = spCurve->GetCount();
            std::copy_n(values.begin() + nCount, PACKET_VALUES, spCurve->GetFreeValues().begin());
            spCurve->PublishCount(nCount + PACKET_VALUES);
            spCurve->AddPulse(static_cast<std::int32_t>(nCount + PACKET_VALUES), 5);
            control.Invalidate();
        }
    });
    writer.Join();
    return FindFigures(seconds, Figures::Median);
}

}  // namespace

void MeasureWindow(CTable& table) {
    table.AddTime("user interface per repaint, 698 x 343", MeasureRepaints(NARROW_WINDOW));
    table.AddTime("user interface per repaint, 3840 x 343", MeasureRepaints(WIDE_WINDOW), 0.0005);
}
