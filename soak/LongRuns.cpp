// Runs that repeat one thing many times.
#include <cstdio>

#include "plugin/ScreenTemplate.h"
#include "soak/LeftBehind.h"
#include "soak/Soak.h"
#include "tests/support/Panel.h"
#include "ui/DlgBarMainMenu.h"

namespace {

constexpr unsigned PATIENCE_MS = 20000;

std::vector<std::int16_t> MakeValues(std::size_t nValues) {
    std::vector<std::int16_t> values(nValues);
    for (std::size_t n = 0; n < nValues; ++n) values[n] = static_cast<std::int16_t>(n * 37 % 9000);
    return values;
}

}  // namespace

void RunCaptures(const SoakOptions& options, unsigned nCaptures, CSoakRecord& record) {
    TestPanel panel(options.m_nMode.value_or(20), 1);
    panel.m_pSession->m_nHostValueRate = 1000;
    const auto spBlock = MakeSamples(5, MakeValues(600));
    panel.Run([&] {
        const auto isIdle = [&] { return panel.IsEnabled(IDC_START); };
        for (unsigned n = 1; n <= nCaptures && !record.HasFaults(); ++n) {
            const bool bStopped = n % 2 == 0;
            if (!panel.Tap(IDC_START)) record.Fault("Start cannot be tapped");
            for (int i = 0; i < (bStopped ? 3 : 20); ++i) panel.m_queue.push(spBlock);
            if (bStopped) {
                if (!panel.Tap(IDC_STOP)) record.Fault("Stop cannot be tapped");
                panel.m_queue.push(MakeIdleReport());
            }
            if (!Operator::WaitUntil(isIdle, PATIENCE_MS)) record.Fault("the capture does not end");
            panel.Settle();
            if (panel.CurveCount(0) != n) record.Fault("a capture is missing");
            const std::size_t nValues = panel.ValuesOf(0, n - 1).size();
            if (nValues != (bStopped ? 900u : 3000u)) record.Fault("values are missing");
            record.Count("captures");
        }
    });
    record.Count("messages to the instrument", panel.m_view.m_images.size());
}

void RunScreens(const SoakOptions& options, unsigned nScreens, CSoakRecord& record) {
    CLeftBehind leftBehind(record);
    const auto spBlock = MakeSamples(5, MakeValues(600));
    for (unsigned n = 0; n < nScreens && !record.HasFaults(); ++n) {
        TestPanel panel(options.m_nMode.value_or(3), 1);
        const bool bCapture = n % 4 != 3, bContinuous = n % 2 == 1;
        std::atomic<bool> bEnd{false};
        CThreadHandle link = StartThread([&] {
            for (int i = 1; bCapture && !bEnd; ++i) {
                panel.m_queue.push(spBlock);
                if (i % 20 == 0 && bContinuous)
                    panel.m_queue.push(MakePacket(RTPACKET_NEW_CURVE, {'P'}));
                SleepMilliseconds(2);
            }
        });
        panel.Run([&] {
            if (!bCapture) panel.TapBar(CDlgBarMainMenu::ID_INFO);
            if (bContinuous) panel.Tap(IDC_SAMPLE_TIME_MODE);
            if (bCapture) panel.Tap(IDC_START);
            if (bCapture) Operator::Wait(n % 60);
            if (n % 3 == 0) panel.Tap(IDC_STOP);
        });
        bEnd = true;
        link.Close();
        panel.m_pDialog.reset();
        record.Count("screens opened and closed");
        leftBehind.Check();
        const ProcessUse& use = leftBehind.GetUse();
        if (n % 100 == 0 || n + 1 == nScreens)
            std::printf("screen %4u: %5.1f MB, %zu threads, %zu files, %zu windows and controls\n",
                        n, use.m_dMegabytes, use.m_threads.size(), use.m_nFiles,
                        use.m_widgets.size());
    }
}

void RunContinuous(const SoakOptions& options, double dHours, unsigned nStrokeSeconds,
                   CSoakRecord& record) {
    // 100 blocks a second of 10 ms each, as a link delivers them.
    constexpr unsigned BLOCKS_PER_SECOND = 100;
    constexpr unsigned RATE = 40000;
    constexpr std::int64_t BLOCKS_AHEAD = 2000;
    TestPanel panel(options.m_nMode.value_or(1), 1);
    panel.m_pSession->m_nHostValueRate = RATE;
    panel.Run([&] {
        panel.Tap(IDC_SAMPLE_TIME_MODE);
        panel.Tap(IDC_START);
        const auto values = MakeValues(RATE / BLOCKS_PER_SECOND);
        const std::shared_ptr<RTPacket> aspBlocks[] = {MakeSamples(1, values),
                                                       MakeSamples(2, values)};
        const auto spNewCurve = MakePacket(RTPACKET_NEW_CURVE, {'P'});
        const auto nBlocks = static_cast<std::uint64_t>(dHours * 3600 * BLOCKS_PER_SECOND);
        const std::uint64_t nBegin = TickMilliseconds();
        const double dBegin = MeasureResidentMegabytes();
        const auto say = [&](double dDone) {
            std::printf("%6.2f h of capture: %6.1f MB after %6.1f s\n", dDone,
                        MeasureResidentMegabytes(),
                        static_cast<double>(TickMilliseconds() - nBegin) / 1000);
            std::fflush(stdout);
        };
        std::uint64_t nLongest = 0;
        for (std::uint64_t n = 0; n < nBlocks; ++n) {
            if (nStrokeSeconds && n % (nStrokeSeconds * BLOCKS_PER_SECOND) == 0)
                panel.m_queue.push(spNewCurve);
            panel.m_queue.push(aspBlocks[n / 50 % 2]);
            while (aspBlocks[0].use_count() + aspBlocks[1].use_count() > BLOCKS_AHEAD)
                SleepMilliseconds(1);
            if (n % (nBlocks / 10) == 0) {
                const std::uint64_t nAsked = TickMilliseconds();
                Operator::Ask([] {});
                panel.Settle();
                nLongest = std::max(nLongest, TickMilliseconds() - nAsked);
                say(static_cast<double>(n) / BLOCKS_PER_SECOND / 3600);
            }
        }
        panel.Settle();
        say(dHours);
        record.Count("blocks", nBlocks);
        if (panel.CurveCount(0) != 1) record.Fault("the set does not hold the one curve");
        const auto spCurve = panel.m_pSession->m_spCurves->FirstCurve(0);
        const std::uint64_t nRecords = spCurve->GetPulses().GetCount();
        record.Count("pulse records of the curve", nRecords);
        const std::uint64_t nBlocksInCurve =
            nStrokeSeconds ? (nBlocks - 1) % (nStrokeSeconds * BLOCKS_PER_SECOND) + 1 : nBlocks;
        if (nRecords != nBlocksInCurve) record.Fault("blocks are missing");
        // A record takes 8 bytes; the list's chunks double.
        const double dLimit = dBegin + 30 + 2 * 8e-6 * static_cast<double>(nRecords);
        if (!IsSanitized() && MeasureResidentMegabytes() > dLimit)
            record.Fault("memory grows by more than the records");
        record.Largest("longest answer with the queue, ms", nLongest);
    });
}
