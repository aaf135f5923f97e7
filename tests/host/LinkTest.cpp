// The panel with the real screen on an instrument elsewhere.
#include <future>

#include "host/LinkTexts.h"
#include "host/LinkWait.h"
#include "tests/host/Session.h"
#include "tests/link/HandInstrument.h"
#include "tests/link/PanelBench.h"

namespace {

class LinkSession : public Session {
  protected:
    /// Runs the panel on the instrument, which says HELLO.
    void RunLinked(const Hello& hello, std::vector<const char*> arguments,
                   const std::function<void()>& script) {
        const std::string strAddress = m_instrument.GetAddress();
        arguments.insert(arguments.end(), {"--link", strAddress.c_str()});
        const auto taken = std::async(std::launch::async, [&] {
            m_join = m_instrument.TakePanel(hello);
            m_instrument.Live();
        });
        Run(arguments, [&] {
            taken.wait();
            script();
        });
    }
    void Acknowledge(AckResult result = AckResult::Taken) {
        const Bytes payload = m_instrument.Read(FrameKind::Message);
        const auto message = ReadMessage(payload);
        ASSERT_TRUE(message);
        m_strImage.assign(message->m_image.begin(), message->m_image.end());
        m_instrument.Send(FrameKind::Ack, FormAck({message->m_nNumber, result}));
    }
    void SendPackets(std::string_view strPackets) {
        for (const char ch : strPackets)
            ch == 's' ? SendValues(2) : m_instrument.Send(FrameKind::Packet, MakePacketOf(ch));
    }
    void SendValues(std::uint8_t nValues) {
        Bytes samples(4 + 2 * nValues);
        samples[3] = nValues;
        m_instrument.Send(FrameKind::Packet, FormPacket({RTPACKET_SAMPLES, samples}));
    }
    bool AwaitStatus(const wchar_t* pText) {
        const bool bThere = Await([&] { return Status().find(pText) != std::wstring::npos; });
        EXPECT_TRUE(bThere) << ToUtf8(pText) << " is not " << ToUtf8(Status());
        return bThere;
    }

    CHandInstrument m_instrument;
    Join m_join;
    std::string m_strImage;
};

TEST_F(LinkSession, TheInstrumentSaysWhatTheScreenShowsAndTheCaptureArrives) {
    Hello hello = CHandInstrument::MakeHello();
    hello.m_nMode = 20;
    hello.m_nSecondInput = 2;
    hello.m_nValueRate = 1000;
    hello.m_nAuxRate = 77;
    hello.m_nDevice24V = 2;
    RunLinked(hello, {"--panel-name", "desk 1", "--sample-time", "1"}, [this] {
        EXPECT_EQ(m_join.m_strName, "desk 1");
        EXPECT_TRUE(AwaitStatus(L"Connected\npress 3 (no. 0042)"));
        EXPECT_EQ(m_pSession->m_nMode, 20);
        EXPECT_EQ(m_pSession->m_nPositionInput, 2);
        EXPECT_EQ(m_pSession->m_nChannels, 2);
        EXPECT_EQ(m_pSession->m_pDevice->ReadParameter(50), 2u);
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        Acknowledge();
        ASSERT_EQ(m_strImage.size(), 44u);
        EXPECT_EQ(m_strImage[7], '\xE8');  // 1000
        EXPECT_EQ(m_pSession->m_nAuxRate, 77);
        SendPackets("r");
        AwaitStatus(L"Capture running");
        SendValues(200);
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 100; }));
        m_instrument.LoseFrames(1);
        SendValues(4);
        AwaitStatus(L"1 packet lost in this capture");
        m_instrument.LoseFrames(2);
        SendPackets("i");
        AwaitStatus(L"3 packets lost in this capture");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        EXPECT_EQ(GetValues(1).size(), 102u);
    });
    EXPECT_EQ(m_instrument.ReadEnd(), LinkReason::Normal);
}

TEST_F(LinkSession, AConnectionThatIsLostEndsTheCaptureAndComesBack) {
    RunLinked(CHandInstrument::MakeHello(), {}, [this] {
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        Acknowledge();
        SendPackets("rs");
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 2; }));
        m_instrument.Leave();
        AwaitStatus(L"Connection lost, capture cut short");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        EXPECT_EQ(GetValues(0).size(), 2u);
        // Nothing is sent, and the screen does not wait for what will not come.
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        AwaitStatus(L"Nothing was sent: not connected.");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        Hello hello = CHandInstrument::MakeHello();
        hello.m_nValueRate = 500;
        m_instrument.Return();
        m_instrument.TakePanel(hello);
        AwaitStatus(L"Value rate 10000 is now 500");
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        Acknowledge(AckResult::Impossible);
        EXPECT_EQ(m_strImage.substr(7, 2), "\xF4\x01");
        AwaitStatus(L"The instrument cannot do this now.");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));

        m_instrument.Leave();
        AwaitStatus(L"Connection lost");
        hello.m_nMode = 3;
        m_instrument.Return();
        m_instrument.TakePanel(hello);
        EXPECT_EQ(m_instrument.ReadEnd(), LinkReason::Changed);
        AwaitStatus(
            L"The instrument has changed\nMode 1 is now 3: close the screen and start again");
    });
}

TEST_F(LinkSession, TheWindowThatWaitsSaysWhyAndCanBeCancelled) {
    m_instrument.Leave();
    const std::string strFolder = m_folder.GetPath().native();
    const std::string strAddress = "tcp://127.0.0.1:1";
    const std::vector<const char*> arguments = {"--link", strAddress.c_str(), "--data-folder",
                                                strFolder.c_str()};
    CPanel panel(ReadOptions(arguments));
    Operator::CScript script([&] {
        const CWnd* pWindow = nullptr;
        Operator::WaitFor("the window",
                          [&] { return (pWindow = Operator::ModalWindow()) != nullptr; });
        EXPECT_TRUE(Await([&] {
            std::wstring strText = ::TextOf(*pWindow, CLinkWait::ID_DETAILS);
            std::erase(strText, L'\n');
            return strText == L"tcp://127.0.0.1:1: connection refused. Trying again.";
        }));
        EXPECT_EQ(::TextOf(*pWindow, CLinkWait::ID_STATE), L"No connection");
        EXPECT_TRUE(Operator::Tap(*pWindow, IDCANCEL));
    });
    EXPECT_EQ(panel.Run(), 1);
    script.Join();
}

TEST(LinkTexts, SayWhatHasHappenedAndInRedWhatIsNotWell) {
    LinkStatus status;
    const auto describe = [&status](bool bLocked = false) {
        const StripField field = DescribeLink(status, L"tcp://a", bLocked);
        return std::to_string(static_cast<int>(field.m_mood)) + ToUtf8(field.m_strHead) + "|" +
               ToUtf8(field.m_strDetail);
    };
    EXPECT_EQ(describe(), "2Connecting|tcp://a");
    status.m_trouble = LinkText("no route");
    EXPECT_EQ(describe(), "3No connection|tcp://a: no route. Trying again.");
    status.m_bOtherCommands = true;
    status.m_strOtherPanel = "desk 2";
    EXPECT_EQ(describe(), "3Commanded by desk 2|Trying again (--view shows it without commanding)");
    status = {};
    status.m_state = PanelState::Connected;
    status.m_strName = "p";
    EXPECT_EQ(describe(), "0Viewing|p");
    status.m_bCommands = true;
    EXPECT_EQ(describe(true), "0Connected|p (locked)");
    status.m_away = std::chrono::seconds(12);
    EXPECT_EQ(describe(), "0Connected again after 12 s|p");
    status.m_bRunning = true;
    EXPECT_EQ(describe(), "1Capture running|p");
    status.m_bAwaitsCurve = true;
    EXPECT_EQ(describe(), "2Capture running|Shown from the next curve");
    status.m_state = PanelState::Waiting;
    status.m_bLost = true;
    status.m_trouble = LinkText("silence");
    status.m_bTriesAgain = false;
    EXPECT_EQ(describe(), "3Connection lost|Silence");
}

}  // namespace
