#include "soak/LinkedScreen.h"

#include <stdexcept>

#include "host/LinkWait.h"

CLinkedScreen::CLinkedScreen(const std::string& strAddress, const TlsFiles& tlsFiles,
                             std::function<void(const std::shared_ptr<RTPacket>&)> onPacket) {
    PanelLinkSettings settings;
    settings.m_address = ReadLinkAddress(strAddress, LinkUse::Connect);
    settings.m_strName = "soak";
    settings.m_tlsFiles = tlsFiles;
    m_pLink = std::make_unique<CLinkInstrument>(m_panel.m_frame, settings);
    const std::string strTrouble = AwaitInstrument(*m_pLink);
    if (!strTrouble.empty()) throw std::runtime_error(strTrouble);
    m_pView = std::make_unique<CPanelView>(m_pLink.get(), nullptr);
    m_pView->Create(&m_panel.m_frame);
    m_panel.m_frame.SetActiveView(m_pView.get());

    const Hello hello = m_pLink->GetHello().value();
    CRealTimeData& session = *m_panel.m_pSession;
    session.m_nMode = hello.m_nMode;
    session.m_nPositionInput = hello.m_nSecondInput;
    session.m_nHostValueRate = hello.m_nValueRate;
    session.m_nHostAuxRate = hello.m_nAuxRate;
    if (hello.m_bLocked) {
        session.m_bCaptureLocked = 1;
        session.m_nValueRate = hello.m_nValueRate;
        session.m_nAuxRate = hello.m_nAuxRate;
    }
    RTPacketQueue& queue = m_panel.m_queue;
    m_pLink->AttachScreen(
        *m_panel.m_pDialog, session,
        CPacketSink([&queue, onPacket = std::move(onPacket)](std::shared_ptr<RTPacket> spPacket) {
            if (onPacket) onPacket(spPacket);
            queue.push(std::move(spPacket));
        }));
}

CLinkedScreen::~CLinkedScreen() { EndLink(); }

void CLinkedScreen::EndLink() {
    if (m_pView) m_panel.m_frame.SetActiveView(&m_panel.m_view);
    m_pView.reset();
    m_pLink.reset();
}
