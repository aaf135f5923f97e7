// A continuous capture of many hours.
#include <cstdio>
#include <ctime>
#include <unistd.h>

#include "plugin/ScreenTemplate.h"
#include "soak/LeftBehind.h"
#include "soak/ProcessTimes.h"
#include "soak/Soak.h"
#include "tests/support/Panel.h"

namespace {

std::vector<std::int16_t> MakeValues(std::size_t nValues) {
    std::vector<std::int16_t> values(nValues);
    for (std::size_t n = 0; n < nValues; ++n) values[n] = static_cast<std::int16_t>(n * 37 % 9000);
    return values;
}

/// What the user-interface thread has computed so far.
double AskInterfaceSeconds() {
    timespec time{};
    Operator::Ask([&] { clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time); });
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

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
        const double dBegin = MeasureResidentMegabytes(::getpid());
        const auto say = [&](double dDone) {
            std::printf("%6.2f h of capture: %6.1f MB after %6.1f s\n", dDone,
                        MeasureResidentMegabytes(::getpid()),
                        static_cast<double>(TickMilliseconds() - nBegin) / 1000);
            std::fflush(stdout);
        };
        std::uint64_t nLongest = 0;
        std::vector<double> seconds;  // that the user interface has computed, by tenths of the run
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
                seconds.push_back(AskInterfaceSeconds());
                say(static_cast<double>(n) / BLOCKS_PER_SECOND / 3600);
            }
        }
        panel.Settle();
        say(dHours);
        const double dLast = AskInterfaceSeconds() - seconds.back();
        if (dLast > 0.1 + 3 * (seconds[2] - seconds[1]))
            record.Fault("the user interface works longer and longer");
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
        if (!IsSanitized() && MeasureResidentMegabytes(::getpid()) > dLimit)
            record.Fault("memory grows by more than the records");
        record.Largest("longest answer with the queue, ms", nLongest);
    });
}
