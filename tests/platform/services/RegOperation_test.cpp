#include "platform/registry/RegOperation.h"

#include "platform/registry/RegistryFile.h"
#include "platform/registry/RegistryRoots.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::registry;

using test::utf16;

namespace {

const QString mainKey = "HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH";

RegistryFile fileOf(const QString& body) {
    return RegistryFile::parse(
        utf16("Windows Registry Editor Version 5.00\r\n\r\n[" + mainKey + "]\r\n" + body));
}

QString readFrom(RegistryFile file, const QString& value = "cfg", QString key = mainKey) {
    return RegOperation(file).GetStringValueA(key, value);
}

TEST(RegistryRoots, EachNameHasItsHandle) {
    EXPECT_EQ(RootFromName("HKEY_CLASSES_ROOT"), 0x80000000U);
    EXPECT_EQ(RootFromName("HKEY_CURRENT_USER"), 0x80000001U);
    EXPECT_EQ(RootFromName("HKEY_LOCAL_MACHINE"), 0x80000002U);
    EXPECT_EQ(RootFromName("HKEY_USERS"), 0x80000003U);
    EXPECT_EQ(RootFromName("HKEY_PERFORMANCE_DATA"), 0x80000004U);
    EXPECT_EQ(RootFromName("HKEY_CURRENT_CONFIG"), 0x80000005U);
    EXPECT_EQ(RootFromName("HKEY_DYN_DATA"), 0x80000006U);
    EXPECT_EQ(RootFromName("HKEY_NONE"), 0U);
}

TEST(ParseKeyPath, SplitsAtTheFirstBackslash) {
    QString path = mainKey;
    RootHandle root = 0;
    EXPECT_TRUE(RegOperation::ParseKeyPath(path, root));
    EXPECT_EQ(root, 0x80000002U);
    EXPECT_EQ(path, "Software\\TREL\\MAIN\\PATH");
}

TEST(ParseKeyPath, ABareRootNameHasAnEmptySubKey) {
    QString path = "HKEY_USERS";
    RootHandle root = 0;
    EXPECT_TRUE(RegOperation::ParseKeyPath(path, root));
    EXPECT_EQ(root, 0x80000003U);
    EXPECT_EQ(path, "");
}

TEST(ParseKeyPath, ATrailingBackslashFails) {
    QString path = mainKey + "\\";
    RootHandle root = 0;
    EXPECT_FALSE(RegOperation::ParseKeyPath(path, root));
}

TEST(ParseKeyPath, APathThatDoesNotBeginWithHkeyFails) {
    QString path = "Software\\TREL";
    RootHandle root = 0;
    EXPECT_FALSE(RegOperation::ParseKeyPath(path, root));
}

TEST(GetStringValue, ReadsTheText) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"C:\\\\配置\"\r\n")), "C:\\配置");
}

TEST(GetStringValue, NamesBelowTheRootAreComparedWithoutCase) {
    EXPECT_EQ(readFrom(fileOf("\"CFG\"=\"x\"\r\n"), "cfg",
                       "HKEY_LOCAL_MACHINE\\software\\trel\\main\\path"),
              "x");
}

TEST(GetStringValue, AMissingKeyOrValueIsTheWordError) {
    const auto file = fileOf("\"other\"=\"x\"\r\n");
    EXPECT_EQ(readFrom(file), "Error");
    EXPECT_EQ(readFrom(file, "cfg", "HKEY_LOCAL_MACHINE\\Software\\None"), "Error");
    EXPECT_EQ(readFrom(RegistryFile()), "Error");
}

TEST(GetStringValue, AKeyPathThatIsNoneGivesNothing) {
    const auto file = fileOf("\"cfg\"=\"x\"\r\n");
    EXPECT_EQ(readFrom(file, "cfg", mainKey + "\\"), "");
    EXPECT_EQ(readFrom(file, "cfg", "HKEY_NONE\\Software"), "");
}

TEST(GetStringValue, AnEmptyValueIsEmptyAndNoError) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"\"\r\n")), "");
}

TEST(GetStringValue, LeadingBlanksAreLostAndTrailingOnesStay) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"  x  \"\r\n")), "x  ");
}

TEST(GetStringValue, AValueOfTwoHundredFiftyFourCharactersComesWhole) {
    const QString text(254, u'x');
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"" + text + "\"\r\n")), text);
}

TEST(GetStringValue, AValueOfTwoHundredFiftyFiveCharactersOrMoreLosesTheRest) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"" + QString(255, u'x') + "\"\r\n")), QString(254, u'x'));
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"" + QString(400, u'x') + "\"\r\n")), QString(254, u'x'));
}

TEST(GetStringValue, TheKeyStaysOpenWhenTheValueIsMissingAndIsClosedOtherwise) {
    auto file = fileOf("\"cfg\"=\"x\"\r\n");
    RegOperation reg(file);
    EXPECT_EQ(reg.GetStringValueA(QString(mainKey), "cfg"), "x");
    EXPECT_EQ(file.openKeys(), 0);
    EXPECT_EQ(reg.GetStringValueA(QString(mainKey), "none"), "Error");
    EXPECT_EQ(file.openKeys(), 1);
}

TEST(GetStringValue, ABareRootIsAKeyWithoutValues) {
    auto file = fileOf("");
    EXPECT_EQ(RegOperation(file).GetStringValueA(QString("HKEY_USERS"), "cfg"), "Error");
}

TEST(GetStringValue, TheCallersKeyPathIsLeftWithTheSubKey) {
    auto file = fileOf("\"cfg\"=\"x\"\r\n");
    QString path = mainKey;
    EXPECT_EQ(RegOperation(file).GetStringValueA(path, "cfg"), "x");
    EXPECT_EQ(path, "Software\\TREL\\MAIN\\PATH");
}

TEST(GetStringValue, ATextStoredWithoutTerminatorLosesItsLastCharacter) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=hex(1):61,00,62,00,63,00\r\n")), "ab");
}

TEST(RegistryFiles, ContinuedHexLinesAreOneValue) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=hex(2):25,00,\\\r\n  41,00,25,00,\\\r\n  00,00\r\n")),
              "%A%");
}

TEST(RegistryFiles, NumbersAndBytesAreKept) {
    auto file = fileOf("\"n\"=dword:0001e240\r\n\"b\"=hex:01,fe\r\n@=\"standard\"\r\n");
    const auto value = [&](const char* name) {
        KeyHandle key = 0;
        Value found;
        file.openKey(0x80000002U, "software\\trel\\main\\path", access::read, key);
        file.queryValue(key, name, found);
        return found;
    };
    EXPECT_EQ(value("n").type, ValueType::number);
    EXPECT_EQ(value("n").data, QByteArray("\x40\xE2\x01\x00", 4));
    EXPECT_EQ(value("b").type, ValueType::binary);
    EXPECT_EQ(value("b").data, QByteArray("\x01\xFE"));
    EXPECT_EQ(readFrom(file, ""), "standard");
}

TEST(RegistryFiles, QuotesAndBackslashesAreEscaped) {
    EXPECT_EQ(readFrom(fileOf("\"c\\\"f\\\\g\"=\"a\\\"b\\\\c=d\"\r\n"), "c\"f\\g"), "a\"b\\c=d");
}

TEST(RegistryFiles, LaterLinesWinAndAMinusTakesAway) {
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"a\"\r\n\"cfg\"=\"b\"\r\n")), "b");
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"a\"\r\n\"cfg\"=-\r\n")), "Error");
    EXPECT_EQ(readFrom(fileOf("\"cfg\"=\"a\"\r\n[-HKEY_LOCAL_MACHINE\\Software\\TREL]\r\n")),
              "Error");
}

TEST(RegistryFiles, TheOlderFormMayBeInTheLocalCodePage) {
    const QByteArray bytes = "REGEDIT4\r\n\r\n[" + mainKey.toLatin1() +
                             "]\r\n\"cfg\"=\"\xB9\xA4\xB3\xCC\"\r\n\"x\"=hex(2):b9,a4,00\r\n";
    const auto file = RegistryFile::parse(bytes);
    EXPECT_EQ(readFrom(file), "工程");
    EXPECT_EQ(readFrom(file, "x"), "工");
}

TEST(RegistryFiles, Utf8WorksInEitherForm) {
    const auto text = "[" + mainKey.toUtf8() + "]\n\"cfg\"=\"工程\"\n";
    EXPECT_EQ(readFrom(RegistryFile::parse("REGEDIT4\n\n" + text)), "工程");
    EXPECT_EQ(readFrom(RegistryFile::parse("Windows Registry Editor Version 5.00\n\n" + text)),
              "工程");
}

TEST(RegistryFiles, UnknownLinesAreKeptAndHaveNoEffect) {
    const auto file = fileOf("; a note\r\n\"cfg\"=strange:1\r\nnonsense\r\n\"cfg\"=\"x\"\r\n");
    EXPECT_EQ(readFrom(file), "x");
    EXPECT_TRUE(file.lines().contains("; a note"));
    EXPECT_TRUE(file.lines().contains("nonsense"));
}

TEST(RegistryFiles, DamagedBytesNeverFail) {
    for (const char* body : {"\"cfg\"=\"open", "\"cfg", "\"cfg\"=hex(1):zz", "\"cfg\"=dword:xyz",
                             "\"cfg\"=hex(", "\"cfg\"=", "[", "[]", "[-]", "\"a\"="}) {
        EXPECT_EQ(readFrom(fileOf(body)), "Error") << body;
    }
    EXPECT_TRUE(RegistryFile::parse("").lines().isEmpty());
}

TEST(RegistryFiles, AMissingFileIsAnEmptyRegistry) {
    test::TemporaryFolder folder;
    EXPECT_EQ(readFrom(RegistryFile::read(folder.path("none.reg"))), "Error");
    folder.write("registry.reg", utf16("Windows Registry Editor Version 5.00\r\n\r\n[" + mainKey +
                                       "]\r\n\"cfg\"=\"C\"\r\n"));
    EXPECT_EQ(readFrom(RegistryFile::read(folder.path("registry.reg"))), "C");
}

} // namespace
