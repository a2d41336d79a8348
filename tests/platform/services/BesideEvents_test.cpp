#include "platform/desktop/BesideEvents.h"

#include "platform/error/RunTimeError.h"
#include "support/Errors.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace qvnd::desktop {
namespace {

TEST(BesideEvents, AreServedInThisThreadUntilTheWorkHasEnded) {
    const std::thread::id here = std::this_thread::get_id();
    std::atomic<int> served = 0;
    std::thread::id worked = here;
    runBesideEvents(
        [&] {
            worked = std::this_thread::get_id();
            while (served < 3) {
                std::this_thread::yield();
            }
        },
        [&] {
            EXPECT_EQ(std::this_thread::get_id(), here);
            ++served;
        });
    EXPECT_GE(served, 3);
    EXPECT_NE(worked, here);
}

TEST(BesideEvents, ShortWorkServesNothing) {
    int served = 0;
    runBesideEvents([] {}, [&] { ++served; });
    EXPECT_EQ(served, 0);
}

TEST(BesideEvents, WhatTheWorkThrowsIsThrownHere) {
    const auto fail = [] { throw RunTimeError(error::fileNotFound, u"没有"); };
    EXPECT_EQ(test::errorNumberOf([&] { runBesideEvents(fail, [] {}); }), error::fileNotFound);
}

TEST(BesideEvents, WhatServingThrowsWaitsForTheWork) {
    std::atomic<bool> isServed = false;
    bool hasEnded = false;
    const auto work = [&] {
        while (!isServed) {
            std::this_thread::yield();
        }
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
