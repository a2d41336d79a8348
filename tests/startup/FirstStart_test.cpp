#include "startup/FirstStart.h"

#include "platform/files/Paths.h"
#include "platform/registry/RegOperation.h"
#include "platform/registry/RegistryFile.h"
#include "startup/Main.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

struct NoWindows : ProgramWindows {
    void showMainForm() override {}
    void showFrmBid() override {}
};

struct FirstStart : testing::Test {
    test::TemporaryFolder folder;
    registry::RegistryFile registry;
    const QString home = folder.path() + files::separator() + "程序";
    const QString documents = folder.path() + files::separator() + "文档";

    QString configuration() {
        return registry::RegOperation(registry).GetStringValueA(
            QString("HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH"), "cfg");
    }
    QString inHome(const QString& name) const { return home + files::separator() + name; }
    void write(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "missing";
    }
};

TEST_F(FirstStart, LaysOutAFolderThatIsNotThere) {
    layOutProgramFolder(home);
    for (const char* name : {"标书模板", "图片库", "自定义"}) {
        EXPECT_TRUE(QDir(inHome("Sys")).exists(name)) << name;
    }
}

TEST_F(FirstStart, LeavesAFolderWithoutSysThatHoldsSomethingAsItIs) {
    write(inHome("别的文件.txt"), "x");
    layOutProgramFolder(home);
    EXPECT_FALSE(QDir(home).exists("Sys"));
}

TEST_F(FirstStart, TheProgramFolderIsTheUsersOwnWithoutAMark) {
    EXPECT_FALSE(isPortable(home));
    EXPECT_NE(programFolder(home), home);
    EXPECT_TRUE(programFolder(home).endsWith(files::separator() + QString("qvnd")));
}

TEST_F(FirstStart, TheProgramFolderIsTheExecutablesOwnWhereAMarkLiesBesideIt) {
    write(inHome("qvnd.portable"), "");
    EXPECT_EQ(programFolder(home), home);
}

TEST_F(FirstStart, LaysOutAPortableFolderThatHoldsTheExecutableFromTheStart) {
    write(inHome("qvnd"), "the executable");
    write(inHome("qvnd.portable"), "");
    layOutProgramFolder(home);
    for (const char* name : {"标书模板", "图片库", "自定义"}) {
        EXPECT_TRUE(QDir(inHome("Sys")).exists(name)) << name;
    }
}

TEST_F(FirstStart, StartUpFindsTheWorkFolderInTheUsersDocuments) {
    layOutProgramFolder(home);
    chooseWorkFolder(registry, home, documents);

    modMain state;
    test::CountingSplash splash;
    test::FakeMessageBoxes messages;
    NoWindows windows;
    ASSERT_TRUE(Main(state, home, {registry, splash, messages, windows}));
    const QString work = documents + files::separator() + "工程文档管理" + files::separator();
    EXPECT_EQ(state.gWorkPath, work);
    EXPECT_EQ(state.gUserTplPath, work + "用户模板" + files::separator());
}

TEST_F(FirstStart, NamesTheProgramFolderAsTheConfigurationFolder) {
    layOutProgramFolder(home);
    chooseWorkFolder(registry, home, documents);
    EXPECT_EQ(configuration(), home);
    EXPECT_EQ(QString::fromUtf8(read(inHome("cfgpath"))),
              "work\n" + documents + files::separator() + "工程文档管理\n");
}

TEST_F(FirstStart, AConfigurationThatIsThereStands) {
    layOutProgramFolder(home);
    chooseWorkFolder(registry, home, documents);
    chooseWorkFolder(registry, home, documents + "2");
    EXPECT_EQ(configuration(), home);
    EXPECT_FALSE(QDir().exists(documents + "2"));
}

TEST_F(FirstStart, WithoutAPlaceForTheWorkFolderNothingIsWritten) {
    layOutProgramFolder(home);
    write(documents, "a file where the folder should be");
    chooseWorkFolder(registry, home, documents);
    EXPECT_EQ(configuration(), "Error");
    EXPECT_FALSE(QFile::exists(inHome("cfgpath")));
}

TEST_F(FirstStart, PlansThatLieBesideTheProgramAlreadyStayInSight) {
    layOutProgramFolder(home);
    write(inHome("Sys/用户模板/Db_UsTemplate.mdb"), "x");
    write(inHome("Sys/用户模板/滨江/滨江.1.doc"), "x");
    chooseWorkFolder(registry, home, documents);
    EXPECT_EQ(configuration(), "Error");
    EXPECT_FALSE(QFile::exists(inHome("cfgpath")));
    EXPECT_FALSE(QDir().exists(documents));
}

TEST_F(FirstStart, AUsedFolderWithoutPlansGetsTheWorkFolderAllTheSame) {
    layOutProgramFolder(home);
    write(inHome("Sys/用户模板/Db_UsTemplate.mdb"), "x");
    chooseWorkFolder(registry, home, documents);
    EXPECT_EQ(configuration(), home);
}

TEST_F(FirstStart, ShippedFilesComeIntoTheProgramFolder) {
    const QString shared = folder.path() + "/shared";
    write(shared + "/Qvnd.hlp", "help");
    write(shared + "/Sys/标书模板/范本/范本.1.doc", "doc");
    bringShippedFiles(shared, home);
    EXPECT_EQ(read(inHome("Qvnd.hlp")), "help");
    EXPECT_EQ(read(inHome("Sys/标书模板/范本/范本.1.doc")), "doc");
}

TEST_F(FirstStart, ANewerHelpReplacesTheOldOneAndTheUsersFilesStay) {
    const QString shared = folder.path() + "/shared";
    write(shared + "/Qvnd.hlp", "new");
    write(shared + "/Sys/图片库/a.png", "shipped");
    write(inHome("Qvnd.hlp"), "old");
    write(inHome("Sys/图片库/a.png"), "the user's own");
    bringShippedFiles(shared, home);
    EXPECT_EQ(read(inHome("Qvnd.hlp")), "new");
    EXPECT_EQ(read(inHome("Sys/图片库/a.png")), "the user's own");
}

TEST_F(FirstStart, NothingShippedIsNoFailure) {
    bringShippedFiles(folder.path() + "/nowhere", home);
    EXPECT_FALSE(QDir(home).exists());
}

} // namespace
