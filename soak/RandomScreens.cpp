// Screens worked at random.
#include <cstdio>
#include <random>

#include "platform/system/Paths.h"
#include "soak/RandomLink.h"
#include "soak/RandomOperator.h"
#include "soak/ScreenByScreen.h"
#include "soak/Soak.h"
#include "soak/Watch.h"
#include "tests/support/FileBytes.h"

namespace {

struct Device final : IRTDevice {
    explicit Device(std::uint32_t nBits) : m_nBits(nBits) {}
    std::uint32_t ReadParameter(std::uint32_t) override { return m_nBits; }
    std::uint32_t m_nBits;
};

/// The capture files that the operator finds when a soak begins: good ones and broken ones.
void PutCaptureFiles(const TemporaryFolder& folder) {
    std::filesystem::create_directory(folder.GetPath() / "RealTimeFiles");
    const auto put = [&](const char* pName, const std::vector<std::uint8_t>& bytes) {
        folder.Put(std::string("RealTimeFiles/") + pName, std::string(bytes.begin(), bytes.end()));
    };
    FileBytes good;
    std::vector<int> anValues;
    for (int n = 0; n < 1000; ++n) anValues.push_back(37 * n % CHANNEL_STEP);
    good.Head().Byte(14).Byte(3).Long(1).Values(anValues);
    good.Pulses({{100, 1}, {400, 3}, {1000, 2}});
    for (int n = 0; n < 10; ++n) good.Long(-1);
    good.Words({0, 0, 0, 0}).Long(0).Long(0);
    put("good.rt3", good.m_bytes);
    put("cut.rt3", {good.m_bytes.begin(), good.m_bytes.begin() + 900});
    put("empty.rt3", {});

    FileBytes absurd;
    absurd.Head().Byte(14).Byte(3).Long(0x7FFFFFFF).Word(0).Long(0x7FFFFFF0).Long(0x7FFFFFF0);
    put("absurd.rt3", absurd.m_bytes);

    std::mt19937 random(1);
    std::vector<std::uint8_t> noise(5000);
    for (std::uint8_t& by : noise) by = static_cast<std::uint8_t>(random());
    put("noise.rt3", noise);
}

void PrepareSession(TestPanel& panel, std::mt19937& random, IRTDevice* pDevice) {
    const auto oneIn = [&](unsigned nTimes) { return random() % nTimes == 0; };
    CRealTimeData& session = *panel.m_pSession;
    session.m_bDesktopMode = oneIn(6);
    session.m_bCaptureLocked = oneIn(10);
    if (oneIn(20)) session.m_pPacketQueue = nullptr;
    if (oneIn(2)) session.m_pDevice = pDevice;
    constexpr std::uint16_t RATES[] = {0, 500, 8000, 40000, 40000, 65535};
    session.m_nHostValueRate = RATES[random() % std::size(RATES)];
}

/// Values of the random link, and of the files that there are, by chance.
void CheckChannelValues(const RTCurveData& curve, std::size_t nChannel, std::uint32_t nCount,
                        std::mt19937& random, CSoakRecord& record) {
    constexpr int PROBES = 40;
    if (nCount == 0) return;
    const int nLowest = static_cast<int>(nChannel) * CHANNEL_STEP;
    const auto isForeign = [&](int nValue) {
        return nValue < nLowest || nValue >= nLowest + CHANNEL_STEP;
    };
    for (int i = 0; i < PROBES; ++i)
        if (isForeign(curve.GetValues()[i == 0 ? nCount - 1 : random() % nCount]))
            record.Fault("a value is not its channel's");
    const RTMinMax all = curve.FindMinMax(0, nCount);
    if (isForeign(all.m_nMin) || isForeign(all.m_nMax))
        record.Fault("the summary holds what the curve does not");
}

void RunRandomScreen(const SoakOptions& options, unsigned nScreen, unsigned nMilliseconds,
                     const std::wstring& strFolder, CSoakRecord& record) {
    std::seed_seq seeds{options.m_nSeed, nScreen};
    std::mt19937 random(seeds);
    constexpr std::uint8_t MODES[] = {0, 1, 2, 3, 10, 12, 20, 21, 22, 99};
    const std::uint8_t nMode = options.m_nMode.value_or(MODES[random() % std::size(MODES)]);
    const auto nPositionInput = static_cast<std::uint8_t>(random() % 3);
    record.SetScreen("seed " + std::to_string(options.m_nSeed) + ", screen " +
                     std::to_string(nScreen) + ", mode " + std::to_string(nMode) + "/" +
                     std::to_string(nPositionInput));

    Device device(static_cast<std::uint32_t>(random()));
    TestPanel panel(nMode, nPositionInput);
    PrepareSession(panel, random, &device);
    CRandomLink link(*panel.m_pSession, panel.m_queue, static_cast<std::uint32_t>(random()),
                     record);
    CRandomOperator hand(panel, strFolder, static_cast<std::uint32_t>(random()), record, {});
    const auto nWatchSeed = static_cast<std::uint32_t>(random());
    std::uint64_t nClosed = 0;
    panel.RunUntilClosed([&] {
        {
            std::mt19937 probes(nWatchSeed);
            const auto checkValues = [&](const auto& spCurve, std::size_t nChannel,
                                         std::uint32_t nCount) {
                CheckChannelValues(*spCurve, nChannel, nCount, probes, record);
            };
            const CWatch watch(panel, options.m_nPatience, nWatchSeed, record, {checkValues, {}});
            hand.Work(nMilliseconds);
            hand.CloseScreen();
        }
        nClosed = TickMilliseconds();
    });
    record.Count("screens");
    if (panel.m_pDialog->GetHandle()) record.Fault("the screen still has its window");
    if (panel.m_pSession->m_hReaderThread) record.Fault("the reader's handle is not closed");
    link.Stop();
    panel.m_pDialog.reset();
    if (!link.Drain()) record.Fault("a packet is held by nobody who reads it");
}

}  // namespace

void RunRandomScreens(const SoakOptions& options, CSoakRecord& record) {
    const TemporaryFolder folder;
    PutCaptureFiles(folder);
    const std::wstring strFolder = folder.Path("");
    SetProgramFolder(strFolder);

    RunScreenByScreen(options, {300, 500, 8000}, record,
                      [&](unsigned nScreen, unsigned nMilliseconds) {
                          RunRandomScreen(options, nScreen, nMilliseconds, strFolder, record);
                      });
    SetProgramFolder(L"");
}
