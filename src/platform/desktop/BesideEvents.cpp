#include "platform/desktop/BesideEvents.h"

#include <chrono>
#include <future>
#include <system_error>

namespace qvnd::desktop {

namespace {

constexpr std::chrono::milliseconds betweenEvents{30};

// Not valid where the system has no thread left.
std::future<void> begun(const std::function<void()>& work) {
    try {
        return std::async(std::launch::async, work);
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

// The future's destructor waits for the work also where `serve` throws.
void runBesideEvents(const std::function<void()>& work, const std::function<void()>& serve) {
    std::future<void> ended = begun(work);
    if (!ended.valid()) {
        work();
        return;
    }
    while (ended.wait_for(betweenEvents) != std::future_status::ready) {
        serve();
    }
    ended.get();
}

} // namespace qvnd::desktop
