#include "startup/GenerationWord.h"

#include "platform/desktop/BesideEvents.h"
#include "platform/error/RunTimeError.h"

using namespace Qt::StringLiterals;

namespace qvnd::startup {

GenerationWord::GenerationWord(desktop::MessageBoxes& messages, office::OfficeSuite suite,
                               desktop::LongRun& longRun, desktop::Events& events,
                               std::function<bool()> isStopped)
    : unsaved_(messages), documents_(std::move(suite), std::move(isStopped)),
      awaited_(own_, longRun, events),
      factory_({awaited_, losses_, unsaved_, &pictures_, &documents_, nullptr,
                [&longRun, &events](const std::function<void()>& work) {
                    desktop::runBesideEvents(work, [&] {
                        events.doEvents();
                        longRun.isCancelled();
                    });
                }}) {}

void GenerationWord::Stoppable::leaveIfStopped() const {
    if (isStopped_()) {
        throw RunTimeError(error::stopped, u"生成已停止，这个文档没有转换。");
    }
}

word::Bytes GenerationWord::Stoppable::converted(const std::filesystem::path& file) {
    leaveIfStopped();
    try {
        return suite_.converted(file);
    } catch (const RunTimeError&) {
        leaveIfStopped();
        throw;
    }
}

void GenerationWord::clear() {
    losses_.clear();
    own_.clear();
}

std::optional<QString> GenerationWord::whyEstimated() const {
    if (const auto pages = own_.stoppedBehind()) {
        return u"排版在第 %1 页之后被取消，其后的页码按已排的篇幅推算。"_s.arg(*pages);
    }
    return std::nullopt;
}

GenerationWord::Awaited::Awaited(layout::LayoutPageNumbers& source, desktop::LongRun& longRun,
                                 desktop::Events& events)
    : source_(source), longRun_(longRun), events_(events) {
    source_.watch([this](int pages) { return goOn(pages); });
}

std::vector<std::u16string>
GenerationWord::Awaited::displayedPages(const word::DocumentContent& content,
                                        std::span<const word::Cp> positions) {
    events_.doEvents();
    sinceEvents_.start();
    const desktop::LongRunScope scope(longRun_, u"计算目录的页码"_s, 0);
    longRun_.next(u"正在排版……取消时，未排的页码按已排的篇幅推算。"_s);
    std::vector<std::u16string> pages = source_.displayedPages(content, positions);
    events_.doEvents();
    return pages;
}

// Served often enough for a window that moves; not behind each page, which takes less time.
bool GenerationWord::Awaited::goOn(int pages) {
    constexpr int longestSilence = 30; // milliseconds
    if (sinceEvents_.elapsed() < longestSilence) {
        return true;
    }
    longRun_.next(u"已排 %1 页……取消时，未排的页码按已排的篇幅推算。"_s.arg(pages));
    events_.doEvents();
    sinceEvents_.start();
    return !longRun_.isCancelled();
}

} // namespace qvnd::startup
