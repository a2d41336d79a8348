#pragma once

#include <QByteArray>

#include <chrono>
#include <cstdint>
#include <functional>

namespace qvnd::jet::legacy {

// How work in a child process ended.
enum class GuardedEnd : std::uint8_t {
    whole,    // its result is there
    failed,   // it threw, crashed, or wrote to standard error: what it read is at fault
    hindered, // it could not start, ran out of time or memory, or was ended from outside: it may
              // end well another time
};

struct GuardedResult {
    GuardedEnd End = GuardedEnd::hindered;
    QByteArray Bytes{}; // of work that ended whole
};

// Runs `work` in a child process with limits on memory and, by `limit`, on time. Its changes to
// memory and environment stay in the child.
//
// On a system without fork the work runs in this process, and only exceptions are caught.
GuardedResult runGuarded(const std::function<QByteArray()>& work, std::chrono::milliseconds limit);

} // namespace qvnd::jet::legacy
