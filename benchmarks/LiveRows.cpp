// A capture of three channels of 40,000 values a second from the simulated press, drawn while it
// arrives: what the threads compute, but for the instrument's.
#include <chrono>
#include <mutex>
#include <string>
#include <thread>

#include "LiveScreen.h"
#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "instrument/PressInstrument.h"
#include "instrument/SimulatedPress.h"

namespace {

constexpr auto SLICE = std::chrono::milliseconds(500);
constexpr double SLICES_PER_SECOND = 2;

/// By time slices: seconds of computing a second, and those of the user interface a repaint.
struct LiveFigures {
    Figures m_interface;
    Figures m_reader;
    Figures m_both;
    Figures m_repaint;
};

/// Captures that are over, of a tenth of a second each.
void AddOlderCaptures(CRealTimeData& session, unsigned nCaptures) {
    constexpr std::uint32_t SHORT_CURVE = CLiveScreen::RATE / 10;
    const std::lock_guard lock(session.m_lock);
    for (unsigned n = 0; n < nCaptures; ++n) {
        for (std::size_t nChannel = 0; nChannel < CRTCurves::CHANNEL_COUNT; ++nChannel) {
            RTCurveData& curve = *session.m_spCurves->AddCurve(nChannel, SHORT_CURVE);
            const auto free = curve.GetFreeValues();
            FillStrokes(free, n);
            curve.PublishCount(SHORT_CURVE);
            curve.AddPulse(SHORT_CURVE, static_cast<std::uint8_t>(n));
            curve.RecomputeExtremes();
        }
    }
}

LiveFigures MeasureCapture(unsigned nOlderCaptures, int nSlices) {
    std::vector<double> interface, reader, both, repaint;
    CLiveScreen screen;
    screen.Run([&] {
        AddOlderCaptures(*screen.m_panel.m_pSession, nOlderCaptures);
        CPressInstrument instrument(screen.m_panel.m_queue, FindValueLayout(3, 0, 3),
                                    std::make_unique<CSimulatedPress>(SecondInput::Position, 1));
        screen.StartCapture(15);
        Operator::Ask([&] {
            for (const std::string& strImage : screen.m_panel.m_view.m_images)
                instrument.Send(strImage);
        });
        std::this_thread::sleep_for(SLICE);  // it begins with a picture that is all new
        LiveTimes before = screen.ReadTimes();
        for (int i = 0; i < nSlices; ++i) {
            std::this_thread::sleep_for(SLICE);
            const LiveTimes now = screen.ReadTimes();
            const LiveTimes slice = now - before;
            before = now;
            interface.push_back(slice.m_dInterface * SLICES_PER_SECOND);
            reader.push_back(slice.m_dReader * SLICES_PER_SECOND);
            both.push_back(interface.back() + reader.back());
            repaint.push_back(slice.m_dInterface / static_cast<double>(slice.m_nRepaints));
        }
    });
    return {FindFigures(interface, Figures::Median), FindFigures(reader, Figures::Median),
            FindFigures(both, Figures::Median), FindFigures(repaint, Figures::Median)};
}

}  // namespace

void MeasureLive(CTable& table) {
    constexpr int SLICES = 10;
    const LiveFigures alone = MeasureCapture(0, SLICES);
    table.AddTime("user interface, per second", alone.m_interface);
    table.AddTime("packet reader, per second", alone.m_reader);
    table.AddTime("all threads but the instrument's, per second", alone.m_both, 0.015);
    table.AddTime("user interface per repaint of 698 x 343", alone.m_repaint, 0.00012);
    for (const unsigned nOlder : {300u, 1000u}) {
        const LiveFigures among = MeasureCapture(nOlder, SLICES);
        table.AddComparison(std::to_string(nOlder) + " older captures, per second", among.m_both,
                            "no older capture", alone.m_both, {Goal::Within, 1.2});
    }
}
