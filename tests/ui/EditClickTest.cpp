#include <gtest/gtest.h>

#include "Support.h"
#include "ui/EditClick.h"

namespace {

constexpr int EDIT = 1005;
constexpr DialogItem ITEMS[] = {{EDIT, ControlKind::Edit, L"7", 10, 10, 40, 14}};
constexpr DialogTemplate TEMPLATE{0, L"Owner", 100, 60, L"MS Shell Dlg", 8, ITEMS};

class COwner : public CDialog {
  public:
    COwner() : CDialog(TEMPLATE) {}
    CEditClick m_edit;

  protected:
    bool OnInitDialog() override {
        m_edit.SubclassDlgItem(EDIT, this);
        m_edit.m_strPadTitle = L"How many?";
        m_edit.m_dMax = 60;
        m_edit.m_dMin = 1;
        return CDialog::OnInitDialog();
    }
};

}  // namespace

TEST(EditClick, ShowsTheEnteredNumberWithinItsLimits) {
    COwner owner;
    RunModal(owner, [&] {
        const std::pair<const wchar_t*, const wchar_t*> entries[] = {
            {L"75", L"60"}, {L"0.4", L"1"}, {L"12.6", L"13"}};
        for (const auto& [pEntered, pShown] : entries) {
            EXPECT_TRUE(Operator::Tap(owner, EDIT));
            EXPECT_TRUE(EnterOnPad(L"How many?", pEntered));
            EXPECT_EQ(TextOf(owner, EDIT), pShown);
        }
        owner.m_edit.m_bOneDecimal = 1;
        EXPECT_TRUE(Operator::Tap(owner, EDIT));
        EXPECT_TRUE(EnterOnPad(L"How many?", L"12.34"));
        EXPECT_EQ(TextOf(owner, EDIT), L"12.3");
    });
}

TEST(EditClick, KeepsItsTextWhenThePadIsCancelled) {
    COwner owner;
    RunModal(owner, [&] {
        Operator::Tap(owner, EDIT);
        EXPECT_TRUE(AwaitModal(L"How many?"));
        Operator::Type(L"33");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(Operator::ModalWindow(), &owner);
        EXPECT_EQ(TextOf(owner, EDIT), L"7");
        EXPECT_STREQ(owner.m_edit.GetRuntimeClass()->m_lpszClassName, "CEditClick");
    });
}
