// rtinstrument and the reference instrument as a person starts them, with panels on real
// transports.
#include <gtest/gtest.h>

#include <cmath>
#include <fcntl.h>

#include "tests/link/Transports.h"
#include "tests/link/WirePanel.h"
#include "tests/service/Service.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(Instrument, ServesCapturesToACommanderAndViewers) {
    CChildProgram program(
        Instrument({"--listen", "tcp://127.0.0.1:0", "--listen=tcp://[::1]:0", "--mode=3",
                    "--value-rate=2000", "--aux-rate=5", "--device-24v=6", "--second-input=voltage",
                    "--name=press 3", "--serial-number=0042", "--max-panels=2"}));
    const std::uint16_t nPort = ReadPort(program, "listening    tcp://127.0.0.1:");
    EXPECT_NE(ReadPort(program, "listening    tcp://[::1]:"), nPort);
    CWirePanel desk(nPort);
    ASSERT_EQ(desk.Join(true).Await("H"), "H");
    const std::uint32_t nToken = desk.m_hello.m_nToken;
    EXPECT_NE(nToken, 0u);
    EXPECT_EQ(desk.m_hello,
              (Hello{1, 3, 0, true, false, false, 2000, 5, 6, nToken, 1, "press 3", "0042"}));
    CWirePanel wall(nPort);
    EXPECT_EQ(wall.Join(false, 8).Await("H"), "H");
    EXPECT_EQ(CWirePanel(nPort).Join(false, 9).Await("x"), "R3x");

    // Half a second of three channels; the one who commands passes over the announcement.
    EXPECT_EQ(desk.Message(1, MakeStart(500, 2000)).Await("i"), "A0Crsi");
    EXPECT_EQ(wall.Await("i"), "Crsi");
    EXPECT_EQ(desk.m_values.size(), 3000u);
    EXPECT_EQ(wall.m_values, desk.m_values);
    EXPECT_EQ(wall.m_started, (std::vector<unsigned>{500, 2000}));
    // A new start in the midst of a capture: what was before stands in front of the answer.
    EXPECT_EQ(desk.Message(2, MakeStart(3000, 2000, true)).Await("s"), "A0Crs");
    EXPECT_TRUE(desk.Message(3, MakeStart(100, 2000)).Await("i").ends_with("A0Crsi"));
    EXPECT_EQ(desk.m_values.size(), 600u);
    EXPECT_EQ(desk.Message(4, MakeStart(100, 2001)).Message(5, Bytes{39}).Await("A1"), "A4A1");
    desk.Message(6, MakeStart(0, 2000, true)).Await("s");
    EXPECT_TRUE(desk.Message(7, STOP).Await("i").ends_with("i"));
    // The capture of one who goes away ends.
    desk.Message(8, MakeStart(0, 2000, true)).Await("s");
    wall.Await("", 100ms);
    { const CWirePanel gone = std::move(desk); }
    EXPECT_TRUE(wall.Await("i").ends_with("i"));
    for (const char* pText : {") commands", ") views", ") gone: "})
        EXPECT_NE(program.Await(pText), "") << program.GetOutput();

    const auto begin = std::chrono::steady_clock::now();
    program.Signal(SIGTERM);
    EXPECT_TRUE(wall.Await("x").ends_with("G8x"));
    EXPECT_EQ(program.Join(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
}

TEST(Instrument, BeginsByItselfWhenTheFirstPanelHasCome) {
    CChildProgram program(
        Instrument({"--listen=tcp://localhost:0", "--capture-locked", "--value-rate=1000"}));
    const std::uint16_t nPort = ReadPort(program, "listening    tcp://localhost:");
    CWirePanel first(nPort);
    EXPECT_EQ(first.Join(true).Await("s"), "Hcrs");
    EXPECT_TRUE(first.m_hello.m_bLocked);
    EXPECT_EQ(first.m_started, (std::vector<unsigned>{3000, 1000}));
    EXPECT_TRUE(first.Message(1, STOP).Await("A3").ends_with("A3"));
    Bytes pass(44);
    pass[0] = 39;
    pass[2] = 41;
    pass[3] = 3;
    EXPECT_TRUE(first.Message(2, pass).Await("A0").ends_with("A0"));
    // It goes on without anybody.
    { const CWirePanel gone = std::move(first); }
    CWirePanel second(nPort);
    EXPECT_EQ(second.Join(false, 8).Await("n"), "Hsn");
    program.Signal(SIGINT);
    EXPECT_TRUE(second.Await("x").ends_with("G8x"));
    EXPECT_EQ(program.Join(), 0);
}

TEST(Instrument, EndsInTimeThoughNobodyReadsWhatItSaysOrSends) {
    const TemporaryFolder folder;
    folder.PutPipe("pipe");
    const std::string strPipe = folder.GetPath() / "pipe";
    const int nPipe = ::open(strPipe.c_str(), O_RDWR | O_NONBLOCK);
    const Bytes filling(4096);
    while (::write(nPipe, filling.data(), filling.size()) > 0) continue;
    asio::io_context context;
    const std::uint16_t nPort = MakeAcceptor(context).local_endpoint().port();
    std::vector<std::string> arguments = Instrument(
        {"--listen=tcp://127.0.0.1:" + std::to_string(nPort), "--mode=3", "--value-rate=65535"});
    arguments.insert(arguments.begin(), {"sh", "-c", "exec \"$0\" \"$@\" >" + strPipe});
    CChildProgram program(arguments);
    std::vector<CWirePanel> panels;
    const auto soon = std::chrono::steady_clock::now() + 5s;
    while (panels.empty() && std::chrono::steady_clock::now() < soon)
        if (CWirePanel desk(nPort, true); desk.Join(true).Await("H") == "H")
            panels.push_back(std::move(desk));
    ASSERT_FALSE(panels.empty());
    for (std::uint32_t n = 0; n < 7; ++n)
        EXPECT_EQ(panels.emplace_back(nPort, true).Join(false, 20 + n).Await("H"), "H");
    panels[0].Message(1, MakeStart(0, 65535, true));
    std::this_thread::sleep_for(2s);

    const auto begin = std::chrono::steady_clock::now();
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Join(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    ::close(nPipe);
}

TEST(Instrument, SaysWhatItCannotDo) {
    const TemporaryFolder folder;
    CChildProgram running(Instrument({"--listen=tcp://127.0.0.1:0"}));
    const std::string strTaken =
        "tcp://127.0.0.1:" + std::to_string(ReadPort(running, "tcp://127.0.0.1:"));
    const std::tuple<std::vector<std::string>, int, std::string> cases[] = {
        {{}, 2, "--listen ADDRESS is missing"},
        {{"--listen=tcp:/a"}, 2, "'tcp:/a': an address begins with"},
        {{"--listen=tcp://0.0.0.0:0"}, 2, "use tls://, or say --insecure"},
        {{"--listen=tcp://[::]:0"}, 2, "use tls://, or say --insecure"},
        {{"--listen=tls://localhost:0"}, 2, "tls:// needs --cert FILE"},
        {{"--listen", strTaken, "--key=a"}, 2, "--key needs --listen tls://"},
        {{"--listen", strTaken, "--max-panels=9"}, 2, "--max-panels: '9' is not"},
        {{"--listen", strTaken, "--replay-rate=9"}, 2, "--replay-rate needs --replay FILE"},
        {{"--listen", strTaken, "--name", std::string(65, 'a')}, 2, "more than 64 bytes"},
        {{"--listen", strTaken, "--replay=none.csv"}, 1, "none.csv: "},
        {{"--listen", strTaken}, 1, strTaken + ": "},
        {{"--listen=serial:/dev/none"}, 1, "serial:/dev/none: "},
        {{"--listen=tls://127.0.0.1:0", "--cert=none.pem", "--key=none.pem"}, 1, "none.pem: "},
    };
    for (const auto& [arguments, nCode, strError] : cases) {
        CChildProgram program(Instrument(arguments));
        EXPECT_NE(program.Await(strError), "") << program.GetOutput();
        EXPECT_EQ(program.Join(), nCode) << strError;
    }
    std::vector<std::string> five(5, "--listen=tcp://127.0.0.1:0");
    EXPECT_NE(CChildProgram(Instrument(five)).Await("more than four"), "x");
    EXPECT_NE(CChildProgram(Instrument({"--listen=tcp://0.0.0.0:0", "--insecure"}))
                  .Await("listening    tcp://0.0.0.0:"),
              "");
}

TEST(Instrument, SaysThatALineIsTooSlowAndGoesOn) {
    for (const bool bEnough : {false, true}) {
        const CPseudoTerminal terminal;
        const std::string strBaud = bEnough ? "?baud=2400000" : "?baud=2399990";
        // Three channels of 40,000 values.
        CChildProgram program(
            Instrument({"--listen=serial:" + terminal.GetDevice() + strBaud, "--mode=3"}));
        EXPECT_NE(program.Await("listening    serial:"), "") << program.GetOutput();
        EXPECT_EQ(program.GetOutput().starts_with(
                      "rtinstrument: " + terminal.GetDevice() +
                      ": the values need 240000 bytes a second, the line carries 239999\n"),
                  !bEnough)
            << program.GetOutput();
    }
}

/// A capture of the reference instrument: 1,000 values a second of a wave, line 1 above 1000.
void CheckReference(CWirePanel& desk) {
    ASSERT_EQ(desk.Join(true).Await("H"), "H");
    EXPECT_EQ(desk.m_hello.m_nValueRate, 1000);
    EXPECT_EQ(desk.Message(1, MakeStart(2000, 999)).Message(2, Bytes(44)).Await("A1"), "A4A1");
    EXPECT_EQ(desk.Message(3, MakeStart(2000, 1000)).Message(3).Await("i"), "A0rA0si");
    ASSERT_EQ(desk.m_values.size(), 2000u);
    for (std::size_t n = 0; n < 2000; ++n)
        ASSERT_NEAR(desk.m_values[n], 1900 - 1900 * std::cos(n * M_PI / 500), 1) << n;
    std::string strLines = desk.m_strLines;
    strLines.erase(std::unique(strLines.begin(), strLines.end()), strLines.end());
    EXPECT_EQ(strLines, "01010");
    EXPECT_TRUE(desk.Message(4, MakeStart(0, 1000, true)).Await("s").ends_with("s"));
    EXPECT_TRUE(desk.Message(5, STOP).Await("i").ends_with("i"));
    EXPECT_EQ(desk.m_nLost, 0u);
}

TEST(ReferenceInstrument, ServesOnePanelOverTcp) {
    CChildProgram program({RT_PYTHON, RT_SOURCES "/docs/reference_instrument.py", "0"});
    const std::uint16_t nPort = ReadPort(program, "listening ");
    CWirePanel desk(nPort);
    CheckReference(desk);
    EXPECT_EQ(CWirePanel(nPort).Join(true, 8).Await("x"), "R3x");
    EXPECT_EQ(desk.Message(7).Await("x"), "G5x");
    // The next one.
    EXPECT_EQ(CWirePanel(nPort).Join(true).Join(true).Await("x"), "HG5x");
    EXPECT_EQ(CWirePanel(nPort).Write(Bytes(30, 'a')).Await("x"), "x");
    CWirePanel silent(nPort);
    EXPECT_EQ(silent.Join(true).Await("x"), "HKKG9x");
}

TEST(ReferenceInstrument, ServesThePanel) {
    const TemporaryFolder folder;
    CChildProgram program({RT_PYTHON, RT_SOURCES "/docs/reference_instrument.py", "0"});
    const std::string strPort = std::to_string(ReadPort(program, "listening "));
    CChildProgram panel(Demo(folder, "out", "tcp://127.0.0.1:" + strPort, {"--sample-time=2"}));
    EXPECT_NE(panel.Await(", lost 0, old 0, damaged 0, reconnections 0"), "");
    EXPECT_EQ(panel.Join(), 0) << panel.GetOutput();
    const auto values = ReadDemo(folder, "out");
    ASSERT_EQ(values.size(), 2000u);
    for (std::size_t n = 0; n < 2000; ++n)
        ASSERT_NEAR(values[n], 1900 - 1900 * std::cos(n * M_PI / 500), 1) << n;
}

TEST(ReferenceInstrument, ServesALine) {
    const int nHandle = ::posix_openpt(O_RDWR | O_NOCTTY);
    ::grantpt(nHandle);
    ::unlockpt(nHandle);
    const std::string strDevice = ::ptsname(nHandle);
    CWirePanel desk = CWirePanel::On(nHandle);
    CChildProgram program({RT_PYTHON, RT_SOURCES "/docs/reference_instrument.py", strDevice});
    // Until the program is there, the system echoes what is written.
    EXPECT_NE(program.Await("serving "), "");
    desk.Write(Bytes{0xA5, 'R', 'T', 'Z', 0xA5}).Send(FrameKind::KeepAlive);
    EXPECT_EQ(desk.Await("R4"), "R4");
    CheckReference(desk);
    desk.Join(true).Write(Bytes(5, 'x'));
    EXPECT_EQ(desk.Await("H"), "H");
    EXPECT_EQ(desk.Message(1, STOP).Await("i"), "A0i");
}

}  // namespace
