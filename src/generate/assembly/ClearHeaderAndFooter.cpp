#include "generate/assembly/HeaderFooter.h"

namespace qvnd::generate {

namespace {

constexpr int reachOfClearing = 5000;

word::View& activeView(const GenerationRun& run) {
    return run.word.activeWindow().ActivePane().View();
}

void showPageView(GenerationRun& run) {
    run.attempt([&] {
        if (run.word.activeWindow().View().SplitSpecial() != 0)
            run.word.activeWindow().Panes(2).Close();
    });
    run.attempt([&] {
        const word::ViewType type = activeView(run).Type();
        if (type == word::ViewType::normal || type == word::ViewType::outline ||
            type == word::ViewType::master)
            activeView(run).setType(word::ViewType::page);
    });
}

void clearStory(GenerationRun& run, word::SeekView story) {
    run.attempt([&] { activeView(run).setSeekView(story); });
    run.attempt([&] { run.word.selection().Delete(reachOfClearing); });
}

} // namespace

void clearHeaderAndFooter(GenerationRun& run) {
    showPageView(run);
    clearStory(run, word::SeekView::currentPageHeader);
    auto other = word::SeekView::currentPageFooter;
    run.attempt([&] {
        if (!run.word.selection().HeaderFooter().IsHeader())
            other = word::SeekView::currentPageHeader;
    });
    clearStory(run, other);
}

} // namespace qvnd::generate
