#include "platform/files/PublicFonction.h"

#include "platform/files/TextDecoding.h"
#include "platform/files/TextLines.h"
#include "platform/files/Trim.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;

namespace {

const QByteArray gbkWork = "\xB9\xA4\xB3\xCC"; // 工程

struct ReadKeyedLines : testing::Test {
    test::TemporaryFolder folder;
    QString read(const QByteArray& bytes, const QString& key = "work") const {
        folder.write("cfgpath", bytes);
        return ReadKeyedLine(folder.path("cfgpath"), key);
    }
};

TEST_F(ReadKeyedLines, TheValueIsTheLineBehindTheKey) {
    EXPECT_EQ(read("a\r\nb\r\nwork\r\nD:\\计划\r\n"), "D:\\计划");
}

TEST_F(ReadKeyedLines, CaseOfTheKeyDoesNotMatter) { EXPECT_EQ(read("Work\nx\n", "wORK"), "x"); }

TEST_F(ReadKeyedLines, NothingIsTrimmed) {
    EXPECT_EQ(read("work\n  x  \n"), "  x  ");
    EXPECT_EQ(read(" work\nx\n"), "");
    EXPECT_EQ(read("work \nx\n"), "");
}

TEST_F(ReadKeyedLines, AKeyInTheLastLineGivesNothing) {
    EXPECT_EQ(read("a\nb\nwork"), "");
    EXPECT_EQ(read("a\nb\nwork\n"), "");
}

TEST_F(ReadKeyedLines, AnEmptyLineBehindTheKeyIsAnEmptyValue) {
    EXPECT_EQ(read("work\n\nx\n"), "");
}

TEST_F(ReadKeyedLines, TheFirstMatchingLineCountsEvenIfItIsAValue) {
    EXPECT_EQ(read("a\nwork\nwork\nx\n"), "work");
}

TEST_F(ReadKeyedLines, AMissingFileGivesNothing) {
    EXPECT_EQ(ReadKeyedLine(folder.path("none"), "work"), "");
    EXPECT_EQ(ReadKeyedLine(folder.path(), "work"), "");
}

TEST_F(ReadKeyedLines, LinesEndInAnyOfTheThreeWays) {
    EXPECT_EQ(read("work\rx\r"), "x");
    EXPECT_EQ(read("work\nx\n"), "x");
}

TEST_F(ReadKeyedLines, TheLastLineMayLackItsEnd) { EXPECT_EQ(read("work\nxy"), "xy"); }

TEST_F(ReadKeyedLines, TheFileMayBeUtf8OrGbk) {
    EXPECT_EQ(read("work\n工程\n"), "工程");
    EXPECT_EQ(read("\xEF\xBB\xBFwork\n工程\n"), "工程");
    EXPECT_EQ(read("work\n" + gbkWork + "\n"), "工程");
}

TEST(TextDecoding, MarksWinOverGuesses) {
    EXPECT_EQ(decodeText(QByteArray("\xFF\xFE\xE5\x5D", 4)), "工");
    EXPECT_EQ(decodeText(QByteArray("\xFE\xFF\x5D\xE5", 4)), "工");
}

TEST(TextDecoding, AReplacementCharacterInUtf8IsOneOfItsCharacters) {
    EXPECT_EQ(decodeText("工\xEF\xBF\xBD程"), QString("工\uFFFD程"));
}

TEST(TextDecoding, MalformedGbkKeepsTheRest) {
    EXPECT_EQ(decodeText("a\xFF" + gbkWork), QString("a\uFFFD工程"));
    EXPECT_EQ(decodeText("a\xB9"), QString("a\uFFFD"));
}

TEST(TextDecoding, EveryCharacterComesBackFromGbk) {
    const QString text = "a工镕\u20AC😀\n";
    EXPECT_EQ(decodeGbk(encodeGbk(text)), text);
    EXPECT_EQ(encodeGbk("工程"), gbkWork);
    EXPECT_EQ(encodeGbk("😀").size(), 4);
    EXPECT_EQ(encodeGbk(QString()), QByteArray());
    EXPECT_EQ(decodeGbk(QByteArray()), QString());
}

// A few characters for private use have no place in it.
TEST(TextDecoding, ACharacterThatGbkLacksIsOneQuestionMark) {
    EXPECT_EQ(encodeGbk(u"工\uE78D程\uE796"_qs), QByteArray(gbkWork).insert(2, '?') + '?');
}

TEST(TextDecoding, ALongGbkTextComesWhole) {
    EXPECT_EQ(decodeText(gbkWork.repeated(5000)), QString("工程").repeated(5000));
}

TEST(TextLines, KeepTheMarkOfTheirFileWhenTheFirstLineIsReplaced) {
    for (const QByteArray& file : {QByteArray("\xEF\xBB\xBF"
                                              "a\nb\n"),
                                   QByteArray("\xFF\xFE\x61\0\n\0\x62\0\n\0", 10),
                                   QByteArray("\xFE\xFF\0\x61\0\n\0\x62\0\n", 10)}) {
        TextLines lines = TextLines::of(file);
        EXPECT_EQ(lines.texts(), QStringList({"a", "b"}));
        lines.replace(0, 1, {"b"});
        lines.replace(1, 1, {"a"});
        QByteArray turned = file;
        turned.replace('a', 'x').replace('b', 'a').replace('x', 'b');
        EXPECT_EQ(lines.bytes(), turned);
    }
}

TEST(Trimming, TakesBlanksAtBothEndsAndNothingElse) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("a"), "a");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("\t\u3000a\n"), "\t\u3000a\n");
}

struct MakePaths : testing::Test {
    test::TemporaryFolder folder;
};

TEST_F(MakePaths, AMissingBaseIsOne) {
    EXPECT_EQ(MakePath("a", folder.path("none")), MadePath::baseMissing);
    EXPECT_FALSE(folder.exists("none"));
}

TEST_F(MakePaths, AFolderThatIsThereIsTwo) {
    folder.makeFolder("a/b");
    EXPECT_EQ(MakePath(QString("a") + separator() + "b", folder.path()), MadePath::alreadyThere);
}

TEST_F(MakePaths, OneNameMakesOneFolder) {
    EXPECT_EQ(MakePath("工程文档管理", folder.root()), MadePath::made);
    EXPECT_TRUE(folder.exists("工程文档管理"));
}

TEST_F(MakePaths, ALongerPathMakesEachLevelWithOneSeparatorAtItsEndDropped) {
    const QString path = QStringList({"a", "b", "c", ""}).join(separator());
    EXPECT_EQ(MakePath(path, folder.path()), MadePath::made);
    EXPECT_TRUE(folder.exists("a/b/c"));
}

TEST_F(MakePaths, AnExistingFirstLevelIsUsed) {
    folder.makeFolder("A");
    EXPECT_EQ(MakePath(QStringList({"A", "b"}).join(separator()), folder.path()), MadePath::made);
    EXPECT_TRUE(folder.exists("A/b"));
}

TEST_F(MakePaths, ASeparatorInFrontDoesNotCount) {
    const QString path = QStringList({"", "a", "b"}).join(separator());
    EXPECT_EQ(MakePath(path, folder.path()), MadePath::made);
    EXPECT_TRUE(folder.exists("a/b"));
}

} // namespace
