// What the screen and all that it opens look like: every control's place, text, font and picture,
// in English and in a language whose texts are their string numbers.
#include <gtest/gtest.h>

#include "platform/system/NamedMutex.h"
#include "platform/windows/DialogLook.h"
#include "tests/screen/LanguagePanel.h"
#include "tests/support/ScaledDisplay.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"
#include "ui/DlgSettings.h"

namespace {

using enum ControlKind;
using Operator::Key;
using Operator::PressKey;

/// A control as it has to look; the item's text is the English one.
struct Row {
    DialogItem m_item;
    int m_nString = -1;  ///< -1: the text is the same in every language
    int m_nPoints = 0;   ///< size of the font, where it is not the dialog's; -20: bold, in pixels
    UINT m_nPicture = 0;
};

struct Look {
    DialogTemplate m_dialog;  ///< without its controls
    std::vector<Row> m_rows;
};

const Look SCREEN{{0, L"", 530, 280, L"MS Shell Dlg", 8, {}},
                  {{{1016, DropDownList, L"", 7, 4, 94, 30}, -1, 18},
                   {{1020, StyledButton, L"Sample Time:", 107, 3, 103, 24}, 1514, 18},
                   {{1005, Edit, L"3", 212, 12, 29, 14, CS_BORDER}, -1, 14},
                   {{1018, Static, L"seconds", 243, 14, 56, 13}, 1521, 14},
                   {{1019, DropDownList, L"", 294, 4, 131, 30}, -1, 18},
                   {{1024, Static, L"Trigger:", 429, 14, 45, 16}, 1517, 14},
                   {{1025, Edit, L"0", 475, 12, 32, 14, CS_BORDER}, -1, 14},
                   {{1026, Static, L"%", 509, 14, 14, 13}, -1, 14},
                   {{1004, PushButton, L"Start", 4, 42, 47, 24}, 144},
                   {{1006, PushButton, L"Stop", 4, 72, 47, 24}, 145},
                   {{1010, PushButton, L"Clear", 4, 102, 47, 24}, 1507},
                   {{1007, PushButton, L"Zoom All", 4, 131, 47, 24}, 1508},
                   {{1009, PushButton, L"Load", 4, 178, 47, 24}, 1509},
                   {{1008, PushButton, L"Save", 4, 209, 47, 24}, 1510},
                   {{1021, StyledButton, L"Settings", 4, 248, 47, 24}, 1511},
                   {{1014, StaticFrame, L"", 58, 30, 465, 211}},
                   {{1011, StaticFrame, L"", 58, 30, 465, 211, CS_HIDDEN}},
                   {{1050, StaticFrame, L"", 58, 30, 465, 211, CS_HIDDEN}}}};

const Look MAIN_MENU{{0, L"", 470, 38, L"MS Shell Dlg", 8, {}},
                     {{{2, PushButton, L"&Info", 64, 4, 44, 29}, 1512},
                      {{1203, PushButton, L"&Tools", 129, 4, 44, 29, CS_HIDDEN}},
                      {{1047, PushButton, L"Export to csv...", 194, 4, 83, 29}, 1533},
                      {{4, PushButton, L"Send pass output (CH 1)", 291, 4, 107, 29}, 1532},
                      {{1, StyledButton, L"", 419, 4, 44, 29}, -1, 0, 154}}};

const Look INFO{
    {0, L"", 470, 38, L"MS Shell Dlg", 8, {}},
    {{{1032, Static, L"Time Marker (Information only)", 48, 0, 174, 15, CS_CENTER}, 1518},
     {{1028, PushButton, L"A", 37, 11, 36, 18}},
     {{1027, PushButton, L"B", 88, 11, 36, 18}},
     {{1033, Static, L"Time distance:", 127, 12, 64, 8, CS_CENTER}, 1519},
     {{1029, Edit, L"0", 146, 21, 30, 14, CS_READONLY | CS_BORDER}},
     {{1012, PushButton, L"Clear", 192, 15, 42, 14}, 1507},
     {{1034, Static, L"Trigger level", 264, 3, 66, 8, CS_CENTER}, 1520},
     {{1030, PushButton, L"Trigger", 264, 11, 36, 18}, 1517},
     {{1031, Edit, L"0", 302, 15, 28, 14, CS_READONLY | CS_BORDER}},
     {{1035, Static, L"%", 330, 21, 8, 8}},
     {{1013, PushButton, L"Clear", 345, 15, 42, 14}, 1507},
     {{1036, StyledButton, L"", 419, 4, 44, 29}, -1, 0, 154}}};

const Look SETTINGS{{0, L"", 188, 101, L"Microsoft Sans Serif", 12, {}},
                    {{{1049, Static, L"Auto zoom", 7, 16, 35, 8}},
                     {{1222, StyledButton, L"", 45, 10, 15, 14}, -1, 0, 366},
                     {{1045, Static, L"Graph range (mv)", 7, 39, 57, 8}, 1516},
                     {{1043, PushButton, L"-4000", 65, 33, 41, 14}},
                     {{1046, Static, L"-", 109, 36, 8, 8}},
                     {{1044, PushButton, L"5000", 116, 33, 41, 14}},
                     {{1, StyledButton, L"", 153, 75, 28, 19}, -1, 0, 154}}};

const Look FILE_LIST{{0, L"", 189, 149, L"Microsoft Sans Serif", 16, {}},
                     {{{1123, Static, L"Select Real Time file to open", 6, 6, 150, 8}, 1523},
                      {{1135, ListBox, L"", 6, 17, 150, 102}, -1, 18},
                      {{1138, StyledButton, L"", 162, 18, 21, 21}, -1, 0, 5052},
                      {{1136, StyledButton, L"", 162, 96, 21, 21}, -1, 0, 5053},
                      {{1, StyledButton, L"", 27, 121, 25, 22}, -1, 0, 368},
                      {{2, StyledButton, L"", 72, 121, 25, 22}, -1, 0, 375},
                      {{1116, PushButton, L"", 131, 121, 25, 22, CS_HIDDEN}}}};

/// A message box of some buttons.
Look MessageBox(const wchar_t* pText, UINT nStyle, std::set<int> shown) {
    const auto hidden = [&](int nID) -> UINT { return shown.contains(nID) ? CS_NONE : CS_HIDDEN; };
    return {{0, L"", 241, 139, L"MS Shell Dlg", 8, {}},
            {{{1113, Static, pText, 7, 8, 222, 78, nStyle}, -1, -20},
             {{1, StyledButton, L"", 24, 93, 50, 42, hidden(1)}, -1, 0, 368},
             {{7, StyledButton, L"", 94, 93, 50, 42, hidden(7)}, -1, 0, 375},
             {{2, StyledButton, L"Cancel", 164, 93, 50, 42, hidden(2)}, -1, 0, 5059},
             {{3, StyledButton, L"", 93, 93, 50, 42, hidden(3)}, -1, 0, 368}}};
}

/// Compares a dialog with one that is made from the look alone.
void ExpectLook(CWnd& dialog, const Look& look, bool bNumbers) {
    Operator::Ask([&] {
        std::vector<DialogItem> items;
        for (const Row& row : look.m_rows) items.push_back(row.m_item);
        DialogTemplate model = look.m_dialog;
        model.m_items = items;
        CDialog reference(model);
        reference.Create(nullptr);
        EXPECT_EQ(dialog.GetClientRect(), reference.GetClientRect());
        dialog.SetFocus();  // takes it from the controls
        const CSize units = DialogBaseUnits(model.m_pFontFace, model.m_nPointSize);
        for (const auto& [item, nString, nPoints, nPicture] : look.m_rows) {
            SCOPED_TRACE(item.m_nID);
            CWnd* pControl = dialog.GetControl(item.m_nID);
            CWnd* pModel = reference.GetControl(item.m_nID);
            ASSERT_TRUE(pControl);
            CRect place = pControl->GetWindowRect();
            dialog.ScreenToClient(place);
            const CRect drawnUp = MapDialogRect(units, item.x, item.y, item.cx, item.cy);
            // A closed list is as high as its font makes it.
            if (item.m_kind == DropDownList) place.bottom = drawnUp.bottom;
            EXPECT_EQ(place, drawnUp);
            EXPECT_EQ(pControl->IsWindowVisible(), !(item.m_nStyle & CS_HIDDEN));
            if (item.m_kind == StaticFrame) continue;

            if (auto* pList = dynamic_cast<CComboBox*>(pModel)) {
                pList->AddString(pControl->GetWindowText());
                pList->SetCurSel(0);
            } else if (auto* pRows = dynamic_cast<CListBox*>(pModel)) {
                const auto* pShown = static_cast<const CListBox*>(pControl);
                for (int n = 0; n < pShown->GetCount(); ++n) pRows->AddString(pShown->GetText(n));
            } else {
                const bool bNumber = bNumbers && nString >= 0;
                EXPECT_EQ(pControl->GetWindowText(),
                          bNumber ? std::to_wstring(nString) : item.m_pText);
                pModel->SetWindowText(pControl->GetWindowText());
            }
            CFont font;
            if (nPoints < 0) font.CreatePixelFont(-nPoints, L"MS Shell Dlg", true);
            if (nPoints > 0) font.CreatePointFont(10 * nPoints, L"MS Shell Dlg");
            if (nPoints) pModel->SetFont(&font);
            if (nPicture) CButtonPictures().SetOn(reference, item.m_nID, nPicture);
            if (nPicture == PICTURE_CHECKED) static_cast<CButton*>(pModel)->SetCheck(true);
            pModel->EnableWindow(pControl->IsWindowEnabled());
            EXPECT_TRUE(Operator::TakePicture(*pControl).EncodePng() ==
                        Operator::TakePicture(*pModel).EncodePng());
        }
    });
}

/// What is drawn of a text that is black.
struct TextInk {
    int m_nPixels = 0;
    int m_nRows = 0;
};

TextInk FindInk(const CBitmap& picture) {
    TextInk ink;
    int yFirst = -1;
    for (int y = 0; y < picture.GetSize().cy; ++y)
        for (int x = 0; x < picture.GetSize().cx; ++x) {
            const COLORREF color = picture.GetPixel(x, y);
            if ((color & 0xFF) > 90 || (color >> 8 & 0xFF) > 90 || (color >> 16) > 90) continue;
            ++ink.m_nPixels;
            if (yFirst < 0) yFirst = y;
            ink.m_nRows = y + 1 - yFirst;
        }
    return ink;
}

struct Shown {
    CRect m_place;
    TextInk m_ink;
};

/// The controls of a look that show a text, at a display scale.
/// @param nRoom how many times as wide and high as they are drawn up
std::vector<Shown> ShowTexts(const Look& look, double dScale, int nRoom) {
    const ScaledDisplay display(dScale);
    std::vector<DialogItem> items;
    for (const Row& row : look.m_rows) {
        items.push_back(row.m_item);
        items.back().cx *= nRoom;
        items.back().cy *= nRoom;
    }
    DialogTemplate model = look.m_dialog;
    model.m_items = items;
    CDialog dialog(model);
    dialog.Create(nullptr);
    std::vector<Shown> shown;
    for (const auto& [item, nString, nPoints, nPicture] : look.m_rows) {
        CWnd* pControl = dialog.GetControl(item.m_nID);
        CFont font;
        if (nPoints < 0) font.CreatePixelFont(-nPoints, L"MS Shell Dlg", true);
        if (nPoints > 0) font.CreatePointFont(10 * nPoints, L"MS Shell Dlg");
        if (nPoints) pControl->SetFont(&font);
        std::wstring strText = item.m_pText;
        std::erase(strText, L'&');  // a letter's underline stands between rows of pixels
        pControl->SetWindowText(strText);
        CRect place = pControl->GetWindowRect();
        dialog.ScreenToClient(place);
        shown.push_back({place, {}});
        if (!strText.empty()) shown.back().m_ink = FindInk(Operator::TakePicture(*pControl));
    }
    return shown;
}

bool Overlap(const CRect& a, const CRect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

class Language : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Look, Language, ::testing::Bool());

}  // namespace

TEST_P(Language, IsThatOfEveryControlAndWindow) {
    LanguagePanel language(GetParam(), 20, 1);
    TestPanel& panel = *language.m_pPanel;
    CWnd& screen = *panel.m_pDialog;
    panel.m_pSession->m_graph.m_nRangeMin = -4000;
    std::filesystem::create_directory(language.m_folder.GetPath() / "RealTimeFiles");
    for (const char* pName : {"RealTimeFiles/a.rt3", "RealTimeFiles/b.RT3"})
        language.m_folder.Put(pName, "");
    const auto title = [&](int nString, const wchar_t* pEnglish) {
        EXPECT_TRUE(AwaitModal(language.Text(nString, pEnglish))) << nString;
    };
    panel.Run([&] {
        title(2004, L"Real Time Mode");
        ExpectLook(screen, SCREEN, GetParam());
        const auto expectBar = [&](const Look& look) {
            CWnd& bar = *screen.GetControl(IDC_BAR);
            ExpectLook(bar, look, GetParam());
            CRect place;
            Operator::Ask([&] { screen.ScreenToClient(place = bar.GetWindowRect()); });
            EXPECT_EQ(place, (CRect{Scaled(90), Scaled(395), Scaled(795), Scaled(457)}));
        };
        expectBar(MAIN_MENU);
        panel.TapBar(CDlgBarMainMenu::ID_INFO);
        expectBar(INFO);
        for (const auto& [nString, pText] :
             {std::pair{1515, L"Continuous"}, {1514, L"Sample Time:"}}) {
            panel.Tap(IDC_SAMPLE_TIME_MODE);
            EXPECT_EQ(panel.TextOf(IDC_SAMPLE_TIME_MODE), language.Text(nString, pText));
            for (const int nID : {IDC_SECONDS, IDC_SAMPLE_TIME})
                EXPECT_EQ(panel.IsVisible(nID), nString == 1514);
        }
        panel.Tap(IDC_SAMPLE_TIME);
        title(1534, L"Enter sample time (1-60 seconds)");
        PressKey(Key::Escape);
        panel.Tap(IDC_TRIGGER);
        EXPECT_TRUE(AwaitModal(language.Text(1524, L"Enter sample Trigger") + L" (0-99.9%)"));
        PressKey(Key::Escape);

        panel.Tap(IDC_SETTINGS);
        title(1511, L"Settings");
        ExpectLook(*Operator::ModalWindow(), SETTINGS, GetParam());
        Operator::Tap(*Operator::ModalWindow(), CDlgSettings::ID_AUTO_ZOOM);
        Operator::MoveTo(*Operator::ModalWindow(), {2, 2});
        Look withoutAutoZoom = SETTINGS;
        withoutAutoZoom.m_rows[1].m_nPicture = 0;
        ExpectLook(*Operator::ModalWindow(), withoutAutoZoom, GetParam());
        Operator::Tap(*Operator::ModalWindow(), CDlgSettings::ID_RANGE_MIN);
        EXPECT_TRUE(EnterOnPad(language.Text(155, L"Current Value"), L"70001"));
        title(1094, L"Data Error");
        const std::wstring strRange =
            language.Text(1093, L"Parameter must be within range") + L": -20000 to 70000";
        ExpectLook(*Operator::ModalWindow(), MessageBox(strRange.c_str(), CS_CENTER, {3}), false);
        for (const Key key : {Key::Enter, Key::Escape}) PressKey(key);

        panel.Tap(IDC_SAVE);
        title(1522, L"Real Time file name");
        PressKey(Key::Enter);
        EXPECT_NE(
            Operator::ModalText().find(language.Text(154, L"Error: Blank value not supported.")),
            std::wstring::npos);
        Operator::Type(L"..");
        PressKey(Key::Enter);
        title(1094, L"Data Error");
        PressKey(Key::Enter);

        panel.Tap(IDC_LOAD);
        title(1509, L"Load");
        ExpectLook(*Operator::ModalWindow(), FILE_LIST, GetParam());
        Operator::Select(*Operator::ModalWindow()->GetControl(CDlgListFiles::ID_FILES), L"a");
        PressKey(Key::Escape);
        title(2004, L"Real Time Mode");
    });
}

TEST_P(Language, IsThatOfTheListsOfEveryMode) {
    struct Device final : IRTDevice {
        std::uint32_t ReadParameter(std::uint32_t nNumber) override {
            ++m_nReads;
            return nNumber == 50 ? m_nRanges : ~m_nRanges;
        }
        std::uint32_t m_nRanges = 0;
        int m_nReads = 0;
    };
    // Display list: F force alone, V and P as below, with the range tag of the channel.
    const struct {
        std::uint8_t m_nMode, m_nPositionInput;
        int m_nChannels;
        std::uint32_t m_nRanges;
        char m_chList;
        const wchar_t* m_pTag = L"";
    } cases[] = {
        {1, 0, 1, 0, 'V'},  {20, 1, 2, 0, 'P'}, {2, 2, 2, 1, 'P', L" (0-24V)"},
        {2, 1, 2, 0, 'F'},  {3, 0, 3, 0, 'F'},  {2, 2, 2, 2, 'P', L" (0-10V)"},
        {12, 2, 2, 0, 'F'}, {4, 1, 1, 0, 'F'},  {10, 2, 1, 0x101, 'P', L" (0-24V)"},
        {21, 0, 1, 0, 'V'}, {22, 1, 2, 0, 'P'}, {10, 2, 1, 0x100, 'P', L" (0-10V)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_nMode);
        LanguagePanel language(GetParam(), c.m_nMode, c.m_nPositionInput);
        Device device;
        device.m_nRanges = c.m_nRanges;
        language.m_pPanel->m_pSession->m_pDevice = &device;
        const std::wstring force = language.Text(0, L"Force");
        const std::wstring voltage = language.Text(101, L"Voltage");
        std::vector<std::wstring> pairs{force};
        if (c.m_chList == 'V') pairs = {force, voltage, L"F vs V"};
        if (c.m_chList == 'P') {
            pairs = {force, language.Text(1, L"Position"), L"F/V vs P"};
            (pairs[0] += L'/') += voltage;
            for (const std::size_t n : {1u, 2u}) pairs[n] += c.m_pTag;
        }
        std::vector<std::wstring> channels{language.Text(120, L"Channel 1"),
                                           language.Text(121, L"Channel 2"),
                                           language.Text(122, L"Channel 3")};
        channels.resize(static_cast<std::size_t>(c.m_nChannels));
        language.m_pPanel->Run([&] {
            EXPECT_EQ(language.TextsOf(IDC_CHANNEL_LIST), channels);
            EXPECT_EQ(language.TextsOf(IDC_DISPLAY_LIST), pairs);
            EXPECT_EQ(language.m_pPanel->TextOf(IDC_CHANNEL_LIST), channels[0]);
            EXPECT_EQ(language.m_pPanel->TextOf(IDC_DISPLAY_LIST), pairs[0]);
            if (c.m_chList != 'V') return;
            language.m_pPanel->Select(IDC_DISPLAY_LIST, L"F vs V");
            EXPECT_EQ(language.m_pPanel->m_pSession->m_aPlots[0].m_nDisplay, 2);
        });
        EXPECT_EQ(device.m_nReads > 0, c.m_nPositionInput == 2);
    }
}

/// At no size does anything cover, leave out or break what it does not at the size of the design.
TEST(DisplayScale, KeepsControlsApartAndTextsWhole) {
    const wchar_t* const MESSAGE = L"Parameter must be within range: -20000 to 70000";
    for (const Look& look : {SCREEN, MAIN_MENU, INFO, SETTINGS, FILE_LIST,
                             MessageBox(MESSAGE, CS_CENTER, {1, 2, 7})}) {
        const std::vector<Shown> design = ShowTexts(look, 1, 1);
        for (const double dScale : {0.8, 0.94, 1.37, 1.5, 2.0, 3.0}) {
            const std::vector<Shown> scaled = ShowTexts(look, dScale, 1);
            const std::vector<Shown> roomy = ShowTexts(look, dScale, 2);
            for (std::size_t k = 0; k < design.size(); ++k) {
                SCOPED_TRACE(std::to_string(look.m_rows[k].m_item.m_nID) + " at " +
                             std::to_string(dScale));
                const CRect& place = scaled[k].m_place;
                EXPECT_NEAR(place.right, design[k].m_place.right * dScale, 0.51);
                EXPECT_NEAR(place.top, design[k].m_place.top * dScale, 0.51);
                for (std::size_t n = 0; n < k; ++n)
                    EXPECT_TRUE(!Overlap(place, scaled[n].m_place) ||
                                Overlap(design[k].m_place, design[n].m_place))
                        << look.m_rows[n].m_item.m_nID;
                // A button of another size shades the edges of letters otherwise.
                const int nWhole = roomy[k].m_ink.m_nPixels;
                EXPECT_GE(scaled[k].m_ink.m_nPixels + 2 + nWhole / 100, nWhole) << "cut";
                EXPECT_LE(scaled[k].m_ink.m_nRows, design[k].m_ink.m_nRows * dScale + 3)
                    << "broken";
            }
        }
    }
}

TEST(MessageBoxLook, HasTheButtonsThatAreAskedForAndEndsWithThem) {
    for (const auto& [nButtons, shownIDs] : {std::pair<BYTE, std::set<int>>{BIGBTN_OK_CENTRE, {3}},
                                             {BIGBTN_OK | BIGBTN_CANCEL, {1, 2}},
                                             {BIGBTN_OK | BIGBTN_NO | BIGBTN_CANCEL, {1, 7, 2}},
                                             {0, {}}})
        for (const int nTapped : {0, 1, 2, 3, 7}) {  // 0: the Enter key
            CBigMessageBox box;
            box.m_nButtons = nButtons;
            box.m_strMessage = L"Hello\nthere";
            const Look look = MessageBox(L"Hello\nthere", CS_NONE, shownIDs);
            const bool bEnds = nTapped ? shownIDs.contains(nTapped) : !shownIDs.empty();
            const int nResult = RunModal(box, [&] {
                ExpectLook(box, look, false);
                if (nTapped)
                    EXPECT_EQ(Operator::Tap(box, nTapped), bEnds);
                else
                    PressKey(Key::Enter);
                EXPECT_EQ(Operator::ModalWindow() != &box, bEnds);
                if (!bEnds) PressKey(Key::Escape);
            });
            EXPECT_EQ(nResult, !bEnds ? 2 : nTapped % 3 ? nTapped : 1);
        }
}

TEST(MessageBoxLook, HasItsTextsAndHoldsTheMutexWhileItIsOpen) {
    constexpr const wchar_t* NAME = L"StrovaneBigMessageBox";
    Operator::CScript script([&] {
        EXPECT_TRUE(AwaitModal(L"Title"));
        EXPECT_TRUE(CNamedMutex::Exists(NAME));
        EXPECT_EQ(Operator::ModalText(), L"Text");
        Operator::Tap(*Operator::ModalWindow(), IDNO);
    });
    EXPECT_EQ(ShowBigMessageBox(L"Title", L"Text", BIGBTN_NO, true), IDNO);
    EXPECT_FALSE(CNamedMutex::Exists(NAME));
}
