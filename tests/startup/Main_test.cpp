#include "startup/Main.h"

#include "platform/registry/RegistryFile.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

class RecordingWindows : public ProgramWindows {
public:
    void showMainForm() override {
        shown << "MainForm";
        if (fails) {
            throw RunTimeError(7, u"内存溢出");
        }
    }
    void showFrmBid() override { shown << "frmBid"; }
    QStringList shown;
    bool fails = false;
};

// An empty program folder "app" in a temporary folder, and a registry as the test writes it.
struct StartUp : testing::Test {
    test::TemporaryFolder folder;
    test::FakeMessageBoxes messages;
    test::CountingSplash splash;
    RecordingWindows windows;
    registry::RegistryFile registry;
    modMain state;

    StartUp() { folder.makeFolder("app"); }

    // The value "cfg", and Word's folder when one is given.
    void configure(const QString& cfg, const QString& word = {}) {
        const auto escaped = [](QString text) { return text.replace('\\', "\\\\").toUtf8(); };
        QByteArray text = "REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH]\n\"cfg\"=\"" +
                          escaped(cfg) + "\"\n";
        if (!word.isEmpty()) {
            text += "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Office\\8.0\\Word\\InstallRootSR2]\n"
                    "\"Path\"=\"" +
                    escaped(word) + "\"\n";
        }
        registry = registry::RegistryFile::parse(text);
    }
    void configureWork(const QString& work) {
        folder.write("config/cfgpath", "other\nx\nwork\n" + work.toUtf8() + "\n");
        configure(folder.path("config"));
    }
    bool start() { return Main(state, folder.path("app"), {registry, splash, messages, windows}); }
    QString in(const QString& name) const { return folder.path("app/" + name); }
    QString folderIn(const QString& name) const { return files::withSeparator(in(name)); }
    void expectFailure(const QString& number) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_TRUE(messages.shown[0].text.startsWith(number))
            << messages.shown[0].text.toStdString();
        EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
        EXPECT_EQ(messages.shown[0].title, "提示");
    }
};

TEST_F(StartUp, WithoutAnyConfigurationThePlansLieBelowTheProgram) {
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gAppPath, files::withSeparator(folder.path("app")));
    EXPECT_EQ(state.gWorkPath, folderIn("工程文档管理"));
    EXPECT_EQ(state.gUserTplPath, folderIn("sys/用户模板"));
    EXPECT_TRUE(folder.exists("app/工程文档管理"));
    EXPECT_TRUE(folder.exists("app/sys/用户模板/Db_UsTemplate.mdb"));
    EXPECT_TRUE(folder.exists("app/sys/Database/Db_Template.mdb"));
    EXPECT_TRUE(folder.exists("app/sys/Database/Db_BidSet.mdb"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StartUp, TheWindowsShowInOrderAndTheSplashGoes) {
    EXPECT_TRUE(start());
    EXPECT_EQ(windows.shown, QStringList({"MainForm", "frmBid"}));
    EXPECT_FALSE(splash.up);
}

TEST_F(StartUp, TitleAndHelpFileAreSet) {
    start();
    EXPECT_EQ(state.gAppTitle, "TREL标书管理");
    EXPECT_EQ(state.HelpFile, in("Qvnd.hlp"));
}

TEST_F(StartUp, TheDatabasesAreOpenWithTheirTables) {
    start();
    EXPECT_EQ(state.gDbUser->TableDefs().Names(),
              QStringList({"遍历表", "当前表", "标书表", "temp"}));
    EXPECT_EQ(state.gDbTemplate->TableDefs().Names(), QStringList({"遍历表"}));
    EXPECT_TRUE(state.gDbBidSet->TableDefs().Contains("章节设置表"));
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(StartUp, AnEmptyConfigurationValueMeansTheDefaultWorkFolderWithThePlansInIt) {
    configure("");
    folder.makeFolder("app/sys");
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gWorkPath, folderIn("工程文档管理"));
    EXPECT_EQ(state.gUserTplPath, folderIn("工程文档管理/用户模板"));
}

TEST_F(StartUp, AConfigurationWithoutItsFileMeansTheDefaultWorkFolderWithThePlansBelowSys) {
    configure(folder.path("config"));
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gWorkPath, folderIn("工程文档管理"));
    EXPECT_EQ(state.gUserTplPath, folderIn("sys/用户模板"));
}

TEST_F(StartUp, AnEmptyLineBehindTheKeyWorkCountsAsNotConfigured) {
    folder.write("config/cfgpath", "work\n\n");
    configure(folder.path("config"));
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gUserTplPath, folderIn("sys/用户模板"));
}

TEST_F(StartUp, AConfiguredWorkFolderIsUsed) {
    folder.makeFolder("工作");
    folder.makeFolder("app/sys");
    configureWork(folder.path("工作"));
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gWorkPath, files::withSeparator(folder.path("工作")));
    EXPECT_EQ(state.gUserTplPath, files::withSeparator(folder.path("工作/用户模板")));
    EXPECT_TRUE(folder.exists("工作/用户模板/Db_UsTemplate.mdb"));
}

TEST_F(StartUp, AConfiguredWorkFolderThatIsGoneFallsBackToTheDefaultWithThePlansInIt) {
    folder.makeFolder("app/sys");
    configureWork(folder.path("工作"));
    EXPECT_TRUE(start());
    EXPECT_FALSE(folder.exists("工作"));
    EXPECT_EQ(state.gWorkPath, folderIn("工程文档管理"));
    EXPECT_EQ(state.gUserTplPath, folderIn("工程文档管理/用户模板"));
}

TEST_F(StartUp, AWorkValueOfOneOrTwoCharactersThatNamesNoFolderIsKept) {
    configureWork("zq");
    EXPECT_FALSE(start());
    EXPECT_EQ(state.gWorkPath, files::withSeparator("zq"));
    EXPECT_EQ(state.gUserTplPath, files::withSeparator(files::withSeparator("zq") + "用户模板"));
    expectFailure("76路径未找到");
}

TEST_F(StartUp, AWorkValueOfThreeCharactersThatNamesNoFolderGivesWayToTheDefault) {
    folder.makeFolder("app/sys");
    configureWork("zqx");
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gWorkPath, folderIn("工程文档管理"));
}

TEST_F(StartUp, WordsFolderComesFromTheRegistry) {
    configure("", "/opt/word");
    folder.makeFolder("app/sys");
    start();
    EXPECT_EQ(state.gWordRoot, files::withSeparator("/opt/word"));
}

TEST_F(StartUp, WithoutWordsValueItsFolderIsTheWordError) {
    EXPECT_TRUE(start());
    EXPECT_EQ(state.gWordRoot, files::withSeparator("Error"));
}

TEST_F(StartUp, WithoutASysFolderAndWithAWorkFolderTheDatabaseFolderCannotBeMade) {
    folder.makeFolder("工作");
    configureWork(folder.path("工作"));
    EXPECT_FALSE(start());
    expectFailure("76路径未找到");
    EXPECT_TRUE(splash.up);
    EXPECT_NE(state.gDbUser, nullptr);
    EXPECT_EQ(state.gDbTemplate, nullptr);
    EXPECT_TRUE(windows.shown.isEmpty());
}

TEST_F(StartUp, WithAnEmptySysFolderTheDatabasesAreMadeAndSeeded) {
    folder.makeFolder("app/sys");
    EXPECT_TRUE(start());
    EXPECT_EQ(test::OutlineWorld::column(*state.gDbBidSet, "章节设置表", u"级别").size(), 9);
}

TEST_F(StartUp, ASysFolderOfAnotherSpellingIsTheSameFolder) {
    folder.makeFolder("app/SYS");
    EXPECT_TRUE(start());
    EXPECT_EQ(folder.names("app"), QStringList({"SYS", "工程文档管理"}));
    EXPECT_EQ(state.gSysPath, folderIn("SYS"));
    EXPECT_TRUE(folder.exists("app/SYS/Database/Db_BidSet.mdb"));
}

TEST_F(StartUp, SysPathIsSpeltAsTheFolderThatStartUpMade) {
    EXPECT_TRUE(start());
    EXPECT_TRUE(QDir(state.gSysPath).exists());
    EXPECT_EQ(state.gSysPath.toLower(), folderIn("sys").toLower());
}

TEST_F(StartUp, ASecondStartKeepsWhatIsThere) {
    start();
    const auto list = state.gDbUser->OpenRecordset("Select * from 当前表");
    list->AddNew();
    list->Set(u"名称", QString("工程甲"));
    list->Update();
    modMain second;
    EXPECT_TRUE(Main(second, folder.path("app"), {registry, splash, messages, windows}));
    EXPECT_EQ(second.gDbUser->OpenRecordset("Select * from 当前表")->Get(u"名称").ToText(),
              "工程甲");
}

TEST_F(StartUp, AFileThatIsNoDatabaseStopsTheStartAndIsLeftAlone) {
    folder.write("app/sys/用户模板/Db_UsTemplate.mdb", "not a database at all, just text");
    EXPECT_FALSE(start());
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(state.gDbUser, nullptr);
    EXPECT_EQ(folder.read("app/sys/用户模板/Db_UsTemplate.mdb"),
              "not a database at all, just text");
}

TEST_F(StartUp, AFailureShowsTheNumberDirectlyFollowedByTheDescription) {
    windows.fails = true;
    EXPECT_FALSE(start());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "7内存溢出");
    EXPECT_EQ(windows.shown, QStringList({"MainForm"}));
    EXPECT_TRUE(splash.up);
}

} // namespace
