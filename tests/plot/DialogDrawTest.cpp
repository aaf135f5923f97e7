// The control on a real window: what it shows, and the zoom band on its picture.
#include <gtest/gtest.h>

#include "platform/operator/Operator.h"
#include "platform/windows/Dialog.h"
#include "plot/DialogDraw.h"
#include "tests/plot/PlotSheet.h"

namespace {

constexpr int PLOT_ID = 9;
const DialogItem ITEMS[] = {{PLOT_ID, ControlKind::StaticFrame, nullptr, 0, 0, 200, 100}};
const DialogTemplate TEMPLATE{1, L"Plot", 200, 100, L"MS Shell Dlg", 8, ITEMS};

struct Control : testing::Test {
    Control() {
        m_sheet.Add(10000, [](std::uint32_t i) { return static_cast<int>(i % 700); });
        m_dialog.Create(nullptr);
        m_control.AttachControl(PLOT_ID, &m_dialog);
        m_control.m_pPlot = &m_sheet.m_plot;
        m_dialog.ShowWindow(true);
        Operator::Wait(1);
    }
    void Repaint() {
        m_control.Invalidate();
        Operator::Wait(1);
    }
    /// The colours that differ from the plot painted without a band, as a range of x.
    std::pair<int, int> FindBand() {
        const CBitmap shown = Operator::TakePicture(m_control);
        PlotSheet plain(m_sheet.m_plot.m_nWidth, m_sheet.m_plot.m_nHeight);
        m_sheet.m_plot.Paint(plain.m_dc);
        std::pair<int, int> band{-1, -1};
        for (int x = 0; x < plain.m_plot.m_nWidth; ++x) {
            const COLORREF crPlain = plain.m_dc.GetPixel(x, 5);
            if (shown.GetPixel(x, 5) == crPlain) continue;
            EXPECT_EQ(shown.GetPixel(x, 5), crPlain ^ 0xFFFFFFu) << x;
            if (band.first < 0) band.first = x;
            band.second = x;
        }
        return band;
    }

    PlotSheet m_sheet;
    CDialog m_dialog{TEMPLATE};
    CDialogDraw m_control;
};

constexpr std::pair<int, int> NO_BAND{-1, -1};

TEST_F(Control, TheBandFollowsTheMouseAndSurvivesRepaints) {
    m_sheet.m_plot.OnPlotClick({100, 50});
    Repaint();  // the press has moved the start of the view
    EXPECT_EQ(FindBand(), NO_BAND);
    m_control.MoveZoomBand(180);
    EXPECT_EQ(FindBand(), (std::pair{100, 179}));
    Repaint();
    EXPECT_EQ(FindBand(), (std::pair{100, 179}));
    m_control.MoveZoomBand(140);
    EXPECT_EQ(FindBand(), (std::pair{100, 139}));
    m_control.MoveZoomBand(60);
    EXPECT_EQ(FindBand(), (std::pair{60, 99}));
    Repaint();
    EXPECT_EQ(FindBand(), (std::pair{60, 99}));
    m_control.MoveZoomBand(-500);
    EXPECT_EQ(FindBand(), (std::pair{40, 99}));
    m_control.MoveZoomBand(5000);
    EXPECT_EQ(FindBand(), (std::pair{100, 299}));

    m_control.EndZoomDrag(200);
    EXPECT_EQ(m_sheet.m_plot.m_nDragBandX, 0);
    EXPECT_EQ(m_sheet.m_plot.m_bZoomed, 1);
    Operator::Wait(1);
    PlotSheet zoomed(300, 163);
    m_sheet.m_plot.Paint(zoomed.m_dc);
    EXPECT_TRUE(Operator::TakePicture(m_control).EncodePng() == zoomed.m_bitmap.EncodePng());
}

}  // namespace
