#include "platform/desktop/BesideEvents.h"

#include <chrono>
#include <future>

namespace qvnd::desktop {

namespace {

constexpr std::chrono::milliseconds betweenEvents{30};

} // namespace

// The future's destructor waits for the work also where `serve` throws.
void runBesideEvents(const std::function<void()>& work, const std::function<void()>& serve) {
    std::future<void> ended = std::async(std::launch::async, work);
    while (ended.wait_for(betweenEvents) != std::future_status::ready) {
        serve();
    }
    ended.get();
}

} // namespace qvnd::desktop
