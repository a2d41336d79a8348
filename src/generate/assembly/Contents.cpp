#include "generate/assembly/Contents.h"

#include <optional>

namespace qvnd::generate {

namespace {

std::optional<word::TabLeader> leaderOf(QStringView style) {
    if (style == u"无")
        return word::TabLeader::spaces;
    if (style == u"轻虚线")
        return word::TabLeader::dots;
    if (style == u"断连线")
        return word::TabLeader::dashes;
    if (style == u"连连线")
        return word::TabLeader::lines;
    if (style == u"重虚线")
        return word::TabLeader::heavy;
    return std::nullopt;
}

} // namespace

void typeContentsHeading(GenerationRun& run) {
    const auto selection = [&]() -> word::Selection& { return run.word.selection(); };
    run.attempt([&] { selection().ParagraphFormat().setAlignment(word::Alignment::center); });
    run.attempt([&] { selection().Font().setSize(16); });
    run.attempt([&] { selection().Font().setBold(true); });
    run.attempt([&] { selection().TypeText(u"目录"); });
}

void addContentsTable(GenerationRun& run, const SettingsRow& headerFooter) {
    if (headerFooter.opened() && !headerFooter.hasRow())
        return;
    word::TableOfContentsOptions options;
    options.RightAlignPageNumbers = false;
    options.IncludePageNumbers = false;
    run.attempt([&] { options.RightAlignPageNumbers = headerFooter.equals(u"是否右对齐", u"是"); });
    run.attempt([&] { options.IncludePageNumbers = headerFooter.equals(u"是否显示页码", u"是"); });
    run.attempt([&] {
        options.LowerHeadingLevel = headerFooter.whole(u"显示级别");
        run.word.activeDocument().tablesOfContents().Add(run.word.selection().Range(), options);
    });
    run.attempt([&] {
        if (const auto leader = leaderOf(headerFooter.value(u"制表样式").TextOrEmpty()))
            run.word.activeDocument().tablesOfContents().Item(1).setTabLeader(*leader);
    });
}

} // namespace qvnd::generate
