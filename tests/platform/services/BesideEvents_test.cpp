#include "platform/desktop/BesideEvents.h"

#include "platform/error/RunTimeError.h"
#include "support/Errors.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <thread>

#ifdef __GLIBC__
#include <pthread.h>
#endif

namespace qvnd::desktop {
namespace {

// Until another thread has made it so; a test whose other thread never does fails and does not
// hang.
bool waitsUntil(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isSo() && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
    return isSo();
}

TEST(BesideEvents, AreServedInThisThreadUntilTheWorkHasEnded) {
    const std::thread::id here = std::this_thread::get_id();
    std::atomic<int> served = 0;
    std::thread::id worked = here;
    runBesideEvents(
        [&] {
            worked = std::this_thread::get_id();
            waitsUntil([&] { return served >= 3; });
        },
        [&] {
            EXPECT_EQ(std::this_thread::get_id(), here);
            ++served;
        });
    EXPECT_GE(served, 3);
    EXPECT_NE(worked, here);
}

TEST(BesideEvents, ComeAfterAMomentSoThatShortWorkServesNothing) {
    std::atomic<bool> isServed = false;
    std::chrono::steady_clock::duration first{};
    const auto begun = std::chrono::steady_clock::now();
    const auto work = [&] { EXPECT_TRUE(waitsUntil([&] { return bool(isServed); })); };
    runBesideEvents(work, [&] {
        if (!isServed) {
            first = std::chrono::steady_clock::now() - begun;
        }
        isServed = true;
    });
    EXPECT_GE(first, std::chrono::milliseconds(20));
}

#ifdef __GLIBC__
// While it lives the system has no thread left: there is no room for a stack that large.
class NoThreadLeft {
public:
    NoThreadLeft() {
        pthread_getattr_default_np(&usual_);
        pthread_attr_t endless;
        pthread_attr_init(&endless);
        pthread_attr_setstacksize(&endless, std::size_t{1} << 47);
        isSet_ = pthread_setattr_default_np(&endless) == 0;
        pthread_attr_destroy(&endless);
    }
    ~NoThreadLeft() {
        pthread_setattr_default_np(&usual_);
        pthread_attr_destroy(&usual_);
    }
    NoThreadLeft(const NoThreadLeft&) = delete;
    NoThreadLeft& operator=(const NoThreadLeft&) = delete;

    bool isSet() const { return isSet_; }

private:
    pthread_attr_t usual_{};
    bool isSet_ = false;
};

TEST(BesideEvents, WithoutAThreadTheWorkRunsHereAndItsFailurePasses) {
    const NoThreadLeft none;
    ASSERT_TRUE(none.isSet());
    std::thread::id worked;
    int served = 0;
    runBesideEvents([&] { worked = std::this_thread::get_id(); }, [&] { ++served; });
    EXPECT_EQ(worked, std::this_thread::get_id());
    EXPECT_EQ(served, 0);
    const auto fail = [] { throw RunTimeError(error::fileNotFound, u"没有"); };
    EXPECT_EQ(test::errorNumberOf([&] { runBesideEvents(fail, [] {}); }), error::fileNotFound);
}
#endif

TEST(BesideEvents, WhatTheWorkThrowsIsThrownHere) {
    const auto fail = [] { throw RunTimeError(error::fileNotFound, u"没有"); };
    EXPECT_EQ(test::errorNumberOf([&] { runBesideEvents(fail, [] {}); }), error::fileNotFound);
}

TEST(BesideEvents, WhatServingThrowsWaitsForTheWork) {
    std::atomic<bool> isServed = false;
    bool hasEnded = false;
    const auto work = [&] {
        EXPECT_TRUE(waitsUntil([&] { return bool(isServed); }));
        hasEnded = true;
    };
    const auto serve = [&] {
        isServed = true;
        throw RunTimeError(error::stopped, u"停止");
    };
    EXPECT_EQ(test::errorNumberOf([&] { runBesideEvents(work, serve); }), error::stopped);
    EXPECT_TRUE(hasEnded);
}

} // namespace
} // namespace qvnd::desktop
