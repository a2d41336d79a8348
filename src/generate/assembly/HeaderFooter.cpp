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

// The fields of a row that tell one of the two stories.
struct StoryFields {
    const char16_t* wanted;
    const char16_t* font;
    const char16_t* size;
    const char16_t* text;
    const char16_t* position;
    word::SeekView story;
};

constexpr StoryFields header{u"是否带页眉", u"页眉字体", u"页眉字号",
                             u"页眉内容",   u"页眉位置", word::SeekView::currentPageHeader};
constexpr StoryFields footer{u"是否带页脚", u"页脚字体", u"页脚字号",
                             u"页脚内容",   u"页脚位置", word::SeekView::currentPageFooter};

void typeStory(GenerationRun& run, const SettingsRow& row, const StoryFields& fields) {
    bool wanted = false;
    run.attempt([&] { wanted = row.equals(fields.wanted, u"是"); });
    if (!wanted)
        return;
    const auto selection = [&]() -> word::Selection& { return run.word.selection(); };
    run.attempt([&] { selection().Font().setName(row.text(fields.font).toStdU16String()); });
    run.attempt([&] { selection().Font().setSize(row.fontSize(fields.size)); });
    run.attempt([&] { run.word.activeWindow().ActivePane().View().setSeekView(fields.story); });
    run.attempt([&] { selection().TypeText(row.text(fields.text).toStdU16String()); });
    run.attempt([&] {
        if (const auto alignment = alignmentOf(row.value(fields.position).TextOrEmpty()))
            selection().ParagraphFormat().setAlignment(*alignment);
    });
}

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

void typeHeaderAndFooter(GenerationRun& run, const SettingsRow& headerFooter) {
    if (headerFooter.opened() && !headerFooter.hasRow())
        return;
    typeStory(run, headerFooter, header);
    typeStory(run, headerFooter, footer);
}

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
