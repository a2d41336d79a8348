#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>

namespace qvnd::jet::legacy {

// Runs `work` in a child process with limits on time and memory, and returns its result. Nothing
// when the work threw, crashed, took longer than `limit`, or wrote to standard error. Its changes
// to memory and environment stay in the child.
//
// On a system without fork the work runs in this process, and only exceptions are caught.
std::optional<QByteArray> runGuarded(const std::function<QByteArray()>& work,
                                     std::chrono::milliseconds limit);

} // namespace qvnd::jet::legacy
