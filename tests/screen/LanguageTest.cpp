// The screen in another language, and what it does when its surroundings are missing.
#include <gtest/gtest.h>

#include "platform/system/Paths.h"
#include "platform/windows/Controls.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Panel.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/DlgBarMainMenu.h"

namespace {

std::string Utf16(const std::u16string& text) {
    return {reinterpret_cast<const char*>(text.data()), 2 * text.size()};
}

}  // namespace

TEST(ScreenLanguage, TakesItsTextsFromTheLanguageFile) {
    TemporaryFolder folder;
    std::filesystem::create_directory(folder.GetPath() / "lang");
    folder.Put("lang/default.txt", Utf16(u"Test\n"));
    folder.Put("lang/Test.txt", Utf16(u"11\t-\t144\t-\tLos\r\n"
                                      u"12\t-\t145\t-\tnot taken\r\n"
                                      u"0\t-\t0\t-\tKraft\r\n"
                                      u"0\t-\t120\t-\tKanal 1\r\n"
                                      u"11\t-\t1512\t-\t&Mehr\r\n"
                                      u"11\t-\t2004\t-\tEchtzeit\r\n"));
    SetProgramFolder(folder.Path(""));
    TestPanel panel(1);
    panel.Run([&] {
        EXPECT_EQ(panel.TextOf(IDC_START), L"Los");
        EXPECT_EQ(panel.TextOf(IDC_STOP), L"Stop");
        EXPECT_EQ(panel.TextOf(IDC_CHANNEL_LIST), L"Kanal 1");
        EXPECT_EQ(panel.TextOf(IDC_DISPLAY_LIST), L"Kraft");
        EXPECT_EQ(panel.BarText(CDlgBarMainMenu::ID_INFO), L"&Mehr");
        EXPECT_EQ(Operator::ModalTitle(), L"Echtzeit");
    });
    SetProgramFolder(L"");
}

TEST(DisplayList, OffersWhatTheModeMeasures) {
    struct Device final : IRTDevice {
        std::uint32_t ReadParameter(std::uint32_t nNumber) override {
            ++m_nReads;
            return nNumber == 50 ? m_nRanges : 0xFFFFFFFFu;
        }
        std::uint32_t m_nRanges = 0;
        int m_nReads = 0;
    };
    const struct {
        std::uint8_t m_nMode;
        std::uint8_t m_nPositionInput;
        std::uint32_t m_nRanges;
        std::vector<std::wstring> m_texts;
    } cases[] = {
        {1, 0, 0, {L"Force", L"Voltage", L"F vs V"}},
        {20, 1, 0, {L"Force/Voltage", L"Position", L"F/V vs P"}},
        {2, 2, 1, {L"Force/Voltage", L"Position (0-24V)", L"F/V vs P (0-24V)"}},
        {2, 2, 2, {L"Force/Voltage", L"Position (0-10V)", L"F/V vs P (0-10V)"}},
        {2, 1, 0, {L"Force"}},
        {3, 0, 0, {L"Force"}},
        {12, 2, 0, {L"Force"}},
        {4, 1, 0, {L"Force"}},
        {10, 1, 0, {L"Force/Voltage", L"Position", L"F/V vs P"}},
        {21, 0, 0, {L"Force", L"Voltage", L"F vs V"}},
        {22, 1, 0, {L"Force/Voltage", L"Position", L"F/V vs P"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_nMode);
        Device device;
        device.m_nRanges = c.m_nRanges;
        TestPanel panel(c.m_nMode, c.m_nPositionInput);
        panel.m_pSession->m_pDevice = &device;
        std::vector<std::wstring> texts;
        panel.Run([&] {
            Operator::Ask([&] {
                auto* pList =
                    static_cast<CComboBox*>(panel.m_pDialog->GetControl(IDC_DISPLAY_LIST));
                for (int i = 0; i < pList->GetCount(); ++i) texts.push_back(pList->GetItemText(i));
            });
            EXPECT_EQ(panel.TextOf(IDC_DISPLAY_LIST), c.m_texts[0]);
        });
        EXPECT_EQ(texts, c.m_texts);
        EXPECT_EQ(device.m_nReads > 0, c.m_nPositionInput == 2);
    }
}
