#include "platform/files/TextLines.h"

#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;

namespace {

// The file behind a change.
QByteArray replaced(const QByteArray& file, qsizetype first, qsizetype count,
                    const QStringList& texts) {
    TextLines lines = TextLines::of(file);
    lines.replace(first, count, texts);
    return lines.bytes();
}
qsizetype countOf(const QByteArray& file) { return TextLines::of(file).count(); }

TEST(LinesOfText, AreReplacedAddedAndTakenOutAndTheOthersStayAsTheyAre) {
    const QByteArray file = "a\nb \r\nc\n";
    EXPECT_EQ(replaced(file, 0, 0, {}), file);
    EXPECT_EQ(replaced(file, 1, 1, {"x", "y"}), "a\nx\ny\nc\n");
    EXPECT_EQ(replaced(file, 0, 2, {}), "c\n");
    EXPECT_EQ(replaced(file, 3, 0, {"d"}), "a\nb \r\nc\nd\n");
    EXPECT_EQ(TextLines::of(file).texts(), QStringList({"a", "b ", "c"}));
}

TEST(LinesOfText, ThatComeInEndAsTheFirstOneDoes) {
    EXPECT_EQ(replaced("a\r\nb\n", 2, 0, {"c"}), "a\r\nb\nc\r\n");
    EXPECT_EQ(replaced("a\nb\r\n", 2, 0, {"c"}), "a\nb\r\nc\n");
    EXPECT_EQ(replaced("", 0, 0, {"a"}), "a\r\n") << "and as CR LF where there is none";
    EXPECT_EQ(replaced("a", 1, 0, {"b"}), "a\r\nb\r\n");
}

TEST(LinesOfText, OfWhichTheLastHasNoEndGetOneOnlyWhenOthersFollowIt) {
    EXPECT_EQ(replaced("a\nb", 2, 0, {}), "a\nb");
    EXPECT_EQ(replaced("a\nb", 2, 0, {"c"}), "a\nb\nc\n");
    EXPECT_EQ(replaced("a\nb", 0, 1, {"c"}), "c\nb");
    EXPECT_EQ(replaced("a\nb", 1, 1, {"c"}), "a\nc\n");
    EXPECT_EQ(replaced("a\nb\n", 2, 0, {"c"}), "a\nb\nc\n") << "and no second one";
}

TEST(LinesOfText, OfUtf16EndAtAUnitOfItsOwnAlone) {
    EXPECT_EQ(countOf(QByteArray("\xFF\xFE"
                                 "a\0\n\0b\0\n\0",
                                 10)),
              2);
    EXPECT_EQ(countOf(QByteArray("\xFE\xFF\0a\0\n\0b\0\n", 10)), 2);
    EXPECT_EQ(countOf(QByteArray("\xFF\xFE\n\x01\0\n\0\0", 8)), 1);
    EXPECT_EQ(countOf(QByteArray("\xFE\xFF\x01\n\n\x01\0\0\n\0", 10)), 1);
}

TEST(LinesOfText, OfACutUtf16FileAreClosedInWholeUnits) {
    const QByteArray cut("\xFF\xFE"
                         "a\0b",
                         5);
    EXPECT_EQ(replaced(cut, 1, 0, {"c"}), QByteArray("\xFF\xFE"
                                                     "a\0b\0\r\0\n\0c\0\r\0\n\0",
                                                     16));
    EXPECT_EQ(replaced(cut, 0, 0, {}), cut);
    const QByteArray wide("\xFE\xFF\0a", 4);
    EXPECT_EQ(replaced(wide, 1, 0, {"c"}), QByteArray("\xFE\xFF\0a\0\r\0\n\0c\0\r\0\n", 14));
}

TEST(LinesOfText, OfANewFileHaveTheMarkOfUtf16AndElseNone) {
    EXPECT_EQ(TextLines(TextEncoding::utf16LittleEndian).bytes(), "\xFF\xFE");
    EXPECT_EQ(TextLines(TextEncoding::utf16BigEndian).bytes(), "\xFE\xFF");
    EXPECT_EQ(TextLines(TextEncoding::utf8).bytes(), "");
    EXPECT_EQ(TextLines(TextEncoding::gbk).bytes(), "");
}

TEST(LinesOfText, KeepTheEncodingOfTheirFile) {
    const QByteArray gbk = "\xB9\xA4\xB3\xCC\n"; // 工程
    EXPECT_EQ(TextLines::of(gbk).encoding(), TextEncoding::gbk);
    EXPECT_EQ(replaced(gbk, 1, 0, {"工"}), gbk + "\xB9\xA4\n");
    const QByteArray utf8 = "工程\n";
    EXPECT_EQ(TextLines::of(utf8).encoding(), TextEncoding::utf8);
    EXPECT_EQ(replaced(utf8, 1, 0, {"工"}), utf8 + "工\n");
}

TEST(LinesOfText, ThatAreMalformedStayByteForByte) {
    const QByteArray file = "\xFF\xB9\xA4\nb\n";
    EXPECT_EQ(replaced(file, 1, 1, {"c"}), "\xFF\xB9\xA4\nc\n");
}

} // namespace
