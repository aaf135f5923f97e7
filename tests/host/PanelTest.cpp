#include <gtest/gtest.h>

#include "acquisition/ObjRTGeneric.h"
#include "host/Panel.h"

namespace {

struct RecordingInstrument : IInstrument {
    void Send(std::string_view image) override { m_images.emplace_back(image); }
    std::vector<std::string> m_images;
};

struct CountedMessage : CObjRTGeneric {
    explicit CountedMessage(int& nAlive) : m_nAlive(nAlive) { ++m_nAlive; }
    ~CountedMessage() override { --m_nAlive; }
    int& m_nAlive;
};

TEST(PanelView, SendsTheImageOfWhatItIsGivenAndDeletesIt) {
    RecordingInstrument instrument;
    CFrameWindow frame;
    ASSERT_TRUE(frame.Create(L"Panel"));
    for (IInstrument* pInstrument : std::initializer_list<IInstrument*>{&instrument, nullptr}) {
        CPanelView view(pInstrument);
        ASSERT_TRUE(view.Create(&frame));
        int nAlive = 0;
        auto* const pMessage = new CountedMessage(nAlive);
        pMessage->m_nType = 39;
        pMessage->m_abyPayload = {3};
        view.SendMessage(WM_RT_SENDOBJECT, reinterpret_cast<WPARAM>(pMessage));
        view.SendMessage(WM_RT_SENDOBJECT, 0);
        EXPECT_EQ(nAlive, 0);
    }
    EXPECT_EQ(instrument.m_images,
              std::vector{std::string("\x27\x01\x29\x03", 4) + std::string(40, '\0')});
}

TEST(PanelDevice, HasOneParameter) {
    EXPECT_EQ(CPanelDevice(5).ReadParameter(50), 5u);
    EXPECT_EQ(CPanelDevice(5).ReadParameter(49), 0u);
}

}  // namespace
