#include "platform/registry/RegistryFile.h"

#include "platform/registry/RegOperation.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRandomGenerator>

using namespace qvnd;
using namespace qvnd::registry;

using test::utf16;

namespace {

const QString version5 = "Windows Registry Editor Version 5.00\r\n\r\n";

bool setNumber(RegistryFile& file, const QString& key, const QString& name, int number) {
    return RegOperation(file).SetDWORDValueA(QString(key), name, number);
}

Value valueAt(RegistryFile& file, const QString& subKey, const QString& name) {
    KeyHandle key = 0;
    Value value{ValueType::none, "none"};
    file.openKey(0x80000003U, subKey, access::read, key);
    file.queryValue(key, name, value);
    file.closeKey(key);
    return value;
}

TEST(WrittenRegistry, ANewFileIsVersionFiveInUtf16WithItsMark) {
    test::TemporaryFolder folder;
    auto file = RegistryFile::read(folder.path("registry.reg"));
    EXPECT_TRUE(RegOperation(file).CreateKey(QString("HKEY_USERS\\甲"), true));
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\甲", "n", 1));
    EXPECT_EQ(folder.read("registry.reg"),
              utf16(version5 + "[HKEY_USERS\\甲]\r\n\"n\"=dword:00000001\r\n"));
}

TEST(WrittenRegistry, TheOlderFormStaysInItsCodePage) {
    test::TemporaryFolder folder;
    const QByteArray head = "REGEDIT4\r\n\r\n[HKEY_USERS\\\xB9\xA4]\r\n";
    folder.write("registry.reg", head);
    auto file = RegistryFile::read(folder.path("registry.reg"));
    EXPECT_TRUE(RegOperation(file).SetStringValueA(QString("HKEY_USERS\\工"), "程", "工"));
    EXPECT_EQ(folder.read("registry.reg"), head + "\"\xB3\xCC\"=hex(1):b9,a4\r\n");
}

TEST(WrittenRegistry, RemarksUnknownLinesBlankLinesAndLineEndsAreKept) {
    const QByteArray before = utf16("Windows Registry Editor Version 5.00\n\n; 说明\n"
                                    "[HKEY_USERS\\a]\nnonsense\n\"n\"=dword:00000001\n"
                                    "\"odd\"=strange:1\n\n\n[HKEY_USERS\\b]\n@=\"x\"\n");
    auto file = RegistryFile::parse(before);
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "m", 2));
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 3));
    EXPECT_EQ(file.lines().join('\n'), "Windows Registry Editor Version 5.00\n\n; 说明\n"
                                       "[HKEY_USERS\\a]\nnonsense\n\"n\"=dword:00000003\n"
                                       "\"odd\"=strange:1\n\"m\"=dword:00000002\n\n\n"
                                       "[HKEY_USERS\\b]\n@=\"x\"");
    EXPECT_FALSE(file.bytes().contains('\r'));
}

TEST(WrittenRegistry, ALineOfMalformedBytesIsKeptByteForByte) {
    const QByteArray before = "REGEDIT4\r\n; \xFF\xFE\x81 x\r\n[HKEY_USERS\\a]\r\n";
    auto file = RegistryFile::parse(before);
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 1));
    EXPECT_EQ(file.bytes(), before + "\"n\"=dword:00000001\r\n");
}

TEST(WrittenRegistry, AFileWithoutALastLineEndGetsOneBeforeWhatFollows) {
    auto file = RegistryFile::parse("REGEDIT4\r\n[HKEY_USERS\\a]");
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 1));
    EXPECT_EQ(file.bytes(), "REGEDIT4\r\n[HKEY_USERS\\a]\r\n\"n\"=dword:00000001\r\n");
}

TEST(WrittenRegistry, EveryKindOfValueComesBackAsItWas) {
    auto file = RegistryFile::parse(utf16(version5 + "[HKEY_USERS\\a]\r\n"));
    const std::vector<Value> kinds = {
        {ValueType::none, QByteArray("\1", 1)},
        {ValueType::text, QByteArray("a\0\"\0\\\0\0\0", 8)},
        {ValueType::text, QByteArray("a\0", 2)},
        {ValueType::text, QByteArray("a\0\n\0b\0\0\0", 8)},
        {ValueType::text, QByteArray("a\0\0\0b\0\0\0", 8)},
        {ValueType::text, QByteArray("abc", 3)},
        {ValueType::text, {}},
        {ValueType::expandableText, QByteArray("%\0\0\0", 4)},
        {ValueType::binary, QByteArray(1000, '\xA5')},
        {ValueType::binary, {}},
        {ValueType::number, QByteArray("\1\2\3\xFF", 4)},
        {ValueType::number, QByteArray("\1\2", 2)},
        {static_cast<ValueType>(7), QByteArray("a\0\0\0\0\0", 6)},
        {static_cast<ValueType>(0xB), QByteArray("12345678")},
        {static_cast<ValueType>(0xFFFF0001), QByteArray("x")},
    };
    KeyHandle key = 0;
    ASSERT_EQ(file.openKey(0x80000003U, "a", access::readWrite, key), 0);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(file.setValue(key, QString::number(i), kinds[i]), 0);
    }
    auto again = RegistryFile::parse(file.bytes());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(valueAt(again, "a", QString::number(i)), kinds[i]) << i;
    }
}

TEST(WrittenRegistry, NamesWithQuotesBackslashesAndNoNameComeBack) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n");
    for (const char* name : {"", "\"", "\\", "a=b", "\\\"", " 名 ", "@"}) {
        EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", name, 5)) << name;
        auto again = RegistryFile::parse(file.bytes());
        EXPECT_EQ(valueAt(again, "a", name).data, QByteArray("\5\0\0\0", 4)) << name;
    }
}

TEST(WrittenRegistry, NamesThatNoLineCanHoldAreRefused) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n");
    const QByteArray before = file.bytes();
    RegOperation reg(file);
    EXPECT_FALSE(reg.SetDWORDValueA(QString("HKEY_USERS\\a"), "x\n[HKEY_USERS\\b]", 1));
    EXPECT_EQ(reg.LastStatus(), 87);
    EXPECT_FALSE(reg.CreateKey(QString("HKEY_USERS\\b]\n[HKEY_USERS\\c"), true));
    EXPECT_FALSE(reg.CreateKey(QString("HKEY_USERS\\b\\\\c"), true));
    EXPECT_FALSE(reg.CreateKey(QString("HKEY_USERS\\" + QString(256, u'x')), true));
    EXPECT_EQ(file.bytes(), before);
}

TEST(WrittenRegistry, AValueGivenTwiceIsReplacedWhereItCountsAndDeletedEverywhere) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n\"n\"=dword:1\n"
                                    "[HKEY_USERS\\A]\n\"N\"=hex:01,\\\n  02\n");
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 9));
    EXPECT_EQ(valueAt(file, "a", "n").data, QByteArray("\x9\0\0\0", 4));
    RegOperation reg(file);
    EXPECT_TRUE(reg.DelRegValueA(QString("HKEY_USERS\\a"), "n"));
    EXPECT_EQ(reg.GetStringValueA(QString("HKEY_USERS\\a"), "n"), "Error");
    EXPECT_EQ(file.bytes(), "REGEDIT4\n[HKEY_USERS\\a]\n[HKEY_USERS\\A]\n");
}

TEST(WrittenRegistry, AKeyTakenAwayByALineCanBeMadeAgain) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n\"n\"=dword:1\n[-HKEY_USERS\\a]\n");
    EXPECT_FALSE(setNumber(file, "HKEY_USERS\\a", "n", 2));
    EXPECT_TRUE(RegOperation(file).CreateKey(QString("HKEY_USERS\\a"), true));
    EXPECT_EQ(valueAt(file, "a", "n").data, "none");
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 2));
    EXPECT_EQ(valueAt(file, "a", "n").data, QByteArray("\2\0\0\0", 4));
}

TEST(WrittenRegistry, DeletingAKeyKeepsItsRemarksAndItsNeighbours) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n[HKEY_USERS\\a\\b]\n; note\n"
                                    "\"n\"=dword:1\n[HKEY_USERS\\a\\bb]\n\"n\"=dword:2\n");
    EXPECT_TRUE(RegOperation(file).DeleteKey(QString("HKEY_USERS\\a"), "B"));
    EXPECT_EQ(file.bytes(),
              "REGEDIT4\n[HKEY_USERS\\a]\n; note\n[HKEY_USERS\\a\\bb]\n\"n\"=dword:2\n");
}

TEST(WrittenRegistry, AFailedWriteChangesNothing) {
    test::TemporaryFolder folder;
    folder.write("registry.reg", "REGEDIT4\n[HKEY_USERS\\a]\n");
    const QString path = folder.path("registry.reg");
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    auto file = RegistryFile::read(path);
    RegOperation reg(file);
    EXPECT_FALSE(reg.SetDWORDValueA(QString("HKEY_USERS\\a"), "n", 1));
    EXPECT_EQ(RegOperation::ErrorText(reg.LastStatus()), "Can't Write Key");
    EXPECT_EQ(valueAt(file, "a", "n").data, "none");
    EXPECT_EQ(folder.read("registry.reg"), "REGEDIT4\n[HKEY_USERS\\a]\n");
    EXPECT_EQ(folder.names(), QStringList{"registry.reg"});
}

TEST(WrittenRegistry, WhatAnotherProgramWroteMeanwhileStays) {
    test::TemporaryFolder folder;
    folder.write("registry.reg", "REGEDIT4\n[HKEY_USERS\\a]\n");
    auto file = RegistryFile::read(folder.path("registry.reg"));
    folder.write("registry.reg", "REGEDIT4\n[HKEY_USERS\\a]\n\"other\"=dword:00000007\n");
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 1));
    EXPECT_EQ(folder.read("registry.reg"), "REGEDIT4\n[HKEY_USERS\\a]\n\"other\"=dword:00000007\n"
                                           "\"n\"=dword:00000001\n");
}

// Whatever the bytes: reading ends, and a value written can be read back from what is written.
void expectUsable(const QByteArray& bytes) {
    auto file = RegistryFile::parse(bytes);
    EXPECT_EQ(file.bytes(), bytes);
    ASSERT_TRUE(RegOperation(file).CreateKey(QString("HKEY_USERS\\probe"), true));
    ASSERT_TRUE(setNumber(file, "HKEY_USERS\\probe", "n", 77));
    auto again = RegistryFile::parse(file.bytes());
    EXPECT_EQ(valueAt(again, "probe", "n").data, QByteArray("\x4D\0\0\0", 4));
}

TEST(DamagedRegistry, EveryTruncationIsReadAndCanBeWritten) {
    const QString body =
        "[HKEY_USERS\\甲]\r\n\"a\"=\"文\\\\\"\r\n\"b\"=hex(7):61,00,\\\r\n  00,00\r\n"
        "@=dword:1\r\n[-HKEY_USERS\\甲]\r\n";
    for (const QByteArray& whole :
         {utf16(version5 + body), QByteArray("REGEDIT4\n" + body.toUtf8())}) {
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            SCOPED_TRACE(length);
            expectUsable(whole.left(length));
        }
    }
}

TEST(DamagedRegistry, AValueCutOffBehindItsBackslashSwallowsNoLine) {
    auto file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n\"long\"=hex:01,02,\\");
    EXPECT_TRUE(setNumber(file, "HKEY_USERS\\a", "n", 5));
    auto again = RegistryFile::parse(file.bytes());
    EXPECT_EQ(valueAt(again, "a", "n").data, QByteArray("\5\0\0\0", 4));
}

TEST(DamagedRegistry, RandomBytesAreReadAndCanBeWritten) {
    QRandomGenerator random(20260101);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = round % 2 == 0 ? QByteArray("REGEDIT4\n") : QByteArray("\xFF\xFE");
        const char alphabet[] = "[]-\\\"=@hex:(1),;\r\n \0HKEY_USERS\\\xB9\xA4\xFF";
        for (int i = 0; i < 200; ++i) {
            bytes += alphabet[random.bounded(static_cast<int>(sizeof alphabet))];
        }
        SCOPED_TRACE(bytes.toHex().toStdString());
        expectUsable(bytes);
    }
}

TEST(DamagedRegistry, HugeLinesAndDeepPathsTakeNoTimeToSpeakOf) {
    expectUsable("REGEDIT4\n[HKEY_USERS" + QByteArray(1 << 20, '\\') + "]\n\"x\"=\"" +
                 QByteArray(1 << 20, 'y') + "\"\n\"z\"=hex:" + QByteArray("41,").repeated(1 << 18) +
                 "\n");
    QByteArray many = "REGEDIT4\n";
    for (int i = 0; i < 20000; ++i) {
        many += "[HKEY_USERS\\" + QByteArray::number(i) + "]\n\"n\"=hex:41,\\\n";
    }
    expectUsable(many);
}

} // namespace
