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

std::string JudgedStroke::Write(const Limits& limits) const {
    return WriteVerdict({std::nullopt, m_nChannel, m_nNumber, m_strAt}, *m_verdict, limits);
}

CStrokeJudge::CStrokeJudge(const Limits& limits, const ValueLayout& layout, std::size_t nChannel,
                           std::unique_ptr<CVerdictLog> pLog, std::function<void()> onNews)
    : m_limits(limits), m_nChannel(nChannel), m_onNews(std::move(onNews)),
      m_collector(layout, nChannel,
                  [this](CStrokeCollector::Stroke stroke) { OnStroke(std::move(stroke)); }),
      m_pLog(std::move(pLog)), m_nSampleSeconds(FIRST_SAMPLE_SECONDS),
      // Whatever became of the file: the screen has cleared its curves first.
      m_fileListener([this](const FileEvent& event) {
          if (event.m_work == FileWork::Load) Post([this] { m_collector.Drop(); });
      }),
      m_thread([this] { Run(); }) {}

CStrokeJudge::~CStrokeJudge() { Finish(); }

void CStrokeJudge::OnPacket(std::shared_ptr<RTPacket> spPacket) {
    Post([this, spPacket = std::move(spPacket)] { Take(*spPacket); });
}

void CStrokeJudge::OnMessage(std::string_view image) {
    const auto command = ReadCommand(image);
    if (!command) return;
    if (const auto* const pRequest = std::get_if<CaptureRequest>(&*command))
        Post([this, request = *pRequest] { Start(request); });
    else if (std::holds_alternative<StopRequest>(*command))
        Post([this] { m_collector.Stop(); });
}

void CStrokeJudge::Finish() {
    if (!m_thread.joinable()) return;
    Post([this] { m_collector.Drop(); });
    {
        const std::lock_guard lock(m_mutex);
        m_bEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

JudgeNews CStrokeJudge::TakeNews() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

void CStrokeJudge::Post(Order order) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_bEnding) return;
        m_orders.push_back(std::move(order));
    }
    m_wake.notify_one();
}

void CStrokeJudge::Run() {
    for (;;) {
        std::vector<Order> orders;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_bEnding || !m_orders.empty(); });
            if (m_orders.empty()) return;
            orders.swap(m_orders);
        }
        m_nOrdersInHand = orders.size();
        for (const Order& order : orders) {
            --m_nOrdersInHand;
            try {
                order();
            } catch (const std::exception&) {
                EnterLostStroke();
            }
        }
    }
}

/// There was no memory to collect a stroke in.
void CStrokeJudge::EnterLostStroke() {
    try {
        m_collector.Drop();
        Enter({}, MakeUnknown(OUT_OF_MEMORY));
    } catch (const std::exception&) {
        TraceDebug(L"Stroke not judged: no memory to say so");
    }
}

/// Whether nothing has come since what is being done.
bool CStrokeJudge::HasCaughtUp() {
    const std::lock_guard lock(m_mutex);
    return m_nOrdersInHand == 0 && m_orders.empty();
}

void CStrokeJudge::Start(const CaptureRequest& request) {
    m_nSampleSeconds = request.m_nSampleMilliseconds / 1000;
    m_nScreenRate = request.m_nValueRate;
    m_bScreenHasCurves = true;
    m_collector.Start(request.m_bContinuous, MakeRoom());
}

void CStrokeJudge::Take(const RTPacket& packet) {
    LookAtScreen();
    const PacketPayload payload = GetPayload(packet);
    const PacketMeaning meaning = FindMeaning(packet.m_nType, payload);
    if (meaning == PacketMeaning::CaptureStarted)
        if (const unsigned nMilliseconds = GetStartedSampleTime(payload))
            m_nSampleSeconds = (nMilliseconds + 999) / 1000;
    // The screen begins its curve when it comes to this packet.
    if (meaning == PacketMeaning::CaptureStarted || meaning == PacketMeaning::NewCurve)
        m_bScreenHasCurves = false;
    m_collector.Take(packet, MakeRoom());
}

/// The screen tells nobody when an operator clears it in the midst of a capture that the instrument
/// has begun by itself: it is then seen to have no curves.
void CStrokeJudge::LookAtScreen() {
    bool bHasCurves;
    {
        const std::lock_guard lock(m_pSession->m_lock);
        m_nScreenRate = m_pSession->m_nValueRate;
        bHasCurves = !m_pSession->m_spCurves->m_lstCurves[m_nChannel].empty();
    }
    if (bHasCurves)
        m_bScreenHasCurves = true;
    else if (m_bScreenHasCurves && HasCaughtUp())
        m_collector.Drop();
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
