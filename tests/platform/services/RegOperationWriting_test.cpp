#include "platform/registry/RegOperation.h"

#include "platform/files/Paths.h"
#include "platform/registry/ReadRegistryRaw.h"
#include "platform/registry/RegistryFile.h"
#include "support/Errors.h"
#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::registry;

namespace {

// A registry with the key HKEY_CURRENT_USER\Software\甲 and nothing in it.
struct Registries : testing::Test {
    RegistryFile file =
        RegistryFile::parse("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\甲]\r\n");
    RegOperation reg{file};

    static QString key(const QString& below = {}) {
        return "HKEY_CURRENT_USER\\Software\\甲" + below;
    }
    static QString missing() { return "HKEY_CURRENT_USER\\Software\\乙"; }
    static QString word(const RegOperation::Number& answer) {
        return std::holds_alternative<QString>(answer)
                   ? std::get<QString>(answer)
                   : "number " + QString::number(std::get<std::int32_t>(answer));
    }
    QString number(const QString& name) { return word(reg.GetDWORDValueA(key(), name)); }
    QString raw(const QString& name) {
        long status = 0;
        return ReadRegistryRaw(file, "HKEY_CURRENT_USER", "Software\\甲", name, status);
    }
    bool hasKey(const QString& path) { return reg.OpenKeyF(QString(path), QString("R")); }
};

TEST_F(Registries, ANumberIsReadBackWithItsSign) {
    EXPECT_TRUE(reg.SetDWORDValueA(key(), "n", 123456));
    EXPECT_TRUE(reg.SetDWORDValueA(key(), "m", -2));
    EXPECT_EQ(number("n"), "number 123456");
    EXPECT_EQ(number("m"), "number -2");
    EXPECT_TRUE(file.lines().contains("\"m\"=dword:fffffffe"));
}

TEST_F(Registries, AMissingNumberIsTheTextErrorAndNoNumber) {
    EXPECT_EQ(number("none"), "Error");
    EXPECT_EQ(word(reg.GetDWORDValueA(missing(), "n")), "Error");
}

TEST_F(Registries, ANumberOfAKeyPathThatIsNoneIsTheEmptyText) {
    EXPECT_EQ(word(reg.GetDWORDValueA(QString("Software"), "n")), "");
}

TEST_F(Registries, MoreThanFourBytesAreNoNumberAndFewerAreItsLowBytes) {
    reg.SetBinaryValueA(key(), "five", QByteArray("\1\2\3\4\5", 5));
    reg.SetBinaryValueA(key(), "two", QByteArray("\1\2", 2));
    EXPECT_EQ(number("five"), "Error");
    EXPECT_EQ(reg.LastStatus(), 234);
    EXPECT_EQ(number("two"), "number 513");
}

TEST_F(Registries, BytesAreReadBackOneCharacterEach) {
    const QByteArray bytes("\x00\x01\x7F\x80\xFF", 5);
    EXPECT_TRUE(reg.SetBinaryValueA(key(), "b", bytes));
    EXPECT_EQ(reg.GetBinaryValueA(key(), "b"), QString::fromLatin1(bytes));
    EXPECT_TRUE(file.lines().contains("\"b\"=hex:00,01,7f,80,ff"));
}

TEST_F(Registries, NoBytesAreAValueTooAndNotAnError) {
    EXPECT_TRUE(reg.SetBinaryValueA(key(), "b", {}));
    EXPECT_EQ(reg.GetBinaryValueA(key(), "b"), "");
    EXPECT_EQ(reg.GetBinaryValueA(key(), "none"), "Error");
    EXPECT_EQ(reg.GetBinaryValueA(missing(), "b"), "Error");
}

TEST_F(Registries, TheBytesOfATextAreThoseOfTheLocalCodePage) {
    reg.SetStringValueA(key(), "t", "工a");
    EXPECT_EQ(reg.GetBinaryValueA(key(), "t"), QString::fromLatin1("\xB9\xA4\x61"));
}

TEST_F(Registries, ATextIsStoredWithoutTerminatorSoReadingItLosesItsLastCharacter) {
    EXPECT_TRUE(reg.SetStringValueA(key(), "t", "工程文档"));
    EXPECT_EQ(raw("t"), "工程文档");
    EXPECT_EQ(reg.GetStringValueA(key(), "t"), "工程文");
}

TEST_F(Registries, WritingIntoAMissingKeyFailsAndMakesNone) {
    EXPECT_FALSE(reg.SetDWORDValueA(missing(), "n", 1));
    EXPECT_FALSE(reg.SetBinaryValueA(missing(), "n", "x"));
    EXPECT_FALSE(reg.SetStringValueA(missing(), "n", "x"));
    EXPECT_FALSE(reg.DelRegValueA(missing(), "n"));
    EXPECT_EQ(reg.LastStatus(), 2);
    EXPECT_FALSE(hasKey(missing()));
}

TEST_F(Registries, AKeyPathThatIsNoneFailsEverywhere) {
    for (const char* path : {"HKEY_CURRENT_USER\\Software\\", "Software\\甲", "HKEY_NONE\\甲"}) {
        EXPECT_FALSE(reg.CreateKey(QString(path), true)) << path;
        EXPECT_FALSE(reg.OpenKeyF(QString(path), QString("R"))) << path;
        EXPECT_FALSE(reg.SetDWORDValueA(QString(path), "n", 1)) << path;
        EXPECT_FALSE(reg.SetBinaryValueA(QString(path), "n", "x")) << path;
        EXPECT_EQ(reg.GetBinaryValueA(QString(path), "n"), "") << path;
        EXPECT_FALSE(reg.DeleteKey(QString(path), "x")) << path;
        EXPECT_FALSE(reg.SetStringValueA(QString(path), "n", "x")) << path;
        EXPECT_FALSE(reg.DelRegValueA(QString(path), "n")) << path;
    }
}

TEST_F(Registries, CreatingWithTheFlagClosesTheKeyAndSaysTrue) {
    EXPECT_TRUE(reg.CreateKey(missing(), true));
    EXPECT_EQ(file.openKeys(), 0);
    EXPECT_FALSE(reg.SetDWORDVal("n", 1));
    EXPECT_TRUE(hasKey(missing()));
}

TEST_F(Registries, CreatingWithoutTheFlagKeepsTheKeyAndSaysFalse) {
    EXPECT_FALSE(reg.CreateKey(missing(), false));
    EXPECT_EQ(file.openKeys(), 1);
    EXPECT_TRUE(reg.SetDWORDVal("n", 7));
    EXPECT_EQ(word(reg.GetDWORDValueA(missing(), "n")), "number 7");
}

TEST_F(Registries, CreatingAKeyThatIsThereOpensItAndMakesItsParentsOtherwise) {
    reg.SetDWORDValueA(key(), "n", 1);
    EXPECT_TRUE(reg.CreateKey(key(), true));
    EXPECT_EQ(number("n"), "number 1");
    EXPECT_TRUE(reg.CreateKey(QString(missing() + "\\a\\b"), true));
    EXPECT_TRUE(hasKey(missing()));
    EXPECT_TRUE(hasKey(missing() + "\\A"));
}

TEST_F(Registries, OpeningAndCreatingCloseTheEarlierKeyFirst) {
    EXPECT_TRUE(reg.OpenKeyF(key(), QString("R")));
    EXPECT_FALSE(reg.CreateKey(missing(), false));
    EXPECT_TRUE(reg.OpenKeyF(key(), QString("W")));
    EXPECT_EQ(file.openKeys(), 1);
    EXPECT_FALSE(reg.OpenKeyF(QString(missing() + "\\none"), QString("W")));
    EXPECT_EQ(file.openKeys(), 0);
}

TEST_F(Registries, TheEndOfTheObjectClosesTheCurrentKey) {
    {
        RegOperation other(file);
        EXPECT_TRUE(other.OpenKeyF(key(), QString("R")));
        EXPECT_EQ(file.openKeys(), 1);
    }
    EXPECT_EQ(file.openKeys(), 0);
}

TEST_F(Registries, TheModeIsTakenInUpperCaseAndLeftSo) {
    QString mode = "r";
    EXPECT_TRUE(reg.OpenKeyF(key(), mode));
    EXPECT_EQ(mode, "R");
    EXPECT_FALSE(reg.SetDWORDVal("n", 1));
    EXPECT_EQ(reg.LastStatus(), 5);
}

TEST_F(Registries, EveryModeButReadingMayWrite) {
    for (const char* mode : {"w", "W", "x", ""}) {
        EXPECT_TRUE(reg.OpenKeyF(key(), QString(mode)));
        EXPECT_TRUE(reg.SetDWORDVal("n", 1)) << mode;
        EXPECT_TRUE(reg.SetBinaryVal("b", "x")) << mode;
        EXPECT_TRUE(reg.SetStringVal("s", "x")) << mode;
        EXPECT_TRUE(reg.DelReGval("n")) << mode;
    }
}

TEST_F(Registries, WithoutACurrentKeyTheValOperationsFail) {
    EXPECT_FALSE(reg.SetDWORDVal("n", 1));
    EXPECT_FALSE(reg.SetBinaryVal("n", "x"));
    EXPECT_FALSE(reg.SetStringVal("n", "x"));
    EXPECT_FALSE(reg.DelReGval("n"));
    EXPECT_EQ(reg.LastStatus(), 6);
}

TEST_F(Registries, DeletingAValueTwiceFailsTheSecondTime) {
    reg.SetDWORDValueA(key(), "n", 1);
    EXPECT_TRUE(reg.DelRegValueA(key(), "N"));
    EXPECT_FALSE(reg.DelRegValueA(key(), "n"));
    EXPECT_EQ(reg.LastStatus(), 2);
}

TEST_F(Registries, DeletingAKeyIsTrueOnceTheParentOpenedAlsoWhenTheSubKeyIsNotThere) {
    reg.CreateKey(key("\\a"), true);
    EXPECT_TRUE(reg.DeleteKey(key(), "a"));
    EXPECT_EQ(reg.LastStatus(), 0);
    EXPECT_FALSE(hasKey(key("\\a")));
    EXPECT_TRUE(reg.DeleteKey(key(), "a"));
    EXPECT_EQ(reg.LastStatus(), 2);
    EXPECT_FALSE(reg.DeleteKey(missing(), "a"));
}

TEST_F(Registries, AKeyWithSubKeysIsNotDeletedThoughTheResultIsTrue) {
    reg.CreateKey(key("\\a\\b"), true);
    EXPECT_TRUE(reg.DeleteKey(key(), "a"));
    EXPECT_EQ(reg.LastStatus(), 5);
    EXPECT_TRUE(hasKey(key("\\a\\b")));
}

TEST_F(Registries, DeletingAKeyLeavesItsParentThere) {
    reg.CreateKey(QString(missing() + "\\a"), true);
    EXPECT_TRUE(reg.DeleteKey(missing(), "a"));
    EXPECT_TRUE(hasKey(missing()));
}

TEST_F(Registries, TheProtectionOfACurrentKeyIsAStatusAlone) {
    reg.GetSecurityReg();
    EXPECT_EQ(reg.LastStatus(), 6);
    reg.OpenKeyF(key(), QString("R"));
    reg.GetSecurityReg();
    EXPECT_EQ(reg.LastStatus(), 0);
}

TEST_F(Registries, TheDumpShowsNamesDataProbeLinesAndItsLength) {
    test::FakeMessageBoxes boxes;
    file = RegistryFile::parse("REGEDIT4\n[HKEY_USERS\\a]\n\"t\"=\"文\"\n\"b\"=hex:01,ff\n"
                               "\"n\"=dword:00000102\n\"x\"=hex(2):25,00\n");
    reg.DumpValues(QString("HKEY_USERS\\a"), boxes);
    ASSERT_EQ(boxes.shown.size(), 1U);
    const QString text = "t\r文\rb\r1 255\rn\r2 1 0 0\rx\r\rabc\rbbb\rccc\r";
    EXPECT_EQ(boxes.shown[0].text, text + " " + QString::number(text.size()));
}

TEST_F(Registries, ADumpOfAMissingKeyShowsNothing) {
    test::FakeMessageBoxes boxes;
    reg.DumpValues(missing(), boxes);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST(ErrorTexts, EachStatusHasItsWords) {
    const auto text = [](Status status) { return RegOperation::ErrorText(status); };
    EXPECT_EQ(text(2), "Bad Key Name");
    EXPECT_EQ(text(4), "Can't Read Key");
    EXPECT_EQ(text(5), "Access to this key is denied");
    EXPECT_EQ(text(8), "Out of memory");
    EXPECT_EQ(text(14), "Out of memory");
    EXPECT_EQ(text(87), "Invalid Parameter");
    EXPECT_EQ(text(234), "There is more data than the buffer has been allocated to hold.");
    EXPECT_EQ(text(1009), "The Registry Database is corrupt!");
    EXPECT_EQ(text(1010), "Bad Key Name");
    EXPECT_EQ(text(1011), "Can't Open Key");
    EXPECT_EQ(text(1012), "Can't Read Key");
    EXPECT_EQ(text(1013), "Can't Write Key");
    EXPECT_EQ(text(1015), "The Registry Database is corrupt!");
    EXPECT_EQ(text(0), "Undefined Error Code:  0");
    EXPECT_EQ(text(6), "Undefined Error Code:  6");
}

TEST_F(Registries, RawReadingKeepsTheTerminatorAndLeavesTheStatusAlone) {
    file = RegistryFile::parse("REGEDIT4\n[HKEY_CURRENT_USER\\Software\\甲]\n\"t\"=\" 文 \"\n");
    long status = 42;
    EXPECT_EQ(ReadRegistryRaw(file, "HKEY_CURRENT_USER", "Software\\甲", "t", status),
              QString(" 文 ") + QChar(u'\0'));
    EXPECT_EQ(status, 42);
    EXPECT_EQ(file.openKeys(), 0);
}

TEST_F(Registries, RawReadingOfAnUnknownRootIsEmptyAndNoFailure) {
    long status = 42;
    EXPECT_EQ(ReadRegistryRaw(file, "HKCU", "Software\\甲", "t", status), "");
    EXPECT_EQ(status, 42);
}

TEST_F(Registries, RawReadingOfAMissingKeyOrValueHasStatusMinusOne) {
    long status = 0;
    EXPECT_EQ(ReadRegistryRaw(file, "HKEY_CURRENT_USER", "Software\\乙", "t", status), "");
    EXPECT_EQ(status, -1);
    status = 0;
    EXPECT_EQ(ReadRegistryRaw(file, "HKEY_CURRENT_USER", "Software\\甲", "t", status), "");
    EXPECT_EQ(status, -1);
}

TEST_F(Registries, RawReadingKnowsAllSevenRoots) {
    for (const char* root :
         {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_CONFIG", "HKEY_CURRENT_USER", "HKEY_DYN_DATA",
          "HKEY_LOCAL_MACHINE", "HKEY_PERFORMANCE_DATA", "HKEY_USERS"}) {
        auto one = RegistryFile::parse("REGEDIT4\n[" + QByteArray(root) + "\\a]\n@=dword:41\n");
        long status = 0;
        EXPECT_EQ(ReadRegistryRaw(one, root, "a", "", status),
                  QString::fromLatin1(QByteArray("A\0\0\0", 4)))
            << root;
        EXPECT_EQ(status, 0) << root;
    }
}

struct MadeFolders : testing::Test {
    test::TemporaryFolder folder;
    static QString path(const QStringList& names) { return names.join(files::separator()); }
};

TEST_F(MadeFolders, AMissingBaseIsOneAndAFolderThatIsThereIsTwo) {
    folder.makeFolder("a");
    EXPECT_EQ(RegOperation::MCrDir("a", folder.path("none")), 1);
    EXPECT_EQ(RegOperation::MCrDir("a", folder.path()), 2);
    EXPECT_EQ(RegOperation::MCrDir(path({"a", ""}), folder.root()), 2);
}

TEST_F(MadeFolders, EveryLevelIsMadeAndTheAnswerIsZero) {
    EXPECT_EQ(RegOperation::MCrDir("工程", folder.path()), 0);
    EXPECT_EQ(RegOperation::MCrDir(path({"工程", "b", "c", ""}), folder.path()), 0);
    EXPECT_TRUE(folder.exists("工程/b/c"));
}

TEST_F(MadeFolders, AFirstLevelWithNothingBehindItsSeparatorIsZeroOrThereAlready) {
    EXPECT_EQ(RegOperation::MCrDir(path({"a", "", ""}), folder.path()), 0);
    EXPECT_TRUE(folder.exists("a"));
    EXPECT_EQ(folder.names("a").size(), 0);
}

TEST_F(MadeFolders, AFolderThatCannotBeMadeRaisesTheFileSystemsError) {
    folder.write("file", "x");
    EXPECT_TRUE(test::errorNumberOf([&] {
                    RegOperation::MCrDir(path({"file", "b"}), folder.path());
                }).has_value());
}

} // namespace
