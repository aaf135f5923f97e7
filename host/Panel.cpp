#include "host/Panel.h"

#include <QString>
#include <QSysInfo>
#include <filesystem>

#include "acquisition/ObjRTGeneric.h"
#include "curves/CaptureRecords.h"
#include "host/Demo.h"
#include "host/LinkInstrument.h"
#include "host/LinkTexts.h"
#include "host/LinkWait.h"
#include "host/Press.h"
#include "host/StatusStrip.h"
#include "host/VerdictStrip.h"
#include "instrument/PressInstrument.h"
#include "platform/operator/Operator.h"
#include "platform/system/Archive.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/system/File.h"
#include "platform/system/Installation.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "plugin/DlgBase.h"
#include "plugin/ScreenTemplate.h"
#include "ui/Language.h"
#include "ui/LanguageTable.h"

namespace {

constexpr std::uint32_t PARAMETER_INPUT_RANGES = 50;

/// A path from the command line as the system takes it.
std::wstring MakeAbsolute(const std::string& strPath) {
    return strPath.empty() ? std::wstring() : FromUtf8(std::filesystem::absolute(strPath).native());
}

/// What a file says about the instrument that made it. Of one that cannot be read, or ends before
/// it says so, nothing is known: the screen tells the operator when it opens the file.
RTScreenRecord ReadScreenRecordOf(const std::wstring& strPath) {
    RTScreenRecord record;
    try {
        CFile file(strPath, CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        ReadScreenRecord(ar, record);
    } catch (const CException&) {
        // What was read before the fault stands.
    }
    return record;
}

/// @throws CPanelError
void ChoosePlaces(const Options& options) {
    const std::wstring strDataFolder = MakeAbsolute(options.m_strDataFolder);
    if (!strDataFolder.empty() && !FolderExists(strDataFolder))
        throw CPanelError(options.m_strDataFolder + ": there is no such folder");
    SetProgramFolder(strDataFolder.empty() ? MakeDataFolder() : strDataFolder);

    if (ChooseLanguage(options.m_strLanguage)) return;
    std::string strThereAre;
    for (const std::wstring& strName : FindLanguages())
        strThereAre += (strThereAre.empty() ? "" : ", ") + ToUtf8(strName);
    throw CPanelError("there is no language '" + ToUtf8(options.m_strLanguage) + "' in " +
                      ToUtf8(JoinPath(FindLanguageHome(), L"lang")) + ": it has " +
                      (strThereAre.empty() ? "no language files" : strThereAre));
}

}  // namespace

std::uint32_t CPanelDevice::ReadParameter(std::uint32_t nNumber) {
    return nNumber == PARAMETER_INPUT_RANGES ? m_nInputs24V : 0;
}

CPanel::CPanel(const Options& options, std::unique_ptr<Judgement> pJudgement,
               const InstrumentMaker& makeInstrument)
    : m_options(options), m_app(L"rtpanel", MakeAbsolute(options.m_strSettingsFile)),
      m_pJudgement(std::move(pJudgement)) {
    m_frame.Create(L"Panel");
    if (m_options.m_link) {
        m_pInstrument = MakeLink();
        return;
    }
    m_pJudge = MakeJudge();
    m_pInstrument = makeInstrument ? makeInstrument(MakeSink()) : MakeInstrument();
}

std::unique_ptr<CStrokeJudge> CPanel::MakeJudge() {
    if (!m_pJudgement) return nullptr;
    return std::make_unique<CStrokeJudge>(m_pJudgement->m_limits, m_pJudgement->m_nChannel,
                                          std::move(m_pJudgement->m_pLog),
                                          [this] { m_frame.PostCall([this] { OnJudgeNews(); }); });
}

CPacketSink CPanel::MakeSink() {
    if (!m_pJudge) return m_queue;
    return CPacketSink([this](std::shared_ptr<RTPacket> spPacket) {
        m_pJudge->Pass(std::move(spPacket), m_queue);
    });
}

std::unique_ptr<IInstrument> CPanel::MakeInstrument() {
    if (m_options.m_bDesktop) {
        m_strInstrument = "none";
        return nullptr;
    }
    Press press = MakePress(m_options);
    m_strInstrument = press.m_strText;
    return std::make_unique<CPressInstrument>(
        MakeSink(), FindValueLayout(m_options.m_nMode, m_options.m_secondInput),
        std::move(press.m_pSignal), press.m_selfStart);
}

std::unique_ptr<IInstrument> CPanel::MakeLink() {
    m_strInstrument = "link " + m_options.m_link->m_strText;
    std::string strName = m_options.m_strPanelName;
    if (strName.empty()) strName = QSysInfo::machineHostName().toStdString();
    auto pLink = std::make_unique<CLinkInstrument>(
        m_frame, PanelLinkSettings{*m_options.m_link, !m_options.m_bView, std::move(strName),
                                   m_options.m_tlsFiles, m_options.m_login});
    m_pLink = pLink.get();
    return pLink;
}

CPanel::~CPanel() = default;

std::wstring CPanel::GetStatusText() const {
    return m_pStrip ? m_pStrip->GetWindowText() : std::wstring();
}

int CPanel::Run() {
    ChoosePlaces(m_options);
    const CDynamicLibrary library(L"RealTimeMode.dll");
    if (!library) throw CPanelError("RealTimeMode.so cannot be loaded");
    auto* const pGetDialog = library.GetFunction<GetDialogFunction>("GetDialog");
    if (!pGetDialog) throw CPanelError("RealTimeMode.so has no GetDialog");

    m_app.m_pMainWnd = &m_frame;
    if (GetDisplayKind() == DisplayKind::Panel) m_frame.FillDisplay();
    if (m_pLink && !JoinInstrument()) return 1;
    m_pView = std::make_unique<CPanelView>(m_pInstrument.get(), m_pJudge.get());
    m_pView->Create(&m_frame);
    m_frame.SetActiveView(m_pView.get());

    const std::unique_ptr<CDlgBase> pScreen(pGetDialog());
    auto* const pSession = dynamic_cast<CRealTimeData*>(pScreen.get());
    if (!pSession) throw CPanelError("RealTimeMode.so gives no screen");
    FillSession(*pSession);

    m_pStrip =
        std::make_unique<CStatusStrip>(*pSession, [this] { return DescribeInstrumentNow(); });
    /// However the screen ends, its judge does so before it.
    struct JudgeEnd {
        ~JudgeEnd() {
            if (m_pJudge) m_pJudge->Finish();
        }
        CStrokeJudge* const m_pJudge;
    };
    const JudgeEnd judgeEnd{m_pJudge.get()};
    if (m_pJudge) {
        m_pJudge->Begin(*pSession, FindValueLayout(m_options.m_nMode, m_options.m_secondInput));
        m_pVerdictStrip = std::make_unique<CVerdictStrip>(
            m_pJudgement->m_limits, m_pJudgement->m_strTitle, m_options.m_secondInput);
    }
    if (m_pLink) m_pLink->AttachScreen(*pScreen, *pSession, MakeSink());
    // Handled once the screen's modal loop runs, and so after its set-up.
    m_frame.PostCall([&] { OnScreenShown(*pScreen); });
    const int nExitCode = RunScreen(*pScreen, *pSession);
    if (m_pJudge) {
        m_pJudge->Finish();
        OnJudgeNews();
    }
    return nExitCode;
}

int CPanel::RunScreen(CDlgBase& screen, CRealTimeData& session) {
    if (m_options.m_strDemo.empty()) {
        screen.Run();
        return 0;
    }
    bool bSucceeded = false;
    {
        CDemo demo(screen, session, m_options, m_pJudgement.get(), m_pVerdictStrip.get(), m_pLink);
        Operator::CScript script([&] { bSucceeded = demo.Run(); });
        screen.Run();
        script.Join();
    }
    return bSucceeded ? 0 : 1;
}

/// Waits until the instrument says what it is.
/// @return false when the operator does not want to
bool CPanel::JoinInstrument() {
    if (!m_options.m_strDemo.empty()) {
        const std::string strTrouble = AwaitInstrument(*m_pLink);
        if (!strTrouble.empty()) throw CPanelError(strTrouble);
    } else {
        // The screen, which lends its language's texts, is not there yet.
        CLanguageTable table;
        LoadLanguage(FindLanguage(), &table);
        const CTextSource texts([&table](std::int32_t nString) { return table.Find(nString); });
        if (CLinkWait(*m_pLink).DoModal() != IDOK) return false;
    }
    const Hello hello = *m_pLink->GetHello();
    m_options.m_nMode = hello.m_nMode;
    m_options.m_secondInput = SecondInput{hello.m_nSecondInput};
    m_options.m_nValueRate = hello.m_nValueRate;
    m_options.m_nAuxRate = hello.m_nAuxRate;
    m_options.m_nDevice24V = hello.m_nDevice24V;
    m_options.m_bCaptureLocked = hello.m_bLocked || !hello.m_bCommands;
    if (m_pJudgement) {
        CheckJudgedMode(m_options);
        m_pJudge = MakeJudge();
    }
    return true;
}

StripField CPanel::DescribeInstrumentNow() const {
    if (!m_pInstrument) return DescribeNoInstrument();
    if (m_pLink)
        return DescribeLink(m_pLink->GetStatus(), FromUtf8(m_pLink->GetAddress()),
                            m_options.m_bCaptureLocked);
    return DescribeInstrument(m_pInstrument->GetState(),
                              NameInstrument(FromUtf8(m_options.m_strReplay)),
                              m_options.m_bCaptureLocked);
}

void CPanel::OnJudgeNews() {
    const JudgeNews news = m_pJudge->TakeNews();
    for (const JudgedStroke& stroke : news.m_strokes)
        if (m_pJudgement->m_bPassOutput && stroke.m_verdict &&
            stroke.m_verdict->m_outcome == Outcome::Pass) {
            std::string image;
            MakePassOutputCommand()->ToBytes(image);
            m_pInstrument->Send(image);
        }
    m_pVerdictStrip->OnNews(news);
}

void CPanel::FillSession(CRealTimeData& session) {
    session.m_pPacketQueue = m_pInstrument ? &m_queue : nullptr;
    session.m_nMode = m_options.m_nMode;
    m_device.SetInputRanges(m_options.m_nDevice24V);
    session.m_bDesktopMode = m_options.m_bDesktop ? 1 : 0;
    session.m_nPositionInput = static_cast<std::uint8_t>(m_options.m_secondInput);
    session.m_pDevice = &m_device;
    session.m_bCaptureLocked = m_options.m_bCaptureLocked ? 1 : 0;
    session.m_nHostValueRate = m_options.m_nValueRate;
    session.m_nHostAuxRate = m_options.m_nAuxRate;
    if (m_options.m_bCaptureLocked) {
        // Start, which nobody can press, would take them over.
        session.m_nValueRate = m_options.m_nValueRate;
        session.m_nAuxRate = m_options.m_nAuxRate;
    }
    if (m_options.m_strCaptureFile.empty()) return;
    // The viewer shows the channels and quantities of the file that it opens with.
    const auto record = ReadScreenRecordOf(MakeAbsolute(m_options.m_strCaptureFile));
    session.m_nMode = record.m_nMode.value_or(session.m_nMode);
    session.m_nPositionInput = record.m_nPositionInput.value_or(session.m_nPositionInput);
}

void CPanel::OnScreenShown(CDlgBase& screen) {
    if (m_pVerdictStrip) m_pVerdictStrip->Attach(screen);
    m_pStrip->Attach(screen);
    // The demonstration enters them on the number pad.
    const bool bEnter = m_options.m_strDemo.empty();
    if (bEnter && !m_options.m_strSampleTime.empty())
        screen.SetControlText(IDC_SAMPLE_TIME, m_options.m_strSampleTime);
    if (bEnter && !m_options.m_strTrigger.empty())
        screen.SetControlText(IDC_TRIGGER, m_options.m_strTrigger);
    if (!m_options.m_strCaptureFile.empty()) {
        m_arrDroppedFiles = {MakeAbsolute(m_options.m_strCaptureFile)};
        screen.PostMessage(WM_DROPFILES, 0, reinterpret_cast<LPARAM>(&m_arrDroppedFiles));
    }
    if (m_pInstrument) m_pInstrument->OnScreenShown();
}
