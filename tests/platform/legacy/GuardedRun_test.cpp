#include "platform/jet/legacy/GuardedRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace qvnd::jet::legacy;
using namespace std::chrono_literals;

namespace {

GuardedResult runFor10s(const std::function<QByteArray()>& work) { return runGuarded(work, 10s); }

// How much of a resource the work may take within a limit of time.
QByteArray mostOf(int resource, std::chrono::milliseconds limit) {
    return runGuarded(
               [resource] {
                   rlimit most{};
                   getrlimit(resource, &most);
                   return QByteArray::number(static_cast<qulonglong>(most.rlim_cur));
               },
               limit)
        .Bytes;
}

// Lets a standard stream lead into or out of a pipe, of which `other` is the other end.
class Redirected {
public:
    explicit Redirected(int stream) : stream_(stream), before_(dup(stream)) {
        int ends[2];
        if (pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0) {
            std::abort();
        }
        const bool isInput = stream == STDIN_FILENO;
        dup2(ends[isInput ? 0 : 1], stream);
        close(ends[isInput ? 0 : 1]);
        other = ends[isInput ? 1 : 0];
    }
    ~Redirected() {
        dup2(before_, stream_);
        close(before_);
        close(other);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;

    int other = -1;

private:
    int stream_;
    int before_;
};

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

TEST(GuardedRuns, TheWorkHasASecondOfTheProcessorMoreThanItsWholeSecondsAndLeavesNoCoreBehind) {
    EXPECT_EQ(mostOf(RLIMIT_CPU, 10s), "11");
    EXPECT_EQ(mostOf(RLIMIT_CPU, 3999ms), "4");
    EXPECT_EQ(mostOf(RLIMIT_CPU, 4000ms), "5");
    EXPECT_EQ(mostOf(RLIMIT_CORE, 10s), "0");
}

#ifndef __SANITIZE_ADDRESS__
TEST(GuardedRuns, TheWorkHasTwoGigabytesOfMemory) {
    EXPECT_EQ(mostOf(RLIMIT_AS, 10s), QByteArray::number(qulonglong{2} << 30));
}
#endif

TEST(GuardedRuns, ASignalThatThisProgramPassesOverEndsTheWork) {
    const std::vector<std::pair<int, GuardedEnd>> ends{
        {SIGSEGV, GuardedEnd::failed},   {SIGBUS, GuardedEnd::failed},
        {SIGFPE, GuardedEnd::failed},    {SIGILL, GuardedEnd::failed},
        {SIGPIPE, GuardedEnd::hindered}, {SIGTERM, GuardedEnd::hindered}};
    for (const auto& [signal, end] : ends) {
        const auto before = std::signal(signal, SIG_IGN);
        EXPECT_EQ(runFor10s([number = signal]() -> QByteArray {
                      std::raise(number);
                      return "went on";
                  }).End,
                  end)
            << signal;
        std::signal(signal, before);
    }
}

TEST(GuardedRuns, TheWorkReadsNothingFromTheStandardInputAndNothingItPrintsIsSeen) {
    char byte = 'x';
    {
        const Redirected input(STDIN_FILENO);
        ASSERT_EQ(write(input.other, &byte, 1), 1);
        EXPECT_EQ(runFor10s([&] {
                      return QByteArray::number(qlonglong{read(STDIN_FILENO, &byte, 1)});
                  }).Bytes,
                  "0");
    }
    const Redirected output(STDOUT_FILENO);
    EXPECT_EQ(runFor10s([&] {
                  return QByteArray::number(qlonglong{write(STDOUT_FILENO, &byte, 1)});
              }).Bytes,
              "1");
    EXPECT_LT(read(output.other, &byte, 1), 0);
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
