#include "platform/drawing/FontFaces.h"
#include "support/Text.h"
#include "tools/GenerateOptions.h"
#include "tools/TerminalProgress.h"
#include "tools/UsageError.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace Qt::StringLiterals;
using namespace qvnd::tools;

TEST(GenerateOptions, ThePlanAloneLeavesEverySwitchAsTheProgramStarts) {
    const GenerateOptions options({u" 新楼 "_s});
    EXPECT_EQ(options.plan, u"新楼"_s);
    EXPECT_FALSE(options.switches.gMultLevelOn);
    EXPECT_EQ(options.switches.gMultLevelMode, 0);
    EXPECT_FALSE(options.switches.gBlankLineAroundTitle);
    EXPECT_FALSE(options.switches.gChildDocAsNumber);
    EXPECT_EQ(options.childStyle, QString());
    EXPECT_EQ(options.childIndent, u"2"_s);
    EXPECT_EQ(options.pages, PageSource::automatic);
    EXPECT_EQ(options.fonts, qvnd::drawing::FontChoice::named);
}

TEST(GenerateOptions, EveryOptionReachesItsSwitch) {
    const GenerateOptions options({u"新楼"_s, u"--blank-lines"_s, u"--multilevel"_s, u"2"_s,
                                   u"--multilevel-text"_s, u"第章"_s, u"--children-numbered"_s,
                                   u"a)"_s, u"--indent"_s, u"4"_s, u"--pages"_s, u"estimate"_s,
                                   u"--fonts"_s, u"here"_s});
    EXPECT_EQ(options.fonts, qvnd::drawing::FontChoice::here);
    EXPECT_TRUE(options.switches.gBlankLineAroundTitle);
    EXPECT_TRUE(options.switches.gMultLevelOn);
    EXPECT_EQ(options.switches.gMultLevelMode, 2);
    EXPECT_EQ(options.switches.gMultLevelText, u"第章"_s);
    EXPECT_TRUE(options.switches.gChildDocAsNumber);
    EXPECT_EQ(options.childStyle, u"a)"_s);
    EXPECT_EQ(options.childIndent, u"4"_s);
    EXPECT_EQ(options.pages, PageSource::layout);
}

TEST(GenerateOptions, FontsAreThoseThatDocumentsNameOrThoseHere) {
    EXPECT_THROW(GenerateOptions({u"新楼"_s, u"--fonts"_s, u"there"_s}), UsageError);
}

TEST(GenerateOptions, TheTextOfModeTwoIsThatOfTheDialogUnlessOneIsGiven) {
    const auto textOf = [](const QStringList& options) {
        return GenerateOptions(QStringList{u"新楼"_s, u"--multilevel"_s} + options)
            .switches.gMultLevelText;
    };
    EXPECT_EQ(textOf({u"2"_s}), u"第章"_s);
    EXPECT_EQ(textOf({u"2"_s, u"--multilevel-text"_s, u"卷"_s}), u"卷"_s);
    EXPECT_EQ(textOf({u"2"_s, u"--multilevel-text"_s, QString()}), QString());
    EXPECT_EQ(textOf({u"1"_s}), QString());
}

TEST(GenerateOptions, ChildrenCanBeNumberedWithNothingPicked) {
    const GenerateOptions options({u"新楼"_s, u"--children-numbered"_s, QString()});
    EXPECT_TRUE(options.switches.gChildDocAsNumber);
    EXPECT_EQ(options.childStyle, QString());
}

TEST(GenerateOptions, TheFirstRunOfAWindowIsAskedFor) {
    EXPECT_FALSE(GenerateOptions({u"新楼"_s}).isFirstRun);
    EXPECT_TRUE(GenerateOptions({u"新楼"_s, u"--first-run"_s}).isFirstRun);
}

TEST(GenerateOptions, ValuesOutsideTheirRangeAreWrongUsage) {
    const QList<QStringList> wrong{{u"--multilevel"_s, u"3"_s},
                                   {u"--multilevel"_s, u"-1"_s},
                                   {u"--multilevel"_s, u"x"_s},
                                   {u"--children-numbered"_s, u"(1)"_s},
                                   {u"--indent"_s, u"101"_s},
                                   {u"--pages"_s, u"guess"_s},
                                   {u"第二个方案"_s}};
    for (const QStringList& words : wrong)
        EXPECT_THROW(GenerateOptions(QStringList{u"新楼"_s} + words), UsageError)
            << words.join(u' ').toStdString();
    EXPECT_THROW(GenerateOptions{QStringList()}, UsageError);
}

TEST(TerminalProgress, DrawsBarPercentageAndLabelOverItself) {
    std::ostringstream terminal;
    TerminalProgress progress(terminal);
    progress.show();
    progress.setProgress(0.5);
    terminal.str({});
    progress.setLabel(u"正在设置封面..."_s);
    EXPECT_EQ(terminal.str(), "\r\x1b[K[###############...............]  50% 正在设置封面...");
}

TEST(TerminalProgress, AHiddenBarIsWipedAndDrawsNothing) {
    std::ostringstream terminal;
    TerminalProgress progress(terminal);
    progress.show();
    terminal.str({});
    progress.hide();
    progress.setProgress(0.7);
    EXPECT_EQ(terminal.str(), "\r\x1b[K");
    terminal.str({});
    progress.show();
    EXPECT_EQ(terminal.str(), "\r\x1b[K[#####################.........]  70% ");
}
