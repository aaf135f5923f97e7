// A session of the real panel, worked as an operator would.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>

#include "host/Panel.h"
#include "platform/operator/Operator.h"
#include "plugin/DlgBase.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Controls.h"
#include "tests/support/TemporaryFolder.h"

class Session : public ::testing::Test {
  protected:
    /// Runs the panel with options, beside those for its files, until the script has ended. An
    /// error box that comes up first is to begin with a text.
    void Run(std::vector<const char*> arguments, const std::function<void()>& script,
             const wchar_t* pError = nullptr) {
        const std::string strFolder = m_folder.GetPath().native();
        const std::string strSettings = strFolder + "/settings.ini";
        arguments.insert(arguments.begin(),
                         {"--data-folder", strFolder.c_str(), "--settings", strSettings.c_str()});
        // An instrument on a link has its own.
        if (std::ranges::count(arguments, std::string("--link")) == 0)
            arguments.insert(arguments.begin(), {"--value-rate", "10000"});
        const Options options = ReadOptions(arguments);
        CPanel panel(options, PrepareJudgement(options), m_makeInstrument);
        m_pPanel = &panel;
        Operator::CScript running([&] {
            // The box breaks a long path into lines.
            const auto isBox = [&] {
                std::wstring strText = Operator::ModalText();
                std::erase(strText, L'\n');
                return strText.find(pError) != std::wstring::npos;
            };
            if (pError) Operator::WaitFor("the error box", isBox);
            if (pError) Operator::PressModalButton(L"OK");
            Operator::WaitFor("the screen", [this] {
                return m_pScreen = dynamic_cast<CDlgBase*>(Operator::ModalWindow());
            });
            m_pSession = dynamic_cast<CRealTimeData*>(m_pScreen);
            // The panel is still at work on the screen's window until then.
            Operator::WaitFor("the strip", [this] { return !Status().empty(); });
            script();
            m_pScreen->PostMessage(WM_CLOSE);
        });
        EXPECT_EQ(panel.Run(), 0);
        running.Join();
    }

    bool Await(const std::function<bool()>& condition) {
        return Operator::WaitUntil(condition, 20000);
    }
    std::wstring Status() {
        std::wstring strText;
        Operator::Ask([&] { strText = m_pPanel->GetStatusText(); });
        return strText;
    }
    std::wstring TextOf(int nID) { return ::TextOf(*m_pScreen, nID); }
    bool IsEnabled(int nID) { return ::IsEnabled(*m_pScreen, nID); }
    std::shared_ptr<CRTCurves> GetCurves() {
        const std::lock_guard lock(m_pSession->m_lock);
        return m_pSession->m_spCurves;
    }
    /// The values of a channel's first curve.
    std::vector<std::int16_t> GetValues(std::size_t nChannel) {
        std::shared_ptr<RTCurveData> spCurve;
        {
            const std::lock_guard lock(m_pSession->m_lock);
            spCurve = m_pSession->m_spCurves->FirstCurve(nChannel);
        }
        if (!spCurve) return {};
        const std::uint32_t nCount = spCurve->GetCount();
        return {spCurve->GetValues(), spCurve->GetValues() + nCount};
    }

    const TemporaryFolder m_folder;
    InstrumentMaker m_makeInstrument;  ///< in place of the one that the options ask for
    CPanel* m_pPanel = nullptr;
    CDlgBase* m_pScreen = nullptr;
    CRealTimeData* m_pSession = nullptr;
};
