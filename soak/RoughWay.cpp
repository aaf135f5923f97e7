#include "soak/RoughWay.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr unsigned STEP_MS = 5;
constexpr std::size_t ROOM = 65536;  ///< for bytes on their way, in each direction
/// Within which a connection with damaged bytes ends: a frame may be that long under way.
constexpr std::uint64_t DAMAGE_MS = 6000;

sockaddr_in MakeAddress(std::uint16_t nPort) {
    return {AF_INET, htons(nPort), {htonl(INADDR_LOOPBACK)}, {}};
}

int MakeSocket() { return ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0); }

/// One end of a line. @param strAddress gets the other's
int MakeTerminal(std::string& strAddress) {
    const int hFile = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (hFile < 0 || ::grantpt(hFile) != 0 || ::unlockpt(hFile) != 0)
        throw std::runtime_error("no pseudo-terminal");
    strAddress = std::string("serial:") + ::ptsname(hFile) + "?baud=921600";
    return hFile;
}

}  // namespace

struct CRoughWay::Connection {
    ~Connection() {
        for (const int hSide : m_aSides) ::close(hSide);
    }
    /// Lets the end be a reset.
    void Reset() {
        const linger none{1, 0};
        for (const int hSide : m_aSides)
            ::setsockopt(hSide, SOL_SOCKET, SO_LINGER, &none, sizeof none);
    }

    std::array<int, 2> m_aSides;
    std::array<std::vector<std::uint8_t>, 2> m_aBytes{};  ///< from a side to the other
    std::array<bool, 2> m_abEnded{};                      ///< nothing more comes from a side
    std::array<bool, 2> m_abTold{};                       ///< and the other one knows
    std::uint64_t m_nDamaged = 0;                         ///< when; 0: all bytes are right
    bool m_bOver = false;
};

struct CRoughWay::Weather {
    const char* m_pName;
    unsigned m_nWeight;
    unsigned m_nMost;  ///< milliseconds
    bool m_bOnLine = true;
    std::array<bool, 2> m_abHeldUp{};
    std::size_t m_nBytesPerStep = ROOM;
    bool m_bRefuses = false;
    void (*m_pBegin)(CRoughWay&) = nullptr;
    void (*m_pEnd)(CRoughWay&) = nullptr;
};

using Self = CRoughWay;

constinit const CRoughWay::Weather CRoughWay::WEATHERS[] = {
    {"way: fair", 14, 9000},
    {"way: damage", 6, 2000, true, {}, ROOM, false, [](Self& way) { way.m_bDamages = true; }},
    {"way: instrument's bytes held up", 3, 8000, true, {false, true}},
    {"way: panel's bytes held up", 3, 8000, true, {true, false}},
    {"way: all held up", 3, 8000, true, {true, true}},
    {"way: slow", 3, 4000, true, {}, 100},
    {"way: refused", 2, 2500, false, {}, ROOM, true},
    {"way: cut", 4, 1500, false, {}, ROOM, false, [](Self& way) { way.m_connections.clear(); }},
    {"way: reset",
     3,
     1500,
     false,
     {},
     ROOM,
     false,
     [](Self& way) {
         for (const auto& pConnection : way.m_connections) pConnection->Reset();
         way.m_connections.clear();
     }},
    {"way: instrument away",
     2,
     2500,
     false,
     {},
     ROOM,
     false,
     [](Self& way) { way.m_restart(false); },
     [](Self& way) { way.m_nInstrumentPort = way.m_restart(true); }},
};

CRoughWay::CRoughWay(WayKind kind, std::uint32_t nSeed, CSoakRecord& record)
    : m_bLine(kind == WayKind::Line), m_random(nSeed), m_record(record), m_pWeather(WEATHERS) {
    if (m_bLine)
        MakeLine();
    else
        MakeListener(kind == WayKind::Tls ? "tls" : "tcp");
}

CRoughWay::~CRoughWay() {
    Close();
    if (m_hListener >= 0) ::close(m_hListener);
}

void CRoughWay::Close() {
    m_bStop = true;
    m_thread.Close();
}

void CRoughWay::MakeListener(const std::string& strScheme) {
    m_strInstrumentAddress = strScheme + "://127.0.0.1:0";
    m_hListener = MakeSocket();
    sockaddr_in address = MakeAddress(0);
    socklen_t nLength = sizeof address;
    if (::bind(m_hListener, reinterpret_cast<sockaddr*>(&address), nLength) != 0 ||
        ::listen(m_hListener, 8) != 0 ||
        ::getsockname(m_hListener, reinterpret_cast<sockaddr*>(&address), &nLength) != 0)
        throw std::runtime_error("no port for the way to the instrument");
    m_strPanelAddress = strScheme + "://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

void CRoughWay::MakeLine() {
    auto pConnection = std::make_unique<Connection>();
    pConnection->m_aSides = {MakeTerminal(m_strPanelAddress), MakeTerminal(m_strInstrumentAddress)};
    m_connections.push_back(std::move(pConnection));
}

void CRoughWay::Open(std::uint16_t nPort, Restart restart) {
    m_nInstrumentPort = nPort;
    m_restart = std::move(restart);
    m_thread = StartThread([this] { Run(); });
}

void CRoughWay::Run() {
    BlockPipeSignal();
    for (; !m_bStop; SleepMilliseconds(STEP_MS)) {
        m_nNow = TickMilliseconds();
        ChangeWeather();
        if (!m_bLine) Accept();
        bool bAllGone = true;
        for (const auto& pConnection : m_connections) {
            for (const Side from : {PANEL, INSTRUMENT}) {
                Pass(*pConnection, from);
                bAllGone = bAllGone && pConnection->m_aBytes[from].empty();
            }
            CheckDamaged(*pConnection);
        }
        if (!m_bLine)
            std::erase_if(m_connections, [](const auto& pConnection) {
                return pConnection->m_bOver ||
                       (pConnection->m_abTold[PANEL] && pConnection->m_abTold[INSTRUMENT]);
            });
        if (m_pWeather != WEATHERS || !bAllGone)
            m_nFairSince = 0;
        else if (m_nFairSince == 0)
            m_nFairSince = m_nNow;
    }
}

void CRoughWay::ChangeWeather() {
    const bool bRough = m_bRough;
    if (bRough ? m_nNow < m_nWeatherEnd : m_pWeather == WEATHERS) return;
    if (m_pWeather->m_pEnd) m_pWeather->m_pEnd(*this);
    m_bDamages = false;
    m_pWeather = WEATHERS;
    if (!bRough) return;
    unsigned nWeights = 0;
    for (const Weather& weather : WEATHERS) nWeights += weather.m_nWeight;
    for (unsigned n = Pick(nWeights); n >= m_pWeather->m_nWeight; ++m_pWeather)
        n -= m_pWeather->m_nWeight;
    if (m_bLine && !m_pWeather->m_bOnLine) m_pWeather = WEATHERS + 1;  // damage
    m_record.Count(m_pWeather->m_pName);
    m_nWeatherEnd = m_nNow + 100 + Pick(m_pWeather->m_nMost);
    if (m_pWeather->m_pBegin) m_pWeather->m_pBegin(*this);
}

void CRoughWay::Accept() {
    for (int hPanel;
         (hPanel = ::accept4(m_hListener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC)) >= 0;) {
        auto pConnection = std::make_unique<Connection>();
        pConnection->m_aSides = {hPanel, MakeSocket()};
        const sockaddr_in address = MakeAddress(m_nInstrumentPort);
        const auto* const pAddress = reinterpret_cast<const sockaddr*>(&address);
        m_record.Count("connections");
        if (m_pWeather->m_bRefuses) continue;
        if (::connect(pConnection->m_aSides[INSTRUMENT], pAddress, sizeof address) == 0 ||
            errno == EINPROGRESS)
            m_connections.push_back(std::move(pConnection));
    }
}

void CRoughWay::Pass(Connection& connection, Side from) {
    const int hFrom = connection.m_aSides[from];
    const int hTo = connection.m_aSides[1 - from];
    std::vector<std::uint8_t>& bytes = connection.m_aBytes[from];
    const auto isForLater = [] { return errno == EAGAIN || errno == ENOTCONN; };
    if (const std::size_t nBefore = bytes.size(); !connection.m_abEnded[from] && nBefore < ROOM) {
        bytes.resize(ROOM);
        const auto nRead = ::read(hFrom, bytes.data() + nBefore, ROOM - nBefore);
        bytes.resize(nBefore + static_cast<std::size_t>(std::max<ssize_t>(nRead, 0)));
        if (nRead == 0) connection.m_abEnded[from] = true;
        if (nRead < 0 && !isForLater()) connection.m_bOver = true;
    }
    if (m_pWeather->m_abHeldUp[from]) return;
    if (m_bDamages && !bytes.empty() && Pick(8) == 0) {
        Damage(bytes);
        m_bDamages = m_bLine;  // a stream does not live to see another
        connection.m_nDamaged = m_nNow;
        m_record.Count(from == PANEL ? "damages, to the instrument" : "damages, to the panel");
    }
    if (!bytes.empty()) {
        const auto nSent =
            ::write(hTo, bytes.data(), std::min(bytes.size(), m_pWeather->m_nBytesPerStep));
        if (nSent > 0) bytes.erase(bytes.begin(), bytes.begin() + nSent);
        if (nSent > 0 && from == INSTRUMENT) m_nLastToPanel = m_nNow;
        if (nSent < 0 && !isForLater()) connection.m_bOver = true;
    }
    if (connection.m_abEnded[from] && bytes.empty() && !connection.m_abTold[from]) {
        ::shutdown(hTo, SHUT_WR);
        connection.m_abTold[from] = true;
    }
}

void CRoughWay::Damage(std::vector<std::uint8_t>& bytes) {
    const std::ptrdiff_t nAt = Pick(bytes.size());
    if (!m_bLine || Pick(3) == 0) {
        bytes[static_cast<std::size_t>(nAt)] ^= static_cast<std::uint8_t>(1 << Pick(8));
    } else if (Pick(2) == 0) {
        const std::ptrdiff_t nLost = 1 + Pick(60);
        bytes.erase(bytes.begin() + nAt, bytes.begin() + std::min(nAt + nLost, std::ssize(bytes)));
    } else {
        for (unsigned n = 1 + Pick(60); n > 0; --n)
            bytes.insert(bytes.begin() + nAt, static_cast<std::uint8_t>(Pick(256)));
    }
}

/// No stream stays with what is damaged. In bad weather the end of it may be under way for long.
void CRoughWay::CheckDamaged(const Connection& connection) {
    const std::uint64_t nSince = std::max<std::uint64_t>(m_nFairSince, connection.m_nDamaged);
    if (!m_bLine && connection.m_nDamaged != 0 && m_nFairSince != 0 &&
        m_nNow - nSince > DAMAGE_MS && !connection.m_abEnded[0] && !connection.m_abEnded[1])
        m_record.Fault("a connection outlives damaged bytes");
}
