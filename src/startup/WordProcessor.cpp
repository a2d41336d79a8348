#include "startup/WordProcessor.h"

#include "platform/desktop/BesideEvents.h"
#include "platform/error/RunTimeError.h"

#include <chrono>

namespace qvnd::startup {

namespace {

constexpr std::chrono::milliseconds betweenQuestions{30};

// What is asked whether to stop serves the desktop meanwhile.
word::LongWork askingNowAndThen(const office::OfficeSuite::Stop& stop) {
    if (!stop) {
        return nullptr;
    }
    return [stop](const std::function<void()>& work) {
        desktop::runBesideEvents(work, [&] { stop(); });
    };
}

// A document whose contents would get other page numbers than its own is not written.
layout::LayoutPageNumbers::EachPage askingAtPages(const office::OfficeSuite::Stop& stop) {
    using Clock = std::chrono::steady_clock;
    return [stop, asked = Clock::time_point()](int /*pages*/) mutable {
        if (Clock::now() - asked < betweenQuestions) {
            return true;
        }
        if (stop()) {
            throw RunTimeError(error::invalidCall, u"排版已停止，文档没有保存。");
        }
        asked = Clock::now();
        return true;
    };
}

} // namespace

WordProcessor::WordProcessor(desktop::MessageBoxes& messages, const office::OfficeSuite::Stop& stop)
    : losses_(messages), unsaved_(messages),
      suite_(officeProfile_.path(), office::OfficeSuite::installedProgram(), stop),
      engine_(
          {pages_, losses_, unsaved_, &pictures_, &documents_, nullptr, askingNowAndThen(stop)}),
      factory_(engine_, suite_) {
    if (stop) {
        pages_.watch(askingAtPages(stop));
    }
}

} // namespace qvnd::startup
