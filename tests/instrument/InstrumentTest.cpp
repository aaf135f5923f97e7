#include <gtest/gtest.h>

#include <algorithm>

#include "instrument/InstrumentCommand.h"
#include "instrument/SimulatedPress.h"

namespace {

std::string MakeImage(std::initializer_list<int> payload) {
    std::string image{0x27, 0x01, 0x29};
    for (const int n : payload) image += static_cast<char>(n);
    image.resize(44);
    return image;
}

// 3000 ms, not continuous, 40000, 12.5 percent.
const std::string CAPTURE = MakeImage({2, 0xB8, 0x0B, 0, 0x40, 0x9C, 0x7D, 0});

TEST(InstrumentCommand, IsReadFromTheImageOrRefused) {
    EXPECT_EQ(ReadCommand(CAPTURE), InstrumentCommand(CaptureRequest{3000, false, 40000, 125}));
    EXPECT_EQ(ReadCommand(MakeImage({2, 0, 0, 1, 0x10, 0x27})),
              InstrumentCommand(CaptureRequest{0, true, 10000, 0}));
    EXPECT_EQ(ReadCommand(MakeImage({2})), InstrumentCommand(StopRequest{}));
    EXPECT_EQ(ReadCommand(MakeImage({3})), InstrumentCommand(PassOutputRequest{}));
    std::string strOtherType = CAPTURE;
    strOtherType[0] = 40;
    for (const std::string& strImage :
         {std::string(), CAPTURE.substr(0, 43), CAPTURE + '\0', MakeImage({1}), strOtherType})
        EXPECT_FALSE(ReadCommand(strImage));
}

TEST(SimulatedPress, SnapsOnItsWayDownWithTheNoiseOfItsSeed) {
    const auto readStroke = [](std::uint32_t nSeed) {
        CSimulatedPress press(SecondInput::Position, nSeed);
        std::vector<double> forces;
        for (int n = 0; n < 1500; ++n) {  // a sample each millisecond
            PressSample sample;
            press.Read(0, n / 1000.0, {&sample, 1});
            forces.push_back(sample.m_dForce);
        }
        return forces;
    };
    const auto forces = readStroke(7);
    EXPECT_NEAR(forces.front(), 0, 10);
    EXPECT_NEAR(forces.back(), 0, 10);
    // Somewhere before the peak the force falls by a third of what it was within 30 ms.
    const auto itPeak = std::max_element(forces.begin(), forces.end());
    bool bSnap = false;
    for (auto it = forces.begin() + 30; it != itPeak; ++it)
        bSnap = bSnap || (it[-30] > 1500 && *it < 0.67 * it[-30]);
    EXPECT_TRUE(bSnap);
    EXPECT_EQ(readStroke(7), forces);
    EXPECT_NE(readStroke(8), forces);
}

}  // namespace
