// rtinstrument behind a real message broker.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <mutex>
#include <thread>

#include "link/BrokerClient.h"
#include "link/LinkThread.h"
#include "tests/link/Transports.h"
#include "tests/link/WirePanel.h"
#include "tests/service/Service.h"
#include "tests/support/TemporaryFolder.h"

namespace {

/// The broker, with the access rules of docs/link.md; who may not publish can do no harm.
class Broker : public ::testing::Test {
  protected:
    Broker() {
        const std::string strFolder = m_folder.GetPath().native() + "/";
        const int nSocket = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
        socklen_t nSize = sizeof address;
        ::bind(nSocket, reinterpret_cast<sockaddr*>(&address), nSize);
        ::getsockname(nSocket, reinterpret_cast<sockaddr*>(&address), &nSize);
        ::close(nSocket);
        const std::string strPort = std::to_string(ntohs(address.sin_port));
        m_strAddress = "mqtt://127.0.0.1:" + strPort + "/hall/press";
        m_folder.Put("passwords", "press:1\ndesk:2\nwall:3\n");
        m_folder.Put("access", ReadRules());
        m_folder.Put("conf", "user root\nallow_anonymous false\nlistener " + strPort +
                                 " 127.0.0.1\npassword_file " + strFolder + "passwords\nacl_file " +
                                 strFolder + "access\n");
        CChildProgram({"mosquitto_passwd", "-U", strFolder + "passwords"}).Join();
        StartBroker();
    }
    void StartBroker() {
        m_pBroker.reset();
        m_pBroker = std::make_unique<CChildProgram>(
            std::vector<std::string>{"mosquitto", "-c", m_folder.GetPath().native() + "/conf"});
        EXPECT_NE(m_pBroker->Await(" running"), "");
    }
    /// A file with a password.
    std::string MakePassword(const std::string& str) const {
        m_folder.Put("password" + str, str + "\n");
        return m_folder.GetPath().native() + "/password" + str;
    }
    /// The rules as the document has them.
    static std::string ReadRules() {
        std::ifstream file(RT_SOURCES "/docs/link.md");
        std::string strRules;
        bool bIn = false;
        for (std::string strLine; std::getline(file, strLine);) {
            if (bIn && !strLine.empty() && !strLine.starts_with("    ")) break;
            if (bIn) strRules += strLine.substr(strLine.empty() ? 0 : 4) + "\n";
            bIn = bIn || strLine == "    # access";
        }
        return strRules;
    }

    const TemporaryFolder m_folder;
    std::string m_strAddress;
    std::unique_ptr<CChildProgram> m_pBroker;
};

class CBrokerPanel {
  public:
    CBrokerPanel(const std::string& strAddress, const std::string& strPasswordFile,
                 const char* pszUser, std::uint32_t nToken = 0)
        : m_address(ReadLinkAddress(strAddress, LinkUse::Connect)), m_nToken(nToken) {
        char szToken[9];
        std::snprintf(szToken, sizeof szToken, "%08x", nToken);
        m_strToken = szToken;
        m_thread.Start("link-test", [] {});
        m_thread.Post([=, this] {
            BrokerSettings settings;
            settings.m_address = m_address;
            settings.m_login = {pszUser, strPasswordFile};
            for (const std::string& str :
                 {std::string("hello"), std::string("packets"), "down/" + m_strToken})
                settings.m_subscriptions.push_back(
                    {m_address.m_strTopic + "/" + str, BrokerCare::Once});
            BrokerEvents events;
            events.m_onOpened = events.m_onSent = [] {};
            events.m_onMessage = [this](const std::string& strTopic, PayloadView bytes) {
                const std::lock_guard lock(m_mutex);
                const auto frame = ReadWholeFrame(bytes, MAX_PAYLOAD_TO_PANEL);
                const std::string strPart = strTopic.substr(m_address.m_strTopic.size() + 1);
                m_told[strPart[0]].push_back(frame ? m_tellers[strPart[0]].Tell(*frame) : "?");
            };
            events.m_onLost = [this](const std::string& strWhy, bool) {
                const std::lock_guard lock(m_mutex);
                m_told['!'].push_back(strWhy);
            };
            m_pClient = std::make_unique<CBrokerClient>(m_thread.GetContext(), settings, events);
        });
    }
    ~CBrokerPanel() {
        m_thread.Post([this] { m_pClient.reset(); });
        m_thread.End();
    }

    CBrokerPanel& Send(FrameKind kind, Bytes payload = {}) {
        if (kind == FrameKind::Join) m_nNext = 0;
        m_thread.Post([this, bytes = MakeBytes(kind, m_nNext++, std::move(payload))] {
            m_pClient->Publish(
                {m_address.m_strTopic + "/up/" + m_strToken, bytes, BrokerCare::Once, false});
        });
        return *this;
    }
    CBrokerPanel& Join(bool bCommand) {
        return Send(FrameKind::Join, FormJoin({{1, 1}, bCommand, m_nToken, 5, "desk"}));
    }
    /// Reads from a topic, named by its first letter ("!": how it was lost), until what has come
    /// ends so. It is told as by CFrameTeller, without KEEPALIVEs; of values in a row the first.
    std::string Await(char chTopic, const std::string& strEnd,
                      std::chrono::milliseconds time = 5s) {
        std::string strTold;
        for (const auto end = std::chrono::steady_clock::now() + time;
             std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(1ms)) {
            const std::lock_guard lock(m_mutex);
            for (auto& told = m_told[chTopic]; !told.empty();) {
                const std::string str = std::move(told.front());
                told.pop_front();
                if (str == "K" || (str == "s" && strTold.ends_with('s'))) continue;
                strTold += str;
                if (!strEnd.empty() && strTold.ends_with(strEnd)) return strTold;
            }
        }
        return strTold;
    }
    CFrameTeller& Of(char chTopic) { return m_tellers[chTopic]; }

  private:
    const LinkAddress m_address;
    const std::uint32_t m_nToken;
    std::string m_strToken;
    std::uint32_t m_nNext = 0;
    std::mutex m_mutex;
    std::map<char, CFrameTeller> m_tellers;
    std::map<char, std::deque<std::string>> m_told;
    CLinkThread m_thread;
    std::unique_ptr<CBrokerClient> m_pClient;
};

TEST_F(Broker, CarriesOneWhoCommandsAndManyWhoView) {
    auto pProgram = std::make_unique<CChildProgram>(
        Instrument({"--listen", m_strAddress, "--mode=3", "--value-rate=2000", "--link-user=press",
                    "--link-password-file", MakePassword("1")}));
    ASSERT_NE(pProgram->Await("hall/press: connected"), "") << pProgram->GetOutput();
    CBrokerPanel desk(m_strAddress, MakePassword("2"), "desk", 0xAB);
    CBrokerPanel wall(m_strAddress, MakePassword("3"), "wall", 0xCD);
    CBrokerPanel other(m_strAddress, MakePassword("3"), "wall");
    for (CBrokerPanel* const pPanel : {&desk, &wall, &other}) {
        EXPECT_EQ(pPanel->Await('h', "H"), "H");
        EXPECT_EQ(pPanel->Of('h').m_hello.m_nAttempt, 0u);
        EXPECT_FALSE(pPanel->Of('h').m_hello.m_bCommands);
    }
    // Nobody is let in without a JOIN; a viewer is, for the asking.
    EXPECT_EQ(desk.Send(FrameKind::Message, Bytes(48)).Await('d', "R4"), "R4");
    EXPECT_EQ(desk.Join(false).Await('d', "H"), "H");
    EXPECT_FALSE(desk.Of('d').m_hello.m_bCommands);
    EXPECT_EQ(desk.Join(true).Await('d', "H"), "H");
    EXPECT_TRUE(desk.Of('d').m_hello.m_bCommands);
    EXPECT_EQ(desk.Of('d').m_hello.m_nAttempt, 5u);
    CBrokerPanel second(m_strAddress, MakePassword("2"), "desk", 0xEF);
    EXPECT_EQ(second.Await('h', "H"), "H");
    EXPECT_EQ(second.Join(true).Await('d', "R2"), "R2");

    // A capture: everybody sees the same, and that the instrument runs.
    desk.Send(FrameKind::Message, FormMessage({1, MakeStart(500, 2000)}));
    for (CBrokerPanel* const pPanel : {&desk, &wall, &other}) {
        EXPECT_EQ(pPanel->Await('p', "i"), "A0Crsi");
        EXPECT_EQ(pPanel->Await('h', "HH"), "HH");
        EXPECT_FALSE(pPanel->Of('h').m_hello.m_bRunning);
        EXPECT_EQ(pPanel->Of('p').m_nLost, 0u);
        EXPECT_EQ(pPanel->Of('p').m_values.size(), 3000u);
        EXPECT_EQ(pPanel->Of('p').m_values, desk.Of('p').m_values);
    }
    // Who may not command cannot.
    wall.Join(true);
    EXPECT_EQ(wall.Await('d', "", 300ms), "");
    // Silence ends the connection and its capture.
    desk.Send(FrameKind::Message, FormMessage({2, MakeStart(0, 2000, true)}));
    EXPECT_EQ(desk.Await('d', "G9"), "G9");
    const std::string strStrokes = wall.Await('p', "i");  // as many as there is time for
    EXPECT_TRUE(strStrokes.starts_with("A0Crsns") && strStrokes.ends_with("i")) << strStrokes;

    // One that vanishes leaves its will; one that takes leave says so.
    for (const int nSignal : {SIGKILL, SIGTERM}) {
        wall.Await('h', "", 100ms);
        pProgram->Signal(nSignal);
        EXPECT_EQ(pProgram->Join(), nSignal == SIGTERM ? 0 : -1);
        EXPECT_EQ(wall.Await('h', "G8"), "G8");
        CBrokerPanel late(m_strAddress, MakePassword("3"), "wall");
        EXPECT_EQ(late.Await('h', "G8"), "G8");
        if (nSignal == SIGTERM) break;
        pProgram = std::make_unique<CChildProgram>(
            Instrument({"--listen", m_strAddress, "--link-user=press", "--link-password-file",
                        MakePassword("1")}));
        EXPECT_EQ(wall.Await('h', "H"), "H");
    }
}

TEST_F(Broker, LeavesThreePanelsWithTheSameCapture) {
    CChildProgram press(
        Instrument({"--listen", m_strAddress, "--mode=3", "--value-rate=2000", "--link-user=press",
                    "--link-password-file", MakePassword("1")}));
    ASSERT_NE(press.Await("hall/press: connected"), "") << press.GetOutput();
    const auto demo = [this](const char* pszName, const char* pszUser, const char* pszPassword,
                             const char* pszOption) {
        return std::make_unique<CChildProgram>(
            Demo(m_folder, pszName, m_strAddress,
                 {pszOption, std::string("--link-user=") + pszUser,
                  "--link-password-file=" + MakePassword(pszPassword)}));
    };
    const auto pWall = demo("wall", "wall", "3", "--view");
    const auto pOther = demo("other", "wall", "3", "--view");
    for (const auto* const ppViewer : {&pWall, &pOther})
        EXPECT_NE((*ppViewer)->Await("capture      begins elsewhere"), "")
            << (*ppViewer)->GetOutput();
    const auto pDesk = demo("desk", "desk", "2", "--sample-time=1");
    for (const auto* const ppPanel : {&pDesk, &pWall, &pOther}) {
        EXPECT_NE((*ppPanel)->Await(", lost 0, old 0, damaged 0, reconnections 0"), "");
        EXPECT_EQ((*ppPanel)->Join(), 0) << (*ppPanel)->GetOutput();
    }
    for (std::size_t nChannel = 0; nChannel < 3; ++nChannel) {
        const auto values = ReadDemo(m_folder, "desk", nChannel);
        EXPECT_EQ(values.size(), 2000u);
        EXPECT_EQ(ReadDemo(m_folder, "wall", nChannel), values);
        EXPECT_EQ(ReadDemo(m_folder, "other", nChannel), values);
    }
    EXPECT_NE(ReadDemo(m_folder, "desk", 0), ReadDemo(m_folder, "desk", 1));
}

TEST_F(Broker, WithTlsIsTheOneOfItsCertificate) {
    const TlsFiles mine = MakeCertificate(m_folder, "mine", "IP:127.0.0.1");
    const TlsFiles other = MakeCertificate(m_folder, "other", "IP:127.0.0.1");
    m_folder.Put("conf", m_folder.Get("conf") + "certfile " + mine.m_strCertificate + "\nkeyfile " +
                             mine.m_strKey + "\n");
    StartBroker();
    const std::string strAddress = "mqtts" + m_strAddress.substr(4);
    const auto serve = [&](const TlsFiles& files) {
        return Instrument({"--listen", strAddress, "--value-rate=1000", "--link-user=press",
                           "--link-password-file", MakePassword("1"), "--link-ca",
                           files.m_strAuthorities});
    };
    CChildProgram stranger(serve(other));
    EXPECT_NE(stranger.Await("certificate verify failed"), "") << stranger.GetOutput();
    CChildProgram press(serve(mine));
    ASSERT_NE(press.Await("hall/press: connected"), "") << press.GetOutput();
    CChildProgram desk(Demo(m_folder, "desk", strAddress,
                            {"--sample-time=1", "--link-user=desk", "--link-password-file",
                             MakePassword("2"), "--link-ca", mine.m_strAuthorities}));
    EXPECT_NE(desk.Await("\nlink  frames "), "");
    EXPECT_EQ(desk.Join(), 0) << desk.GetOutput();
    EXPECT_EQ(ReadDemo(m_folder, "desk").size(), 1000u);
}

TEST_F(Broker, IsFoundAgain) {
    CChildProgram program(Instrument({"--listen", m_strAddress, "--link-user=press",
                                      "--link-password-file", MakePassword("1")}));
    ASSERT_NE(program.Await("hall/press: connected"), "");
    StartBroker();
    ASSERT_NE(program.Await("trying again\n" + m_strAddress + ": connected"), "");
    CBrokerPanel wall(m_strAddress, MakePassword("3"), "wall");
    EXPECT_EQ(wall.Await('h', "H"), "H");
    CBrokerPanel stranger(m_strAddress, MakePassword("4"), "wall");
    EXPECT_EQ(stranger.Await('!', "authorized"), "not authorized");
    program.Signal(SIGINT);
    EXPECT_EQ(program.Join(), 0);
}

}  // namespace
