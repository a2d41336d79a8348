#include "support/Files.h"
#include "support/Text.h"
#include "tools/Arguments.h"
#include "tools/GlobalOptions.h"
#include "tools/Output.h"
#include "tools/Run.h"
#include "tools/TerminalMessageBoxes.h"
#include "tools/UsageError.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

#include <sstream>
#include <stdexcept>
#include <streambuf>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

struct Ran {
    ExitStatus status;
    QString out;
    QString err;
};

Ran ran(const QStringList& words) {
    std::ostringstream out;
    std::ostringstream err;
    const ExitStatus status = run(words, out, err);
    return {status, QString::fromStdString(out.str()), QString::fromStdString(err.str())};
}

// A standard output that takes nothing and says so by an exception of its own.
struct BrokenOutput : std::streambuf {
    int_type overflow(int_type) override { throw std::runtime_error("broken"); }
};

TEST(CommandLine, AnUnforeseenFailureIsToldAndRefused) {
    BrokenOutput broken;
    std::ostream out(&broken);
    out.exceptions(std::ios::badbit);
    std::ostringstream err;
    EXPECT_EQ(run({"--help"}, out, err), ExitStatus::refused);
    EXPECT_EQ(err.str(), "出现意外的错误：broken\n");
}

TEST(CommandLine, WithoutACommandTheUsageGoesToStandardError) {
    const auto result = ran({});
    EXPECT_EQ(result.status, ExitStatus::wrongUsage);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.startsWith("用法：qvndctl")) << result.err.toStdString();
}

TEST(CommandLine, HelpGoesToStandardOutput) {
    const auto result = ran({"--help"});
    EXPECT_EQ(result.status, ExitStatus::done);
    EXPECT_TRUE(result.out.contains("退出码"));
    EXPECT_EQ(result.err, "");
}

TEST(CommandLine, AnUnknownCommandOrOptionIsWrongUsage) {
    EXPECT_EQ(ran({"nonsense"}).status, ExitStatus::wrongUsage);
    EXPECT_TRUE(ran({"nonsense"}).err.contains("没有这个命令：nonsense"));
    EXPECT_EQ(ran({"--nonsense", "init"}).status, ExitStatus::wrongUsage);
    EXPECT_EQ(ran({"--home"}).status, ExitStatus::wrongUsage);
}

TEST(CommandLine, AGroupWithoutItsCommandNamesItsCommands) {
    EXPECT_EQ(ran({"outline"}).status, ExitStatus::wrongUsage);
    EXPECT_TRUE(ran({"outline"}).err.contains("show、add-folder、add-document"));
}

TEST(CommandLine, GlobalOptionsMayStandAnywhereBeforeTheDoubleDash) {
    const auto options =
        parseGlobalOptions({"plan", "--json", "list", "--yes", "--home", "/a", "--", "--no"});
    EXPECT_TRUE(options.json);
    EXPECT_TRUE(options.yes);
    EXPECT_EQ(options.home, QDir::toNativeSeparators("/a"));
    EXPECT_EQ(options.words, QStringList({"plan", "list", "--", "--no"}));
}

TEST(CommandLine, QuestionsAreAnsweredWithNoUnlessYesIsGivenLast) {
    EXPECT_FALSE(parseGlobalOptions({"init"}).yes);
    EXPECT_TRUE(parseGlobalOptions({"--no", "--yes", "init"}).yes);
    EXPECT_FALSE(parseGlobalOptions({"--yes", "--no", "init"}).yes);
}

TEST(CommandLine, ARelativeHomeIsMadeAbsolute) {
    EXPECT_EQ(parseGlobalOptions({"--home", "x"}).home,
              QDir::toNativeSeparators(QDir::currentPath() + "/x"));
    EXPECT_TRUE(parseGlobalOptions({"init"}).home.endsWith("qvnd"));
}

TEST(CommandLine, BesideThePortableMarkTheHomeIsTheExecutablesFolder) {
    const test::TemporaryFolder executables;
    EXPECT_NE(parseGlobalOptions({"init"}, executables.path()).home, executables.path());
    executables.write("qvnd.portable", "");
    EXPECT_EQ(parseGlobalOptions({"init"}, executables.path()).home, executables.path());
    EXPECT_EQ(parseGlobalOptions({"--home", "/a", "init"}, executables.path()).home,
              QDir::toNativeSeparators("/a"));
}

TEST(CommandArguments, FlagsOptionsAndPositionsComeInAnyOrder) {
    const Arguments arguments({"--below", "P", "--date", "2026-05-01", "K"},
                              {{"--below"}, {"--date"}});
    EXPECT_EQ(arguments.positions(), QStringList({"P", "K"}));
    EXPECT_TRUE(arguments.has("--below"));
    EXPECT_EQ(arguments.option("--date"), "2026-05-01");
    EXPECT_EQ(arguments.option("--none", "x"), "x");
}

TEST(CommandArguments, ADoubleDashEndsTheOptions) {
    EXPECT_EQ(Arguments({"--", "--below"}, {}).positions(), QStringList({"--below"}));
}

TEST(CommandArguments, WhatIsNotKnownIsRefused) {
    EXPECT_THROW(Arguments({"--other"}, {{"--below"}, {}}), UsageError);
    EXPECT_THROW(Arguments({"--date"}, {{}, {"--date"}}), UsageError);
    const Arguments two({"a", "b"}, {});
    EXPECT_THROW(two.expectPositions(3, 3), UsageError);
    EXPECT_THROW(two.expectPositions(1, 1), UsageError);
    EXPECT_NO_THROW(two.expectPositions(1, 2));
}

TEST(CommandArguments, NumbersAreWholeNumbers) {
    const Arguments arguments({"--indent", "4", "--bad", "x"}, {{}, {"--indent", "--bad"}});
    EXPECT_EQ(arguments.number("--indent", 0), 4);
    EXPECT_EQ(arguments.number("--none", 7), 7);
    EXPECT_THROW(arguments.number("--bad", 0), UsageError);
}

struct Streams : testing::Test {
    std::ostringstream out;
    std::ostringstream err;
    Output output{out, err};
};

TEST_F(Streams, AResultIsTextOrOneJsonValue) {
    output.result("T.4", "T.4");
    EXPECT_EQ(out.str(), "");
    output.print();
    EXPECT_EQ(out.str(), "T.4\n");
    out.str("");
    output.setJson(true);
    output.result("T.4", "T.4");
    output.result(QJsonArray{"甲", 1}, "x");
    output.result(QJsonObject{{"a", true}}, "x");
    output.print();
    EXPECT_EQ(out.str(), "\"T.4\"\n[\"甲\",1]\n{\"a\":true}\n");
    EXPECT_EQ(err.str(), "");
}

TEST_F(Streams, AResultThatIsWithdrawnIsNotPrinted) {
    output.result("T.4", "T.4");
    output.withdraw();
    output.print();
    EXPECT_EQ(out.str(), "");
}

TEST_F(Streams, AMessageBoxIsItsTitleAndItsText) {
    TerminalMessageBoxes messages(output, false);
    messages.tell("对不起，名称不能为空!", desktop::Icon::exclamation, "警告！");
    messages.tell("更新标书模板库时发生错误!", desktop::Icon::exclamation);
    EXPECT_EQ(err.str(), "警告！: 对不起，名称不能为空!\n更新标书模板库时发生错误!\n");
    EXPECT_EQ(messages.count(), 2);
}

TEST_F(Streams, AQuestionSaysHowItWasAnswered) {
    EXPECT_FALSE(
        TerminalMessageBoxes(output, false).ask("好吗？", desktop::Icon::question, "提示"));
    EXPECT_TRUE(err.str().starts_with("提示: 好吗？\n（答：否"));
    EXPECT_TRUE(TerminalMessageBoxes(output, true).ask("好吗？", desktop::Icon::question, "提示"));
    const desktop::Message question{"删？", {}, {}, desktop::Buttons::okCancel};
    EXPECT_EQ(TerminalMessageBoxes(output, false).show(question), desktop::Answer::cancel);
    EXPECT_EQ(TerminalMessageBoxes(output, true).show(question), desktop::Answer::ok);
}

} // namespace
