// Windows where nobody else frames them: caption and border, dragging, and the foot.
#include <gtest/gtest.h>

#include "platform/windows/Application.h"
#include "platform/windows/DialogLook.h"
#include "platform/windows/PaintDC.h"
#include "tests/support/Controls.h"

namespace {

constexpr DialogItem ITEMS[] = {{IDOK, ControlKind::PushButton, L"OK", 10, 10, 40, 10}};
constexpr DialogTemplate TEMPLATE{0, L"Title", 100, 60, L"MS Shell Dlg", 8, ITEMS};
constexpr DialogTemplate CHILD{0, L"", 20, 10, L"MS Shell Dlg", 8, {}, true};
constexpr CSize CLIENT{150, 98};
constexpr CPoint CORNER{3, 33};  ///< of the client area in its window: border, then caption
constexpr int FOOT = 20;

/// Paints itself, and counts the presses.
class CRedFoot : public CView {
  public:
    int m_nPresses = 0;

  private:
    void OnPaint() { CPaintDC(this).FillSolidRect(GetClientRect(), RGB(255, 0, 0)); }
    void OnLButtonDown(UINT, CPoint) { ++m_nPresses; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CRedFoot, CView)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

/// Expects the client area in the picture of its window, and nothing of its colour around it.
void ExpectFramed(const CBitmap& window, const CBitmap& client, int nFoot) {
    ASSERT_EQ(client.GetSize(), CLIENT);
    ASSERT_EQ(window.GetSize(), (CSize{CLIENT.cx + 6, CLIENT.cy + 36 + nFoot}));
    const CRect area{CORNER.x, CORNER.y, CORNER.x + CLIENT.cx, CORNER.y + CLIENT.cy};
    int nFaults = 0;
    for (int y = 0; y < window.GetSize().cy; ++y)
        for (int x = 0; x < window.GetSize().cx; ++x) {
            const COLORREF color = window.GetPixel(x, y);
            nFaults += area.PtInRect({x, y}) ? color != client.GetPixel(x - area.left, y - area.top)
                                             : color == DIALOG_BACKGROUND;
        }
    EXPECT_EQ(nFaults, 0);
}

int CountInCaption(const CBitmap& window, COLORREF color) {
    int nPixels = 0;
    for (int y = 0; y < CORNER.y; ++y)
        for (int x = 0; x < window.GetSize().cx; ++x) nPixels += window.GetPixel(x, y) == color;
    return nPixels;
}

CPoint PlaceOf(const CWnd& wnd) {
    CPoint place;
    Operator::Ask([&] { place = wnd.GetWindowRect().TopLeft(); });
    return place;
}

constexpr CPoint CAPTION{60, -5};  ///< in the client area's pixels

/// Drags a window by a point given in its client area's pixels.
/// @return where its client area is then
CPoint DragFrom(const CWnd& wnd, CPoint from, CPoint by) {
    Operator::Press(wnd, from);
    Operator::MoveTo(wnd, {from.x + by.x, from.y + by.y});
    Operator::Release(wnd, from);
    return PlaceOf(wnd);
}

}  // namespace

TEST(Frame, StandsAroundTheClientAreaWithTheTitle) {
    CDialog dialog(TEMPLATE);
    RunModal(dialog, [&] {
        const CBitmap client = Operator::TakePicture(dialog);
        const CBitmap titled = Operator::TakeWindowPicture(dialog);
        ExpectFramed(titled, client, 0);
        Operator::Ask([&] { dialog.SetWindowText(L""); });
        const CBitmap blank = Operator::TakeWindowPicture(dialog);
        ExpectFramed(blank, client, 0);
        const COLORREF crCaption = blank.GetPixel(20, 18);
        EXPECT_EQ(CountInCaption(blank, crCaption), (CLIENT.cx + 6) * CORNER.y);
        EXPECT_GT(CountInCaption(titled, RGB(255, 255, 255)), 20);

        DragFrom(dialog, CAPTION, {-50, 40});
        CDialog above(TEMPLATE, &dialog);
        Operator::Ask([&] { above.CreateModal(&dialog); });
        EXPECT_EQ(Operator::ModalWindow(), &above);
        EXPECT_NE(Operator::TakeWindowPicture(dialog).GetPixel(20, 18), crCaption)
            << "it is behind";
        EXPECT_EQ(above.GetParent(), &dialog);
        EXPECT_EQ(PlaceOf(above), PlaceOf(dialog)) << "centred over it";
        Operator::Ask([&] { above.DestroyWindow(); });
    });
}

TEST(Frame, IsDraggedByItsCaptionAsFarAsThatCanBeReached) {
    CDialog dialog(TEMPLATE);
    RunModal(dialog, [&] {
        const CPoint start = PlaceOf(dialog);
        EXPECT_EQ(DragFrom(dialog, {60, 60}, {50, 50}), start) << "not by its client area";
        EXPECT_EQ(DragFrom(dialog, CAPTION, {3, 3}), start) << "a finger is never still";
        EXPECT_EQ(DragFrom(dialog, CAPTION, {-50, 40}), (CPoint{start.x - 50, start.y + 40}));
        EXPECT_EQ(DragFrom(dialog, CAPTION, {50, -40}), start);

        // The display has 800 x 800 pixels.
        const int nWidth = CLIENT.cx + 6;
        EXPECT_EQ(DragFrom(dialog, CAPTION, {2000, 2000}), (CPoint{800 - 66 + CORNER.x, 800}));
        EXPECT_EQ(DragFrom(dialog, {20, -5}, {-2000, -2000}),
                  (CPoint{66 - nWidth + CORNER.x, CORNER.y}));
        DragFrom(dialog, {CLIENT.cx - 10, -5}, {300, 200});
        EXPECT_TRUE(Operator::Tap(dialog, IDOK));
    });
    EXPECT_FALSE(dialog.GetHandle());
}

TEST(Foot, StandsBelowTheClientAreaInTheSameFrame) {
    CDialog dialog(TEMPLATE);
    CRedFoot foot;
    RunModal(dialog, [&] {
        const CBitmap client = Operator::TakePicture(dialog);
        Operator::Ask([&] {
            EXPECT_TRUE(foot.CreateFoot(dialog, FOOT));
            CDialog child(CHILD);
            child.Create(&dialog);
            EXPECT_FALSE(CView().CreateFoot(child, FOOT));
            EXPECT_EQ(foot.GetParent(), &dialog);
            EXPECT_EQ(foot.GetClientRect(), (CRect{0, 0, CLIENT.cx, FOOT}));
        });
        const CBitmap window = Operator::TakeWindowPicture(dialog);
        ExpectFramed(window, client, FOOT);
        for (const int y : {0, FOOT - 1})
            EXPECT_EQ(window.GetPixel(CORNER.x, CORNER.y + CLIENT.cy + y), RGB(255, 0, 0));
        EXPECT_TRUE(Operator::Tap(foot)) << "though the dialog is modal";
        EXPECT_EQ(foot.m_nPresses, 1);
        CRedFoot second;
        Operator::Ask([&] {
            EXPECT_TRUE(second.CreateFoot(dialog, 7));
            EXPECT_EQ(second.GetClientRect(), (CRect{0, 0, CLIENT.cx, 7}));
            EXPECT_EQ(second.GetWindowRect().top, foot.GetWindowRect().bottom);
        });
        ExpectFramed(Operator::TakeWindowPicture(dialog), client, FOOT + 7);
        Operator::Ask([&] { foot.DestroyWindow(); });
        EXPECT_TRUE(Operator::WaitUntil(
            [&] { return Operator::TakeWindowPicture(dialog).GetSize().cy == CLIENT.cy + 36 + 7; },
            5000));
        Operator::Ask([&] {
            CRect area = dialog.GetWindowRect();
            EXPECT_EQ(second.GetWindowRect().top, area.bottom) << "it closes up";
            second.DestroyWindow();
        });
        Operator::Ask([&] {
            foot.CreateFoot(dialog, FOOT);
            dialog.DestroyWindow();
            EXPECT_FALSE(foot.GetHandle()) << "it goes with the dialog";
        });
    });
}

TEST(Cover, StandsInFrontOfTheControlsAndTakesTheirInput) {
    CDialog dialog(TEMPLATE);
    CRedFoot cover;
    RunModal(dialog, [&] {
        const CRect area{10, 12, 110, 90};  // over the button
        Operator::Ask([&] { EXPECT_TRUE(cover.CreateCover(dialog, area)); });
        const CBitmap window = Operator::TakeWindowPicture(dialog);
        for (int y = 0; y < CLIENT.cy; ++y)
            for (int x = 0; x < CLIENT.cx; ++x)
                EXPECT_EQ(window.GetPixel(CORNER.x + x, CORNER.y + y) == RGB(255, 0, 0),
                          area.PtInRect({x, y}));
        EXPECT_TRUE(Operator::Tap(cover));
        EXPECT_EQ(cover.m_nPresses, 1);
        Operator::Ask([&] { cover.DestroyWindow(); });
        EXPECT_TRUE(Operator::Tap(dialog, IDOK));
    });
    EXPECT_FALSE(dialog.GetHandle());
}
