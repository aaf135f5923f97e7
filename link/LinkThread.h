// The thread of one end of the link.
#pragma once

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <functional>
#include <future>
#include <thread>

#include "link/LinkTime.h"

/// Everything of one end happens on it: transports, session or hub. Its owner's other members come
/// and go while there is a context, and no call is made on them before Start or behind End.
class CLinkThread {
  public:
    static constexpr LinkTime TICK = std::chrono::milliseconds(20);
    /// How long what is under way may take at the end.
    static constexpr LinkTime END_TIME = std::chrono::milliseconds(450);

    CLinkThread();
    ~CLinkThread();
    CLinkThread(const CLinkThread&) = delete;
    CLinkThread& operator=(const CLinkThread&) = delete;

    /// @param pName of the thread, at most 15 bytes
    /// @param onTick called every TICK
    void Start(const char* pName, std::function<void()> onTick);
    /// No tick comes any more; calls and transports that close have END_TIME.
    void End();

    asio::io_context& GetContext() { return m_context; }
    /// Has a call made on this thread. Any thread.
    void Post(std::function<void()> call);

    /// The link's time. Any thread.
    static LinkTime Now();

  private:
    void Run(const char* pName);
    void AwaitTick();

    std::function<void()> m_onTick;
    asio::io_context m_context{1};
    asio::executor_work_guard<asio::io_context::executor_type> m_work;
    asio::steady_timer m_timer;
    bool m_bEnding = false;  ///< of the thread itself
    std::promise<void> m_ended;
    std::thread m_thread;
};
