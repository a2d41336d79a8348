#include "platform/jet/legacy/GuardedRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <thread>

using namespace qvnd::jet::legacy;
using namespace std::chrono_literals;

namespace {

TEST(GuardedRuns, TheResultComesBackWholeAlsoWhenItIsLong) {
    EXPECT_EQ(runGuarded([] { return QByteArray("x"); }, 10s), QByteArray("x"));
    EXPECT_EQ(runGuarded([] { return QByteArray(); }, 10s), QByteArray());
    const QByteArray many(5 << 20, 'y');
    EXPECT_EQ(runGuarded([&] { return QByteArray(many); }, 10s), many);
}

TEST(GuardedRuns, WhatTheWorkChangesIsNotSeenHere) {
    int count = 0;
    EXPECT_TRUE(runGuarded([&] { return QByteArray::number(++count); }, 10s) == "1");
    EXPECT_EQ(count, 0);
}

TEST(GuardedRuns, ACrashGivesNothing) {
    EXPECT_FALSE(runGuarded(
        []() -> QByteArray {
            std::raise(SIGSEGV);
            return "not reached";
        },
        10s));
    EXPECT_FALSE(runGuarded([]() -> QByteArray { std::abort(); }, 10s));
}

TEST(GuardedRuns, AnExceptionGivesNothing) {
    EXPECT_FALSE(runGuarded([]() -> QByteArray { throw std::runtime_error("x"); }, 10s));
    EXPECT_FALSE(runGuarded([]() -> QByteArray { throw 1; }, 10s));
}

TEST(GuardedRuns, AnEarlyExitGivesNothing) {
    EXPECT_FALSE(runGuarded([]() -> QByteArray { std::_Exit(0); }, 10s));
}

TEST(GuardedRuns, AComplaintOnStandardErrorGivesNothing) {
    EXPECT_FALSE(runGuarded(
        [] {
            std::fputs("warning\n", stderr);
            return QByteArray("x");
        },
        10s));
    EXPECT_TRUE(runGuarded(
        [] {
            std::puts("chatter");
            return QByteArray("x");
        },
        10s));
}

TEST(GuardedRuns, WorkThatDoesNotEndIsEnded) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(runGuarded(
        []() -> QByteArray {
            for (;;) {
                std::this_thread::sleep_for(1s);
            }
        },
        300ms));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

} // namespace
