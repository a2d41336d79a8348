#pragma once

#include <functional>

namespace qvnd::desktop {

// Runs work that takes its time in another thread, and `serve` in this one every few hundredths of
// a second until it has ended: windows stay alive while a large file is read. Returns when the work
// has ended, and throws what it or `serve` throws. Work that ends before the first of them serves
// nothing, nor does work for which the system has no thread left: it runs in this one.
//
// The work must touch nothing that `serve` can reach.
void runBesideEvents(const std::function<void()>& work, const std::function<void()>& serve);

} // namespace qvnd::desktop
