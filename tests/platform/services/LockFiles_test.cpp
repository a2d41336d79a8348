#include "platform/desktop/LockFiles.h"

#include "platform/desktop/Processes.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::desktop;

namespace {

class FakeProcesses : public Processes {
public:
    std::vector<QStringList> commandLines() override { return running; }
    QString hostName() override { return "here"; }
    std::vector<QStringList> running;
};

const QByteArray standardLock =
    ",planner,here,21.11.2026 08:59,file:///home/planner/.config/libreoffice/4;";
const QByteArray ownLock = ",planner,here,21.11.2026 08:59,file:///tmp/own;";
const QStringList office = {"/usr/lib/libreoffice/program/soffice.bin", "--writer"};
const QStringList ownOffice = {"/usr/lib/libreoffice/program/soffice.bin",
                               "-env:UserInstallation=file:///tmp/own"};

struct OpenDocuments : testing::Test {
    test::TemporaryFolder folder;
    FakeProcesses processes;
    LockFiles windows{processes};

    OpenDocuments() { folder.write("甲/施工方案.doc", "x"); }
    bool isOpen() { return windows.isOpenIn({folder.path("甲")}); }
    void lock(const QByteArray& content) { folder.write("甲/.~lock.施工方案.doc#", content); }
};

TEST_F(OpenDocuments, AFolderWithoutLockFilesHoldsNoneOpen) { EXPECT_FALSE(isOpen()); }

TEST_F(OpenDocuments, AFolderThatIsMissingHoldsNoneOpen) {
    EXPECT_FALSE(windows.isOpenIn({folder.path("none"), QString()}));
}

TEST_F(OpenDocuments, ALockOfARunningSuiteCounts) {
    lock(standardLock);
    processes.running = {{"bash"}, office};
    EXPECT_TRUE(isOpen());
}

TEST_F(OpenDocuments, AnyOfTheFoldersMayHoldIt) {
    lock(standardLock);
    processes.running = {office};
    folder.makeFolder("乙");
    EXPECT_TRUE(windows.isOpenIn({folder.path("乙"), folder.root() + "甲/"}));
    EXPECT_FALSE(windows.isOpenIn({folder.path("乙")}));
}

TEST_F(OpenDocuments, ALockOfThisMachineWithoutARunningSuiteIsStale) {
    lock(standardLock);
    processes.running = {{"bash"}, {"/usr/bin/less", "soffice.txt"}};
    EXPECT_FALSE(isOpen());
}

TEST_F(OpenDocuments, ASuiteOfAnotherProfileDoesNotKeepALockAlive) {
    lock(ownLock);
    processes.running = {office};
    EXPECT_FALSE(isOpen());
    processes.running = {office, ownOffice};
    EXPECT_TRUE(isOpen());
    lock(standardLock);
    processes.running = {ownOffice};
    EXPECT_FALSE(isOpen());
}

TEST_F(OpenDocuments, ALockOfAnotherMachineCountsAlways) {
    lock(",planner,there,21.11.2026 08:59,file:///tmp/own;");
    EXPECT_TRUE(isOpen());
}

TEST_F(OpenDocuments, ALockThatCannotBeUnderstoodCounts) {
    lock("");
    EXPECT_TRUE(isOpen());
    lock("nonsense");
    EXPECT_TRUE(isOpen());
}

TEST_F(OpenDocuments, ALockWhoseDocumentIsGoneDoesNotCount) {
    folder.write("甲/.~lock.别的.doc#", ",planner,there,21.11.2026 08:59,;");
    folder.write("甲/~$别的.doc", "x");
    EXPECT_FALSE(isOpen());
}

TEST_F(OpenDocuments, AnOwnerFileCounts) {
    folder.write("甲/~$施工方案.doc", "planner");
    EXPECT_TRUE(isOpen());
}

TEST_F(OpenDocuments, AnOwnerFileLeavesOutTheFirstCharactersOfALongName) {
    folder.write("乙/施工组织设计方案.doc", "x");
    folder.write("乙/~$组织设计方案.doc", "planner");
    EXPECT_TRUE(windows.isOpenIn({folder.path("乙")}));
}

TEST_F(OpenDocuments, AStaleLockSpeaksForTheOwnerFileBesideIt) {
    lock(standardLock);
    folder.write("甲/~$施工方案.doc", "planner");
    EXPECT_FALSE(isOpen());
}

TEST_F(OpenDocuments, OnlyDocumentsOfAWordProcessorAreLookedAt) {
    folder.write("甲/报价.ods", "x");
    folder.write("甲/.~lock.报价.ods#", ",planner,there,21.11.2026 08:59,;");
    EXPECT_FALSE(isOpen());
}

TEST(OfficeLocks, PartsStandBetweenCommasAndMayBeEscaped) {
    const auto lock = parseOfficeLock("Li\\, Wei,li,a\\;b,21.11.2026 08:59,file:///tmp/own;more");
    ASSERT_TRUE(lock);
    EXPECT_EQ(lock->host, "a;b");
    EXPECT_EQ(lock->profile, "file:///tmp/own");
    EXPECT_FALSE(parseOfficeLock("a,b"));
    EXPECT_EQ(parseOfficeLock("a,b,c")->profile, "");
}

TEST(SystemProcessList, ShowsThisTest) {
    SystemProcesses processes;
    bool found = false;
    for (const QStringList& line : processes.commandLines()) {
        found = found || line.value(0).contains("tests_platform");
    }
    EXPECT_TRUE(found);
    EXPECT_FALSE(processes.hostName().isEmpty());
}

} // namespace
