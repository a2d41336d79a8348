#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>

namespace qvnd::jet::legacy {

// Runs `work` where it can do no harm and hands over its result: in a process of its own, with
// limits on time and memory. Nothing when the work threw, crashed, took longer than `limit`, or
// wrote a complaint to standard error. What the work does to memory or the environment is not seen
// here.
//
// On a system without fork the work runs in this process, and only what it throws is caught.
std::optional<QByteArray> runGuarded(const std::function<QByteArray()>& work,
                                     std::chrono::milliseconds limit);

} // namespace qvnd::jet::legacy
