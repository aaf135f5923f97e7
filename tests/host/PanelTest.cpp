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
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(L"Panel"));
    CPanelView view(&instrument);
    ASSERT_TRUE(view.Create(&frame));
    frame.SetActiveView(&view);

    int nAlive = 0;
    auto* const pMessage = new CountedMessage(nAlive);
    pMessage->m_nType = 39;
    pMessage->m_abyPayload = {3};
    frame.GetActiveView()->SendMessage(WM_RT_SENDOBJECT, reinterpret_cast<WPARAM>(pMessage));
    EXPECT_EQ(nAlive, 0);
    ASSERT_EQ(instrument.m_images.size(), 1u);
    EXPECT_EQ(instrument.m_images[0], std::string("\x27\x01\x29\x03", 4) + std::string(40, '\0'));

    view.SendMessage(WM_RT_SENDOBJECT, 0);
    EXPECT_EQ(instrument.m_images.size(), 1u);
}

TEST(PanelView, WithoutAnInstrumentMessagesAreDeleted) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(L"Panel"));
    CPanelView view(nullptr);
    ASSERT_TRUE(view.Create(&frame));
    int nAlive = 0;
    view.SendMessage(WM_RT_SENDOBJECT, reinterpret_cast<WPARAM>(new CountedMessage(nAlive)));
    EXPECT_EQ(nAlive, 0);
}

TEST(PanelDevice, HasOneParameter) {
    CPanelDevice device(5);
    EXPECT_EQ(device.ReadParameter(50), 5u);
    EXPECT_EQ(device.ReadParameter(49), 0u);
}

}  // namespace
