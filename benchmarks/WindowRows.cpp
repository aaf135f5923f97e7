// A plot in a window of its own, as wide as a large display, while its curve grows.
#include <chrono>
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

/// 3840 x 343 pixels, in dialog units.
constexpr DialogItem ITEMS[] = {{1, ControlKind::StaticFrame, L"", 0, 0, 2560, 211}};
constexpr DialogTemplate TEMPLATE{1, L"Plot", 2560, 211, L"MS Shell Dlg", 8, ITEMS};

}  // namespace

void MeasureWindow(CTable& table) {
    PaintedPlot plot(std::make_shared<CRTCurves>(), CURVE_VALUES);
    const auto spCurve = plot.m_plot.m_spCurves->AddCurve(0, CURVE_VALUES);
    std::vector<std::uint8_t> bytes(2 * PACKET_VALUES);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i % 16);
    CDialog window(TEMPLATE);
    CDialogDraw control;
    control.m_pPlot = &plot.m_plot;
    std::atomic<unsigned> nRepaints = 0;
    std::vector<double> seconds;  // of the user interface, per repaint

    window.Create(nullptr);
    control.AttachControl(1, &window);
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
            spCurve->AppendValues(bytes.data(), PACKET_VALUES);
            spCurve->AddPulse(static_cast<std::int32_t>(spCurve->GetCount()), 5);
            control.Invalidate();
        }
    });
    writer.Join();
    table.AddTime("plot 3840 wide, 50 repaints a second: each",
                  FindFigures(seconds, Figures::Median), 0.0005);
}
