#include "host/StrokeJudge.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include "evaluation/StrokeReport.h"
#include "platform/system/Exceptions.h"
#include "plugin/RealTimeData.h"

namespace {

/// Sample time of the screen's curves before its first Start, in seconds.
constexpr unsigned FIRST_SAMPLE_SECONDS = 3;

constexpr const char* OUT_OF_MEMORY = "out of memory";

/// As 2026-01-31T12:00:00.000Z.
std::string FormatTime(std::chrono::system_clock::time_point at) {
    using namespace std::chrono;
    const auto milliseconds = floor<std::chrono::milliseconds>(at);
    const auto day = floor<days>(milliseconds);
    const year_month_day date(day);
    const hh_mm_ss time(milliseconds - day);
    char szText[64];
    std::snprintf(szText, sizeof szText, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int{date.year()},
                  unsigned{date.month()}, unsigned{date.day()},
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()),
                  static_cast<int>(time.subseconds().count()));
    return szText;
}

/// What an error says behind the file's name, on one line.
std::wstring FindReason(const CException& error) {
    std::wstring strText = error.GetErrorMessage();
    // The last break stands before the reason; others are a name's own.
    strText.erase(0, strText.rfind(L'\n') + 1);
    return strText;
}

StrokeVerdict MakeUnknown(std::string strReason) {
    StrokeVerdict verdict;
    verdict.m_strReason = std::move(strReason);
    verdict.m_outcome = Outcome::Cannot;
    return verdict;
}

}  // namespace

/// Goes to the screen ahead of a packet, and means nothing to it: the screen lets go of it when it
/// takes the packet.
class CStrokeJudge::CForerunner final : public RTPacket {
  public:
    CForerunner(CStrokeJudge& judge, std::shared_ptr<RTPacket> spPacket) : m_judge(judge) {
        m_order.push_back({{}, std::move(spPacket), {}});
    }
    CForerunner(const CForerunner&) = delete;
    CForerunner& operator=(const CForerunner&) = delete;
    ~CForerunner() { m_judge.OnTaken(m_order); }

  private:
    CStrokeJudge& m_judge;
    std::list<Order> m_order;  ///< one, to be handed over without memory
};

std::string JudgedStroke::Write(const Limits& limits) const {
    return WriteVerdict({std::nullopt, m_nChannel, m_nNumber, m_strAt}, *m_verdict, limits);
}

CStrokeJudge::CStrokeJudge(const Limits& limits, std::size_t nChannel,
                           std::unique_ptr<CVerdictLog> pLog, std::function<void()> onNews)
    : m_limits(limits), m_nChannel(nChannel), m_onNews(std::move(onNews)), m_pLog(std::move(pLog)),
      m_nSampleSeconds(FIRST_SAMPLE_SECONDS),
      // Whatever became of the file: the screen has cleared its curves first.
      m_fileListener([this](const FileEvent& event) {
          if (event.m_work == FileWork::Load) Post([this] { m_collector->Drop(); });
      }) {}

CStrokeJudge::~CStrokeJudge() { Finish(); }

void CStrokeJudge::Begin(CRealTimeData& session, const ValueLayout& layout) {
    m_collector.emplace(layout, m_nChannel,
                        [this](CStrokeCollector::Stroke stroke) { OnStroke(std::move(stroke)); });
    {
        const std::lock_guard lock(m_mutex);
        m_pSession = &session;
    }
    m_thread = std::thread([this] { Run(); });
}

void CStrokeJudge::Pass(std::shared_ptr<RTPacket> spPacket, RTPacketQueue& queue) {
    auto spForerunner = std::make_shared<CForerunner>(*this, spPacket);
    const std::lock_guard lock(m_passMutex);
    queue.push(std::move(spForerunner));
    queue.push(std::move(spPacket));
}

/// The screen is about to work on the packet: what it has in hand now, it had before that.
void CStrokeJudge::OnTaken(std::list<Order>& order) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_bEnding || !m_pSession) return;
        {
            const std::lock_guard sessionLock(m_pSession->m_lock);
            const auto& lstCurves = m_pSession->m_spCurves->m_lstCurves[m_nChannel];
            order.front().m_screen = {!lstCurves.empty(), m_pSession->m_nValueRate};
        }
        m_orders.splice(m_orders.end(), order);
    }
    m_wake.notify_one();
}

void CStrokeJudge::OnMessage(std::string_view image) {
    const auto command = ReadCommand(image);
    if (!command) return;
    if (const auto* const pRequest = std::get_if<CaptureRequest>(&*command))
        Post([this, request = *pRequest] { Start(request); });
    else if (std::holds_alternative<StopRequest>(*command))
        Post([this] { m_collector->Stop(); });
}

void CStrokeJudge::Finish() {
    {
        const std::lock_guard lock(m_mutex);
        m_bEnding = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable()) m_thread.join();
    const std::lock_guard lock(m_mutex);
    m_pSession = nullptr;
}

JudgeNews CStrokeJudge::TakeNews() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

void CStrokeJudge::Post(std::function<void()> work) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_bEnding) return;
        m_orders.push_back({std::move(work), nullptr, {}});
    }
    m_wake.notify_one();
}

void CStrokeJudge::Run() {
    for (;;) {
        std::list<Order> orders;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_bEnding || !m_orders.empty(); });
            if (m_orders.empty()) return;
            orders.swap(m_orders);
        }
        for (const Order& order : orders) {
            try {
                if (order.m_spPacket)
                    Take(*order.m_spPacket, order.m_screen);
                else
                    order.m_work();
            } catch (const std::exception&) {
                EnterLostStroke();
            }
        }
    }
}

/// There was no memory to collect a stroke in.
void CStrokeJudge::EnterLostStroke() {
    try {
        m_collector->Drop();
        Enter({}, MakeUnknown(OUT_OF_MEMORY));
    } catch (const std::exception&) {
        TraceDebug(L"Stroke not judged: no memory to say so");
    }
}

void CStrokeJudge::Start(const CaptureRequest& request) {
    m_nSampleSeconds = request.m_nSampleMilliseconds / 1000;
    m_collector->Start(request.m_bContinuous, MakeRoom(request.m_nValueRate));
}

void CStrokeJudge::Take(const RTPacket& packet, const ScreenCurves& screen) {
    // The screen tells nobody that an operator has cleared it in the midst of a capture that the
    // instrument has begun by itself.
    if (!screen.m_bAny) m_collector->Drop();

    const PacketPayload payload = GetPayload(packet);
    if (FindMeaning(packet.m_nType, payload) == PacketMeaning::CaptureStarted)
        if (const unsigned nMilliseconds = GetStartedSampleTime(payload))
            m_nSampleSeconds = (nMilliseconds + 999) / 1000;
    m_collector->Take(packet, MakeRoom(screen.m_nValueRate));
}

void CStrokeJudge::OnStroke(CStrokeCollector::Stroke stroke) {
    JudgedStroke judged;
    judged.m_spCurve = std::move(stroke.m_spCurve);
    judged.m_nValueRate = stroke.m_nValueRate;
    if (stroke.m_bCutOff) {
        Publish(std::move(judged));
        return;
    }
    try {
        StrokeVerdict verdict =
            JudgeStroke(CStroke(*judged.m_spCurve, judged.m_nValueRate), m_limits);
        Enter(std::move(judged), std::move(verdict));
    } catch (const std::bad_alloc&) {
        Enter({}, MakeUnknown(OUT_OF_MEMORY));
    }
}

/// Whoever shows the verdict need not wait for the disk.
void CStrokeJudge::Enter(JudgedStroke stroke, StrokeVerdict verdict) {
    stroke.m_nNumber = ++m_nJudged;
    stroke.m_nChannel = m_nChannel + 1;
    stroke.m_strAt = FormatTime(std::chrono::system_clock::now());
    stroke.m_verdict = std::move(verdict);
    const std::string strLine = m_pLog ? stroke.Write(m_limits) : std::string();
    Publish(std::move(stroke));
    if (m_pLog) WriteToLog(strLine);
}

void CStrokeJudge::Publish(JudgedStroke stroke) {
    {
        const std::lock_guard lock(m_mutex);
        m_news.m_strokes.push_back(std::move(stroke));
    }
    m_onNews();
}

void CStrokeJudge::WriteToLog(const std::string& strLine) {
    try {
        m_pLog->Append(strLine);
    } catch (const CException& error) {
        if (std::exchange(m_bLogFailed, true)) return;
        {
            const std::lock_guard lock(m_mutex);
            m_news.m_strLogError = FindReason(error);
        }
        m_onNews();
    }
}
