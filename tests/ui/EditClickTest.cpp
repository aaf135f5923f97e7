#include <gtest/gtest.h>

#include <limits>

#include "tests/support/Controls.h"
#include "ui/ClampedNumber.h"
#include "ui/EditClick.h"

namespace {

constexpr int EDIT = 9;
constexpr DialogItem ITEMS[] = {{EDIT, ControlKind::Edit, L"7", 10, 10, 40, 14}};
constexpr DialogTemplate TEMPLATE{0, L"Owner", 100, 60, L"MS Shell Dlg", 8, ITEMS};

class COwner : public CDialog {
  public:
    COwner() : CDialog(TEMPLATE) {}
    CEditClick m_edit;

  protected:
    bool OnInitDialog() override {
        m_edit.AttachControl(EDIT, this);
        m_edit.m_strPadTitle = L"How many?";
        m_edit.m_dMax = 60;
        m_edit.m_dMin = 1;
        return CDialog::OnInitDialog();
    }
};

}  // namespace

TEST(EditClick, OpensThePadUnderItsTitleAndKeepsItsTextWhenThatIsCancelled) {
    COwner owner;
    RunModal(owner, [&] {
        Operator::Tap(owner, EDIT);
        EXPECT_TRUE(AwaitModal(L"How many?"));
        Operator::Type(L"33");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(TextOf(owner, EDIT), L"7");
        Operator::Type(L"5");  // the touch has brought the focus
        EXPECT_NE(TextOf(owner, EDIT).find(L'5'), std::wstring::npos);
        Operator::Tap(owner, EDIT);
        EXPECT_FALSE(EnterOnPad(L"How many?", L"") && Operator::ModalWindow() == &owner)
            << "the pad begins blank, which it refuses";
        EXPECT_TRUE(EnterOnPad(L"How many?", L"12.6"));
        EXPECT_EQ(TextOf(owner, EDIT), L"13");
    });
}

TEST(ClampedNumber, IsRoundedWithinItsLimits) {
    using Limits = std::numeric_limits<double>;
    const std::pair<double, const wchar_t*> seconds[] = {{75, L"60"},
                                                         {0.4, L"1"},
                                                         {12.6, L"13"},
                                                         {-1e300, L"1"},
                                                         {Limits::infinity(), L"60"},
                                                         {Limits::quiet_NaN(), L"1"}};
    for (const auto& [dNumber, pText] : seconds)
        EXPECT_EQ(FormatClamped(dNumber, 1.0, 60.0, false), pText);
    const std::pair<double, const wchar_t*> triggers[] = {
        {99.95, L"99.9"}, {12.34, L"12.3"}, {5, L"5.0"}, {-3, L"0.0"}, {-0.0, L"0.0"}};
    for (const auto& [dNumber, pText] : triggers)
        EXPECT_EQ(FormatClamped(dNumber, 0.0, 99.9, true), pText);
    EXPECT_EQ(FormatClamped(-Limits::max(), -Limits::max(), Limits::max(), true).size(), 312u);
}
