// A capture of three channels of 40,000 values a second from the simulated press, drawn while it
// arrives: what the threads compute.
#include <chrono>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "LiveScreen.h"
#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "instrument/PressInstrument.h"
#include "instrument/SimulatedPress.h"

namespace {

constexpr auto SLICE = std::chrono::milliseconds(250);
constexpr double SLICES_PER_SECOND = 4;
constexpr int SLICES = 8;  ///< in a capture
constexpr std::size_t ROUNDS = 8;
constexpr unsigned SAMPLE_SECONDS = 15;

/// By time slices: seconds of computing a second, and those of the user interface a repaint.
struct LiveSlices {
    std::vector<double> m_interface;
    std::vector<double> m_reader;
    std::vector<double> m_both;
    std::vector<double> m_instrument;
    std::vector<double> m_repaint;

    void Add(const LiveTimes& slice, double dInstrument) {
        m_interface.push_back(slice.m_dInterface * SLICES_PER_SECOND);
        m_reader.push_back(slice.m_dReader * SLICES_PER_SECOND);
        m_both.push_back(m_interface.back() + m_reader.back());
        m_instrument.push_back(dInstrument * SLICES_PER_SECOND);
        m_repaint.push_back(slice.m_dInterface / static_cast<double>(slice.m_nRepaints));
    }
};

/// Captures that were stopped after a tenth of their first second. They are as long in view as the
/// one to come, which would else be drawn only as far as the first of them reaches.
void AddOlderCaptures(CRealTimeData& session, unsigned nCaptures) {
    constexpr std::uint32_t SHORT_CURVE = CLiveScreen::RATE / 10;
    const std::lock_guard lock(session.m_lock);
    for (unsigned n = 0; n < nCaptures; ++n) {
        for (RTCurveList& lstCurves : session.m_spCurves->m_lstCurves) {
            RTCurveData& curve = *lstCurves.emplace_back(
                std::make_shared<RTCurveData>(SHORT_CURVE, SAMPLE_SECONDS * CLiveScreen::RATE));
            const auto free = curve.GetFreeValues();
            FillStrokes(free, n);
            curve.PublishCount(SHORT_CURVE);
            curve.AddPulse(SHORT_CURVE, static_cast<std::uint8_t>(n));
            curve.RecomputeExtremes();
        }
    }
}

/// The thread that has come since.
ThreadId FindNewThread(const std::set<ThreadId>& before) {
    for (const ThreadId thread : ListThreads())
        if (!before.contains(thread)) return thread;
    throw std::runtime_error("the instrument has no thread");
}

void MeasureCapture(unsigned nOlderCaptures, LiveSlices& slices) {
    CLiveScreen screen;
    screen.Run([&] {
        AddOlderCaptures(*screen.m_panel.m_pSession, nOlderCaptures);
        const std::set<ThreadId> others = ListThreads();
        CPressInstrument instrument(screen.m_panel.m_queue, FindValueLayout(3, 0, 3),
                                    std::make_unique<CSimulatedPress>(SecondInput::Position, 1));
        const ThreadId instrumentThread = FindNewThread(others);
        screen.StartCapture(SAMPLE_SECONDS);
        Operator::Ask([&] {
            for (const std::string& strImage : screen.m_panel.m_view.m_images)
                instrument.Send(strImage);
        });
        std::this_thread::sleep_for(SLICE);  // it begins with a picture that is all new
        LiveTimes before = screen.ReadTimes();
        double dBefore = ReadThreadSeconds(instrumentThread);
        for (int i = 0; i < SLICES; ++i) {
            std::this_thread::sleep_for(SLICE);
            const LiveTimes now = screen.ReadTimes();
            const double dNow = ReadThreadSeconds(instrumentThread);
            slices.Add(now - before, dNow - dBefore);
            before = now;
            dBefore = dNow;
        }
    });
}

}  // namespace

void MeasureLive(CTable& table) {
    constexpr unsigned OLDER_CAPTURES[] = {0, 300, 1000};
    LiveSlices aSlices[std::size(OLDER_CAPTURES)];
    constexpr std::size_t KINDS = std::size(OLDER_CAPTURES);
    // In turn: the same work takes twice as long at one time as at another.
    for (std::size_t nRound = 0; nRound < ROUNDS; ++nRound) {
        for (std::size_t i = 0; i < KINDS; ++i) {
            const std::size_t nKind = (i + nRound) % KINDS;
            MeasureCapture(OLDER_CAPTURES[nKind], aSlices[nKind]);
        }
    }

    const auto find = [](const std::vector<double>& seconds) {
        return FindFigures(seconds, Figures::Median);
    };
    const LiveSlices& alone = aSlices[0];
    table.AddTime("user interface, per second", find(alone.m_interface));
    table.AddTime("packet reader, per second", find(alone.m_reader));
    table.AddTime("simulated instrument, per second", find(alone.m_instrument));
    table.AddTime("all threads but the instrument's, per second", find(alone.m_both), 0.015);
    table.AddTime("user interface per repaint of 698 x 343", find(alone.m_repaint), 0.00012);
    for (std::size_t i = 1; i < KINDS; ++i)
        table.AddComparison(std::to_string(OLDER_CAPTURES[i]) + " older captures, per second",
                            find(aSlices[i].m_both), "no older capture", find(alone.m_both),
                            {Goal::Within, 1.2});
}
