// Judges the strokes of the panel's captures while they come in.
#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "evaluation/Verdict.h"
#include "host/StrokeCollector.h"
#include "host/VerdictLog.h"
#include "instrument/InstrumentCommand.h"
#include "platform/system/FileEvents.h"

struct CRealTimeData;

/// A stroke that is over.
struct JudgedStroke {
    std::uint64_t m_nNumber = 0;  ///< of those judged since the start, from 1; cut off: 0
    std::size_t m_nChannel = 0;   ///< from 1
    std::string m_strAt;          ///< when it was over, in UTC
    std::shared_ptr<const RTCurveData> m_spCurve;  ///< null: there was no memory for it
    unsigned m_nValueRate = 0;
    std::optional<StrokeVerdict> m_verdict;  ///< none: it was cut off

    /// The line that is written of it.
    std::string Write(const Limits& limits) const;
};

/// What has come of strokes since it was asked last.
struct JudgeNews {
    std::vector<JudgedStroke> m_strokes;
    std::wstring m_strLogError;  ///< why the log has missed a stroke, told once; empty: no news
};

/// Takes the values from the packets that go to the screen, each when the screen comes to it, and
/// judges each stroke as soon as it is over, in order, on a thread of its own: neither packets nor
/// screen wait for it.
///
/// Threads: Pass may be called on any; everything else belongs to the user-interface thread.
///
/// Ownership: must outlive what it has passed on.
class CStrokeJudge {
  public:
    /// @param limits must outlive the judge
    /// @param nChannel from 0
    /// @param pLog gets a line for each stroke that is judged; null: there is none
    /// @param onNews called on the judge's thread when there is something to be taken
    CStrokeJudge(const Limits& limits, std::size_t nChannel, std::unique_ptr<CVerdictLog> pLog,
                 std::function<void()> onNews);
    /// As Finish.
    ~CStrokeJudge();

    /// Begins with what has been passed on before. To be called once, when the screen is there that
    /// the packets go to.
    /// @param session of the screen; must live until Finish
    /// @param layout of its mode; has the channel
    void Begin(CRealTimeData& session, const ValueLayout& layout);

    /// Passes a packet on to the screen, and looks into it when the screen takes it.
    void Pass(std::shared_ptr<RTPacket> spPacket, RTPacketQueue& queue);
    /// The screen sends a message image, which the instrument has not got yet.
    void OnMessage(std::string_view image);

    /// Ends the work, since the screen has closed: judges what is over by now. What is not is cut
    /// off, and what comes later is not looked at.
    void Finish();

    /// Hands over what there is, the oldest stroke first.
    JudgeNews TakeNews();

  private:
    /// What the screen has in hand when it comes to a packet.
    struct ScreenCurves {
        bool m_bAny = false;  ///< of the channel
        unsigned m_nValueRate = 0;
    };
    /// A packet that the screen takes, or other work.
    struct Order {
        std::function<void()> m_work;
        std::shared_ptr<RTPacket> m_spPacket;
        ScreenCurves m_screen;
    };
    class CForerunner;

    void OnTaken(std::list<Order>& order);
    void Post(std::function<void()> work);
    void Run();
    void EnterLostStroke();

    void Start(const CaptureRequest& request);
    void Take(const RTPacket& packet, const ScreenCurves& screen);
    CurveRoom MakeRoom(unsigned nRate) const { return {m_nSampleSeconds * nRate, nRate}; }
    void OnStroke(CStrokeCollector::Stroke stroke);
    void Enter(JudgedStroke stroke, StrokeVerdict verdict);
    void Publish(JudgedStroke stroke);
    void WriteToLog(const std::string& strLine);

    const Limits& m_limits;
    const std::size_t m_nChannel;
    const std::function<void()> m_onNews;

    // Of the judge's thread.
    std::optional<CStrokeCollector> m_collector;  ///< none before Begin
    const std::unique_ptr<CVerdictLog> m_pLog;
    unsigned m_nSampleSeconds;  ///< by which the screen makes its curves
    std::uint64_t m_nJudged = 0;
    bool m_bLogFailed = false;

    std::mutex m_passMutex;  ///< lets nothing come between a packet and its forerunner
    std::mutex m_mutex;
    std::condition_variable m_wake;
    // Guarded by m_mutex.
    std::list<Order> m_orders;
    bool m_bEnding = false;
    JudgeNews m_news;
    CRealTimeData* m_pSession = nullptr;

    const CFileListener m_fileListener;
    std::thread m_thread;
};
