// Memory that runs out at every place of a load, and at many places of a whole run of the screen.
#include <gtest/gtest.h>

#include "curves/CaptureFile.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemFile.h"
#include "plugin/ScreenTemplate.h"
#include "tests/memory/FailingNew.h"
#include "tests/support/FileBytes.h"
#include "tests/support/Panel.h"

namespace {

TEST(OutOfMemory, ALoadKeepsTheCompleteCurvesWhereverItFails) {
    // 3000 values have blocks and groups of blocks, and 40 different pulses several chunks.
    std::vector<std::pair<int, int>> pulses(40);
    for (int n = 0; n < 40; ++n) pulses[static_cast<std::size_t>(n)] = {n, 1};
    FileBytes bytes = FileBytes().Head().Byte(11).Byte(1).Long(4);  // and a curve that is not there
    for (const int nValues : {3000, 0, 1})
        bytes.Values(std::vector(static_cast<std::size_t>(nValues), 7))
            .Pulses(pulses)
            .Longs(std::vector(10, -1));
    bool bFailed = true;
    for (std::size_t n = 0; bFailed; ++n) {
        CMemFile file(L"a.rt3", bytes.m_bytes);
        RTCaptureFile capture;
        {
            const CFailingNew failing(n, Failing::FromThenOn);
            try {
                ReadCapture(file, capture);
                ADD_FAILURE() << "read a file that is cut";
            } catch (const CMemoryException&) {
                EXPECT_TRUE(failing.HasFailed());
            } catch (const CArchiveException&) {
            }
            bFailed = failing.HasFailed();
        }
        const RTCurveList& list = capture.m_curves.m_lstCurves[0];
        for (const auto& spCurve : list) {
            ASSERT_EQ(spCurve->GetPulses().GetCount(), pulses.size());
            ASSERT_EQ(spCurve->GetPulses().At(39), (RTPulse{39, 1}));
            ASSERT_EQ(spCurve->FindMinMax(0, spCurve->GetCount()).m_nMax,
                      spCurve->GetCount() ? 7 : INT16_MIN);
        }
        EXPECT_TRUE(bFailed || list.size() == 3);
    }
}

TEST(OutOfMemory, ALoadTakesAtMostSixteenTimesItsFile) {
    // Curves of the oldest version, in a number that has just made the list grow.
    constexpr int CURVES = 4097;
    for (const int nValues : {0, 1, 127, 128})
        for (const int nPulses : {0, 1, 4, 5, 12, 13, 28, 29, 60, 61}) {
            FileBytes curve = FileBytes().Values(std::vector(static_cast<std::size_t>(nValues), 1));
            curve.Long(nPulses);
            for (int n = 0; n < nPulses; ++n) curve.Long(n).Byte(0);
            FileBytes bytes = FileBytes().Long(1).Byte(0).Byte(1).Long(CURVES);
            for (int n = 0; n < CURVES; ++n)
                bytes.m_bytes.insert(bytes.m_bytes.end(), curve.m_bytes.begin(),
                                     curve.m_bytes.end());
            const std::size_t nLength = bytes.m_bytes.size();
            CMemFile file(L"a.rt3", std::move(bytes.m_bytes));
            RTCaptureFile capture;
            EXPECT_LE(FindMostHeld([&] { ReadCapture(file, capture); }), 16 * nLength)
                << nValues << " values, " << nPulses << " pulses";
            EXPECT_EQ(capture.m_curves.m_lstCurves[0].size(), std::size_t{CURVES});
        }
}

TEST(OutOfMemory, TheScreenReportsALoadThatFailsAndGoesOn) {
    TestPanel panel(1);
    panel.m_pSession->m_bDesktopMode = 1;
    const auto bytes = FileBytes::SmallCapture();
    panel.m_folder.Put("whole.rt3", {bytes.begin(), bytes.end()});
    panel.m_folder.Put("cut.rt3", {bytes.begin(), bytes.end() - 1});
    const std::vector<std::wstring> arrCut{panel.m_folder.Path("cut.rt3")};
    panel.Run([&] {
        // The first failure behind the load finds no memory for the text of the box.
        bool bReported = true;
        for (std::size_t n = 0; bReported; ++n) {
            std::atomic<bool> bFailed = false;
            panel.m_pDialog->PostCall([&] {
                const CFailingNew failing(n, Failing::Once);
                panel.m_pDialog->SendMessage(WM_DROPFILES, 0, reinterpret_cast<LPARAM>(&arrCut));
                bFailed = failing.HasFailed();
            });
            Operator::Ask([] {});
            bReported = Operator::PressModalButton(L"OK");
            ASSERT_TRUE(Operator::WaitUntil([&] { return bFailed.load(); }, 5000)) << n;
            Operator::DropFiles(*panel.m_pDialog, {panel.m_folder.Path("whole.rt3")});
            ASSERT_EQ(panel.ValuesOf(0).size(), 4u) << n;
            ASSERT_TRUE(bReported || n > 10);
        }
    });
}

TEST(OutOfMemory, TheReaderEndsWhereverARunFails) {
    // The two allocations of the reader's thread, then the window's first ones: a widget that fails
    // later on is beyond repair.
    for (std::size_t n = 0; n < 4; ++n) {
        TestPanel panel(1);
        const CFailingNew failing(n, Failing::Once);
        EXPECT_THROW(panel.m_pDialog->Run(), std::bad_alloc) << n;
        EXPECT_FALSE(panel.m_pSession->m_hReaderThread);
        EXPECT_EQ(panel.m_pSession->m_bStopReader, 1);
    }
}

TEST(OutOfMemory, NoScreenComesOfAnyFailure) {
    const TestPanel panel(1);
    auto* const pGetDialog = panel.m_library.GetFunction<GetDialogFunction>("GetDialog");
    bool bFailed = true;
    for (std::size_t n = 0; bFailed; ++n) {
        std::unique_ptr<CDlgBase> pScreen;
        const CFailingNew failing(n, Failing::FromThenOn);
        pScreen.reset(pGetDialog());
        bFailed = failing.HasFailed();
        EXPECT_EQ(pScreen == nullptr, bFailed) << n;
    }
}

}  // namespace
