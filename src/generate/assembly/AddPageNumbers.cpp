#include "generate/assembly/HeaderFooter.h"

namespace qvnd::generate {

namespace {

void setNumbering(GenerationRun& run) {
    const auto numbers = [&]() -> word::PageNumbers& {
        return run.word.selection().Sections(1).Headers(1).PageNumbers();
    };
    run.attempt([&] { numbers().setNumberStyle(0); });
    run.attempt([&] { numbers().setHeadingLevelForChapter(0); });
    run.attempt([&] { numbers().setIncludeChapterNumber(false); });
    run.attempt([&] { numbers().setChapterPageSeparator(0); });
    run.attempt([&] { numbers().setRestartNumberingAtSection(true); });
    run.attempt([&] { numbers().setStartingNumber(0); });
}

} // namespace

void addPageNumbers(GenerationRun& run, const SettingsRow& headerFooter) {
    auto alignment = word::PageNumberAlignment::center;
    if (headerFooter.hasRow())
        run.attempt([&] {
            if (headerFooter.equals(u"页脚位置", u"中"))
                alignment = word::PageNumberAlignment::right;
        });
    setNumbering(run);
    run.attempt(
        [&] { run.word.selection().Sections(1).Footers(1).PageNumbers().Add(alignment, false); });
}

} // namespace qvnd::generate
