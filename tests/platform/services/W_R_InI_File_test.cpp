#include "platform/registry/W_R_InI_File.h"

#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRandomGenerator>

using namespace qvnd;
using namespace qvnd::registry;

namespace {

struct Profiles : testing::Test {
    test::TemporaryFolder folder;

    W_R_InI_File profile(const QString& section = "工程") const {
        return {folder.path("p.ini"), section};
    }
    void write(const QByteArray& bytes) const { folder.write("p.ini", bytes); }
    QByteArray read() const { return folder.read("p.ini"); }
    QString get(const QString& key, const QString& section = "工程") const {
        return profile(section).GetString(key, "default");
    }
};

TEST_F(Profiles, AValueIsFoundBySectionAndKeyWithoutCase) {
    write("[other]\nwork=no\n[Main]\r\nWORK=C:\\工程\r\n");
    EXPECT_EQ(get("work", "main"), "C:\\工程");
    EXPECT_EQ(get("Work", "OTHER"), "no");
}

TEST_F(Profiles, TheDefaultStandsForAMissingFileSectionKeyOrAnEmptyValue) {
    EXPECT_EQ(get("a"), "default");
    write("[工程]\na=\nb=  \nc=\"\"\nloose\n[x]\nd=1\n");
    for (const char* key : {"a", "b", "c", "d", "loose", "none"}) {
        EXPECT_EQ(get(key), "default") << key;
    }
    EXPECT_EQ(get("d", "y"), "default");
    EXPECT_EQ(profile().GetString("none", ""), "");
}

TEST_F(Profiles, BlanksAroundTheValueAndOnePairOfQuotesGo) {
    write("[工程]\n a = x y \nb=\" x \"\nc='x'\nd=\"x'\ne=\"\nf=\"\"x\"\"\n");
    EXPECT_EQ(get("a"), "x y");
    EXPECT_EQ(get("b"), " x ");
    EXPECT_EQ(get("c"), "x");
    EXPECT_EQ(get("d"), "\"x'");
    EXPECT_EQ(get("e"), "\"");
    EXPECT_EQ(get("f"), "\"x\"");
}

TEST_F(Profiles, RemarksAreNoKeysAndTheFirstSectionAndKeyCount) {
    write("[工程]\n;a=1\n ; a=2\na=3\na=4\n[工程]\na=5\nb=6\n");
    EXPECT_EQ(get("a"), "3");
    EXPECT_EQ(get("b"), "default");
    EXPECT_EQ(get(";a"), "default");
}

TEST_F(Profiles, AValueMayHoldEqualsSignsAndSemicolons) {
    write("[工程]\na=b=c;d\n");
    EXPECT_EQ(get("a"), "b=c;d");
}

TEST_F(Profiles, AtMost199BytesComeBack) {
    write("[工程]\na=" + QByteArray(199, 'x') + "\nb=" + QByteArray(300, 'x') + "\n");
    EXPECT_EQ(get("a"), QString(199, u'x'));
    EXPECT_EQ(get("b"), QString(199, u'x'));
}

TEST_F(Profiles, BytesAreThoseOfTheLocalCodePageAndNoCharacterIsCutInTwo) {
    const QString long1 = QString(150, u'工');
    const QString long2 = "x" + long1;
    const auto lines = ("[工程]\na=" + long1 + "\nb=" + long2 + "\n").toUtf8();
    write(lines);
    EXPECT_EQ(get("a"), QString(99, u'工'));
    EXPECT_EQ(get("b"), "x" + QString(99, u'工'));
}

TEST_F(Profiles, ACharacterThatTheCodePageLacksCountsItsFourBytes) {
    write(("[工程]\na=" + QString("😀").repeated(60) + "\n").toUtf8());
    EXPECT_EQ(get("a"), QString("😀").repeated(49));
}

TEST_F(Profiles, GbkUtf8AndUtf16AreAllRead) {
    const QString text = "[工程]\r\n名=值\r\n";
    const QByteArray gbk = "[\xB9\xA4\xB3\xCC]\r\n\xC3\xFB=\xD6\xB5\r\n";
    for (const QByteArray& bytes :
         {text.toUtf8(), "\xEF\xBB\xBF" + text.toUtf8(), gbk,
          QByteArray(QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom)
                         .encode(text)),
          QByteArray(QStringEncoder(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom)
                         .encode(text))}) {
        write(bytes);
        EXPECT_EQ(get("名"), "值") << bytes.toHex().toStdString();
    }
}

TEST_F(Profiles, AnExistingKeyTakesTheNewValueInItsLine) {
    write("; 说明\r\n[工程]\r\na=1\r\nb=2\r\n\r\n[x]\r\na=3\r\n");
    EXPECT_TRUE(profile().WriString("A", "新"));
    EXPECT_EQ(read(), "; 说明\r\n[工程]\r\nA=新\r\nb=2\r\n\r\n[x]\r\na=3\r\n");
}

TEST_F(Profiles, ANewKeyStandsBehindTheLastLineOfItsSection) {
    write("[工程]\na=1\nnonsense\n\n\n[x]\na=3\n");
    EXPECT_TRUE(profile().WriString("b", "2"));
    EXPECT_EQ(read(), "[工程]\na=1\nnonsense\nb=2\n\n\n[x]\na=3\n");
}

TEST_F(Profiles, ANewSectionStandsAtTheEndAlsoOfAFileWithoutALastLineEnd) {
    write("[x]\na=3");
    EXPECT_TRUE(profile().WriString("b", "2"));
    EXPECT_EQ(read(), "[x]\na=3\n[工程]\nb=2\n");
    EXPECT_EQ(get("b"), "2");
    EXPECT_EQ(get("a", "x"), "3");
}

TEST_F(Profiles, ANewFileIsMade) {
    EXPECT_TRUE(profile().WriString("b", "2"));
    EXPECT_EQ(read(), "[工程]\r\nb=2\r\n");
}

TEST_F(Profiles, AFileKeepsItsCodePageAndItsMalformedBytes) {
    write("[\xB9\xA4\xB3\xCC]\r\n; \xFF\x81\r\na=1\r\n");
    EXPECT_TRUE(profile().WriString("a", "工"));
    EXPECT_EQ(read(), "[\xB9\xA4\xB3\xCC]\r\n; \xFF\x81\r\na=\xB9\xA4\r\n");
    EXPECT_EQ(get("a"), "工");
}

TEST_F(Profiles, AFileInUtf16StaysInUtf16WithItsMark) {
    write(test::utf16("[工程]\na=上\n"));
    EXPECT_TRUE(profile().WriString("b", "值"));
    EXPECT_EQ(read(), test::utf16("[工程]\na=上\nb=值\n"));
}

TEST_F(Profiles, SoDoesOneWhoseBytesStandTheOtherWayRound) {
    const auto turned = [](const QString& text) {
        return QByteArray(
            QStringEncoder(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom)
                .encode(text));
    };
    write(turned("[工程]\na=上\n"));
    EXPECT_TRUE(profile().WriString("b", "值"));
    EXPECT_EQ(read(), turned("[工程]\na=上\nb=值\n"));
}

TEST_F(Profiles, AnEmptyValueIsWrittenAndReadAsTheDefault) {
    EXPECT_TRUE(profile().WriString("a", ""));
    EXPECT_EQ(read(), "[工程]\r\na=\r\n");
    EXPECT_EQ(get("a"), "default");
}

TEST_F(Profiles, TextsThatWouldNotComeBackAreRefusedAndNothingIsWritten) {
    write("[工程]\na=1\n");
    for (const char* key : {"", " ", "a=b", ";a", "[a]", "x\ny"}) {
        EXPECT_FALSE(profile().WriString(key, "1")) << key;
    }
    EXPECT_FALSE(profile().WriString("a", "1\r\n[x]"));
    EXPECT_FALSE(profile("x]\n[y").WriString("a", "1"));
    EXPECT_EQ(read(), "[工程]\na=1\n");
}

TEST_F(Profiles, AFileThatMayNotBeWrittenStaysAndTheAnswerIsFalse) {
    write("[工程]\na=1\n");
    QFile::setPermissions(folder.path("p.ini"), QFileDevice::ReadOwner);
    EXPECT_FALSE(profile().WriString("a", "2"));
    EXPECT_EQ(read(), "[工程]\na=1\n");
    EXPECT_EQ(folder.names(), QStringList{"p.ini"});
}

TEST_F(Profiles, WithoutItsFolderNothingIsWritten) {
    const W_R_InI_File lost{folder.path("none/p.ini"), "a"};
    EXPECT_FALSE(lost.WriString("a", "1"));
    EXPECT_FALSE(folder.exists("none"));
}

TEST_F(Profiles, WhateverTheBytesReadingEndsAndWritingKeepsThem) {
    QRandomGenerator random(20260102);
    const char alphabet[] = "[]=;\"'\r\n \0ab\xB9\xA4\xFF\xEF";
    for (int round = 0; round < 100; ++round) {
        QByteArray bytes = round % 3 == 0 ? QByteArray("\xFF\xFE") : QByteArray();
        for (int i = 0; i < random.bounded(300); ++i) {
            bytes += alphabet[random.bounded(static_cast<int>(sizeof alphabet))];
        }
        SCOPED_TRACE(bytes.toHex().toStdString());
        write(bytes);
        get("a", "b");
        ASSERT_TRUE(profile("probe").WriString("key", "value"));
        EXPECT_EQ(get("key", "probe"), "value");
        EXPECT_TRUE(read().startsWith(bytes));
    }
}

TEST_F(Profiles, HugeLinesTakeNoTimeToSpeakOf) {
    write("[\xB9\xA4\xB3\xCC]\na=" + QByteArray("\xB9\xA4").repeated(1 << 20) + "\n" +
          QByteArray("x=1\n").repeated(50000) + "b=2\n");
    EXPECT_EQ(get("a"), QString(99, u'工'));
    EXPECT_EQ(get("b"), "2");
}

} // namespace
