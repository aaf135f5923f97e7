// rtpanel demonstrating instruments on a link with nobody there: what it says and leaves when they
// are not as they should be.
#include <gtest/gtest.h>

#include <numeric>

#include "tests/link/HandInstrument.h"
#include "tests/link/PanelBench.h"
#include "tests/link/WirePanel.h"
#include "tests/service/Service.h"

namespace {

/// The values from a number on, as far as before another.
std::vector<std::int16_t> Count(int nFirst, int nEnd) {
    std::vector<std::int16_t> values(static_cast<std::size_t>(nEnd - nFirst));
    std::iota(values.begin(), values.end(), static_cast<std::int16_t>(nFirst));
    return values;
}

class LinkedDemo : public ::testing::Test {
  protected:
    /// Lets the panel have a capture of one second, 500 pairs, and takes its start.
    void TakeStart(AckResult result = AckResult::Taken) {
        Hello hello = CHandInstrument::MakeHello();
        hello.m_nValueRate = 1000;
        m_instrument.TakePanel(hello);
        m_instrument.Live();
        const auto message = ReadMessage(m_instrument.Read(FrameKind::Message));
        ASSERT_TRUE(message);
        m_instrument.Send(FrameKind::Ack, FormAck({message->m_nNumber, result}));
    }
    void SendPacket(char ch) { m_instrument.Send(FrameKind::Packet, MakePacketOf(ch)); }
    void SendValues(int nFirst, int nEnd) {
        Bytes samples = {0, 0, static_cast<std::uint8_t>((nEnd - nFirst) / 256),
                         static_cast<std::uint8_t>((nEnd - nFirst) % 256)};
        for (const std::int16_t nValue : Count(nFirst, nEnd)) {
            samples.push_back(static_cast<std::uint8_t>(nValue & 0xFF));
            samples.push_back(static_cast<std::uint8_t>(nValue >> 8));
        }
        m_instrument.Send(FrameKind::Packet, FormPacket({RTPACKET_SAMPLES, samples}));
    }
    std::vector<std::string> OneSecond(const char* pszName) {
        m_folder.Put("limits", R"({"format": "rt3-limits", "version": 1, "objects": [
            {"name": "peak", "kind": "feature", "feature": "peak_force", "max": 900}]})");
        return Demo(m_folder, pszName, m_instrument.GetAddress(),
                    {"--sample-time=1", "--limits=" + (m_folder.GetPath() / "limits").native()});
    }
    bool HasVerdict() const {
        return std::filesystem::exists(m_folder.GetPath() / "out/verdict.json");
    }
    /// Of a program that is to end with an error, in its own line.
    static void ExpectError(CChildProgram& program, const std::string& strError) {
        EXPECT_NE(program.Await("rtpanel: "), "") << program.GetOutput();
        program.Await("\nlink  frames ");
        EXPECT_NE(program.GetOutput().find("\nrtpanel: " + strError), std::string::npos)
            << program.GetOutput();
        EXPECT_EQ(program.Join(), 1);
    }

    const TemporaryFolder m_folder;
    CHandInstrument m_instrument;
};

TEST_F(LinkedDemo, WaitsTenSecondsForAnInstrumentAndForNoneThatRefuses) {
    const auto begin = std::chrono::steady_clock::now();
    CChildProgram silent(OneSecond("silent"));
    CChildProgram press(Instrument({"--listen=tcp://127.0.0.1:0", "--name=press 3"}));
    const std::uint16_t nPort = ReadPort(press, "tcp://127.0.0.1:");
    CWirePanel desk(nPort);
    ASSERT_EQ(desk.Join(true).Await("H"), "H");
    const std::string strPress = "tcp://127.0.0.1:" + std::to_string(nPort);
    const auto asked = std::chrono::steady_clock::now();
    CChildProgram refused(Demo(m_folder, "refused", strPress));
    ExpectError(refused, strPress + " is commanded by \"desk\".");
    EXPECT_LT(std::chrono::steady_clock::now() - asked, 10s);
    ExpectError(silent, m_instrument.GetAddress() + ": no answer.");
    EXPECT_GT(std::chrono::steady_clock::now() - begin, 9s);
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "silent/capture.rt3"));
}

TEST_F(LinkedDemo, SavesWhatALostConnectionHasLeft) {
    CChildProgram program(OneSecond("out"));
    TakeStart();
    SendPacket('r');
    SendValues(0, 300);
    m_instrument.Leave();
    ExpectError(program, "Connection lost (closed by the other side), capture cut short.");
    EXPECT_EQ(ReadDemo(m_folder, "out"), Count(0, 300));
    EXPECT_FALSE(HasVerdict());
}

TEST_F(LinkedDemo, SavesWhatAGapHasLeft) {
    CChildProgram program(OneSecond("out"));
    TakeStart();
    SendPacket('r');
    SendValues(0, 500);
    m_instrument.LoseFrames(2);
    // As many as the curve has room for.
    SendValues(500, 1000);
    SendPacket('i');
    ExpectError(program, "press 3 (no. 0042), 2 packets lost in this capture");
    EXPECT_EQ(ReadDemo(m_folder, "out"), Count(0, 1000));
}

TEST_F(LinkedDemo, SaysThatTheInstrumentDidNotBegin) {
    CChildProgram program(OneSecond("out"));
    TakeStart(AckResult::Impossible);
    ExpectError(program, "press 3 (no. 0042), connected; The instrument cannot do this now.");
}

TEST_F(LinkedDemo, OfAViewerTakesTheCaptureThatOthersBegin) {
    Hello hello = CHandInstrument::MakeHello();
    hello.m_nMode = 0;
    hello.m_nValueRate = 1000;
    hello.m_bCommands = false;
    for (const std::string strName : {"whole", "gap"}) {
        CChildProgram program(Demo(m_folder, strName, m_instrument.GetAddress(), {"--view"}));
        m_instrument.TakePanel(hello);
        m_instrument.Live();
        EXPECT_NE(program.Await("capture      begins elsewhere"), "") << program.GetOutput();
        // What is lost before it is not missing in it.
        m_instrument.LoseFrames(1);
        Bytes announcement(41);
        announcement[0] = RTCMD_CAPTURE;
        announcement[7] = 8;  // 2,048 ms
        m_instrument.Send(FrameKind::Packet, FormPacket({RTPACKET_CONTROL, announcement}),
                          FRAMEFLAG_FOR_VIEWERS);
        SendPacket('r');
        SendValues(0, 700);
        if (strName == "gap") m_instrument.LoseFrames(1);
        SendPacket('i');
        if (strName == "gap") {
            ExpectError(program, "press 3 (no. 0042), 1 packet lost in this capture");
        } else {
            EXPECT_NE(program.Await("700 of 3000 values"), "") << program.GetOutput();
            EXPECT_NE(program.Await("\nlink  frames "), "");
            EXPECT_EQ(program.Join(), 0) << program.GetOutput();
        }
        EXPECT_EQ(ReadDemo(m_folder, strName), Count(0, 700));
    }
}

TEST_F(LinkedDemo, SaysThatALineIsTooSlowAndGoesOn) {
    const CPseudoTerminal terminal;
    CChildProgram program(Demo(m_folder, "out", "serial:" + terminal.GetDevice() + "?baud=9600",
                               {"--sample-time=1"}));
    CFrameReader reader(LinkManner::Line, MAX_PAYLOAD_TO_INSTRUMENT);
    const auto nCapture = [&]() -> std::uint32_t {
        for (int n = 0; n < 2000; ++n, std::this_thread::sleep_for(5ms)) {
            Bytes bytes(1000);
            const auto nRead = ::read(terminal.m_hFile, bytes.data(), bytes.size());
            if (nRead > 0) reader.Add(std::span(bytes).first(static_cast<std::size_t>(nRead)), {});
            while (const auto frame = reader.Read()) {
                if (frame->m_kind == FrameKind::Message) return 1;
                if (frame->m_kind != FrameKind::Join) continue;
                Hello hello = CHandInstrument::MakeHello();  // two channels of 10,000 values
                hello.m_nMode = 12;
                hello.m_nAttempt = ReadJoin(frame->m_payload).value_or(Join()).m_nAttempt;
                const Bytes answer = MakeBytes(FrameKind::Hello, 0, FormHello(hello));
                EXPECT_GT(::write(terminal.m_hFile, answer.data(), answer.size()), 0);
            }
        }
        return 0;
    }();
    EXPECT_EQ(nCapture, 1u) << "no start has come";
    EXPECT_EQ(program.Await("link  " + terminal.GetDevice() + ": "),
              "the values need 40000 bytes a second, the line carries 960\n");
}

}  // namespace
