#include "generate/assembly/HeaderFooter.h"

#include "generate/assembly/TextAlignment.h"

namespace qvnd::generate {

namespace {

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

} // namespace

void typeHeaderAndFooter(GenerationRun& run, const SettingsRow& headerFooter) {
    if (headerFooter.opened() && !headerFooter.hasRow())
        return;
    typeStory(run, headerFooter, header);
    typeStory(run, headerFooter, footer);
}

} // namespace qvnd::generate
