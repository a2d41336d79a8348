#include "platform/jet/legacy/GuardedRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <new>
#include <stdexcept>
#include <sys/resource.h>
#include <thread>

using namespace qvnd::jet::legacy;
using namespace std::chrono_literals;

namespace {

GuardedResult runFor10s(const std::function<QByteArray()>& work) { return runGuarded(work, 10s); }

TEST(GuardedRuns, TheResultComesBackWholeAlsoWhenItIsLong) {
    EXPECT_EQ(runFor10s([] { return QByteArray("x"); }).Bytes, "x");
    EXPECT_EQ(runFor10s([] { return QByteArray(); }).End, GuardedEnd::whole);
    const QByteArray many(5 << 20, 'y');
    EXPECT_EQ(runFor10s([&] { return QByteArray(many); }).Bytes, many);
}

TEST(GuardedRuns, WhatTheWorkChangesIsNotSeenHere) {
    int count = 0;
    EXPECT_EQ(runFor10s([&] { return QByteArray::number(++count); }).Bytes, "1");
    EXPECT_EQ(count, 0);
}

TEST(GuardedRuns, ACrashIsAFailure) {
    EXPECT_EQ(runFor10s([]() -> QByteArray {
                  std::raise(SIGSEGV);
                  return "not reached";
              }).End,
              GuardedEnd::failed);
    EXPECT_EQ(runFor10s([]() -> QByteArray { std::abort(); }).End, GuardedEnd::failed);
}

TEST(GuardedRuns, AnExceptionIsAFailure) {
    EXPECT_EQ(runFor10s([]() -> QByteArray { throw std::runtime_error("x"); }).End,
              GuardedEnd::failed);
    EXPECT_EQ(runFor10s([]() -> QByteArray { throw 1; }).End, GuardedEnd::failed);
}

TEST(GuardedRuns, AnEarlyExitIsAFailure) {
    EXPECT_EQ(runFor10s([]() -> QByteArray { std::_Exit(0); }).End, GuardedEnd::failed);
}

TEST(GuardedRuns, AComplaintOnStandardErrorIsAFailure) {
    EXPECT_EQ(runFor10s([] {
                  std::fputs("warning\n", stderr);
                  return QByteArray("x");
              }).End,
              GuardedEnd::failed);
    EXPECT_EQ(runFor10s([] {
                  std::puts("chatter");
                  return QByteArray("x");
              }).End,
              GuardedEnd::whole);
}

TEST(GuardedRuns, WorkThatDoesNotEndIsEndedAndCountsAsHindered) {
    const auto start = std::chrono::steady_clock::now();
    const auto endless = []() -> QByteArray {
        for (;;) {
            std::this_thread::sleep_for(1s);
        }
    };
    EXPECT_EQ(runGuarded(endless, 300ms).End, GuardedEnd::hindered);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

TEST(GuardedRuns, WantOfMemoryIsNoFailureOfTheWork) {
    EXPECT_EQ(runFor10s([]() -> QByteArray { throw std::bad_alloc(); }).End, GuardedEnd::hindered);
}

TEST(GuardedRuns, AnEndFromOutsideIsNoFailureOfTheWork) {
    for (const int signal : {SIGKILL, SIGTERM, SIGXCPU}) {
        EXPECT_EQ(runFor10s([&]() -> QByteArray {
                      std::raise(signal);
                      return "not reached";
                  }).End,
                  GuardedEnd::hindered)
            << signal;
    }
}

TEST(GuardedRuns, WithoutRoomForAProcessNothingIsRunAndTheWorkHasNotFailed) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{3, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const GuardedEnd end = runFor10s([] { return QByteArray("x"); }).End;
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(end, GuardedEnd::hindered);
}

} // namespace
