#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

#include "platform/Threads.h"

namespace {

TEST(Threads, AWaitEndsWithTheThreadOrItsTime) {
    std::atomic<bool> bLeave{false};
    CThreadHandle thread = StartThread([&] {
        while (!bLeave) SleepMilliseconds(1);
    });
    ASSERT_TRUE(thread);
    EXPECT_FALSE(thread.Wait(20));
    bLeave = true;
    EXPECT_TRUE(thread.Wait(10000));
    thread.Close();
    EXPECT_FALSE(thread);
    EXPECT_TRUE(thread.Wait(0)) << "nothing to wait for";
}

TEST(Threads, ClosingAHandleWaitsForTheEnd) {
    std::atomic<bool> bEnded{false};
    {
        const CThreadHandle thread = StartThread([&] {
            SleepMilliseconds(20);
            bEnded = true;
        });
    }
    EXPECT_TRUE(bEnded);
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
    lock.unlock();
    lock.lock();
    EXPECT_TRUE(bServed);
    lock.unlock();
}

}  // namespace
