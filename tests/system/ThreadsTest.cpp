#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

#include "platform/system/Threads.h"

namespace {

TEST(Threads, AWaitEndsWithTheThreadOrItsTime) {
    std::atomic<bool> bLeave{false};
    std::atomic<bool> bEnded{false};
    CThreadHandle thread = StartThread([&] {
        while (!bLeave) SleepMilliseconds(1);
        SleepMilliseconds(20);
        bEnded = true;
    });
    EXPECT_FALSE(thread.Wait(20));
    bLeave = true;
    thread.Close();
    EXPECT_TRUE(bEnded) << "a handle is closed when its thread has ended";
    EXPECT_TRUE(thread.Wait(0)) << "nothing to wait for";
    thread = StartThread([] {});
    EXPECT_TRUE(thread.Wait(10000));
}

TEST(Threads, AFairLockLetsAWaiterInBeforeItsHolderAgain) {
    CFairLock lock;
    std::atomic<bool> bWaiting{false};
    std::atomic<bool> bServed{false};
    lock.lock();
    const CThreadHandle waiter = StartThread([&] {
        bWaiting = true;
        const std::lock_guard guard(lock);
        bServed = true;
    });
    while (!bWaiting) SleepMilliseconds(1);
    SleepMilliseconds(50);
    EXPECT_FALSE(bServed);
    lock.unlock();
    lock.lock();
    EXPECT_TRUE(bServed);
    lock.unlock();
}

}  // namespace
