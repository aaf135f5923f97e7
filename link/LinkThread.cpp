#include "link/LinkThread.h"

#include <asio/post.hpp>
#include <cstdio>

#include "platform/system/Threads.h"

CLinkThread::CLinkThread() : m_work(asio::make_work_guard(m_context)), m_timer(m_context) {}

CLinkThread::~CLinkThread() { End(); }

void CLinkThread::Start(const char* pName, std::function<void()> onTick) {
    m_onTick = std::move(onTick);
    m_thread = std::thread([this, pName] { Run(pName); });
}

void CLinkThread::End() {
    if (!m_thread.joinable()) return;
    Post([this] {
        m_bEnding = true;
        m_timer.cancel();
        m_work.reset();
    });
    m_ended.get_future().wait_for(END_TIME);
    m_context.stop();
    m_thread.join();
}

void CLinkThread::Post(std::function<void()> call) { asio::post(m_context, std::move(call)); }

LinkTime CLinkThread::Now() { return std::chrono::steady_clock::now().time_since_epoch(); }

void CLinkThread::Run(const char* pName) {
    NameThread(pName);
    AwaitTick();
    for (;;) {
        try {
            m_context.run();
            return m_ended.set_value();
        } catch (const std::exception& error) {
            // What was at work goes silent, and its times bring it to an end.
            std::fprintf(stderr, "link  %s\n", error.what());
        }
    }
}

void CLinkThread::AwaitTick() {
    m_timer.expires_after(TICK);
    m_timer.async_wait([this](const asio::error_code&) {
        if (m_bEnding) return;
        AwaitTick();
        m_onTick();
    });
}
