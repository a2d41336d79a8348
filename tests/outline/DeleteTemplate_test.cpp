#include "outline/DeleteTemplate.h"

#include "TemplateWorld.h"
#include "platform/error/RunTimeError.h"
#include "store/OutlineFolders.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using desktop::Answer;
using desktop::Icon;

namespace {

// The real disk, on which some files cannot be deleted for a time.
class BusyFiles : public files::DiskFileSystem {
public:
    void DeleteFolder(const QString& path, bool force) override {
        if (tries++ < busyFor) {
            throw RunTimeError(error::permissionDenied, u"没有权限");
        }
        DiskFileSystem::DeleteFolder(path, force);
    }
    void DeleteFile(const QString& path) override {
        if (path.endsWith(busyFile)) {
            throw RunTimeError(busyNumber, u"没有权限");
        }
        DiskFileSystem::DeleteFile(path);
    }

    int busyFor = 0;
    int tries = 0;
    QString busyFile = "?";
    long busyNumber = error::permissionDenied;
};

struct DeletingFromATemplate : testing::Test, test::TemplateWorld {
    DeletingFromATemplate() {
        auto disk = std::make_unique<BusyFiles>();
        files = disk.get();
        state.gFso = std::move(disk);
        messages.otherwise = Answer::ok;
    }
    DeleteOutcome remove(const QString& key) {
        listTemplates();
        selectTemplate(key);
        return mnuDelTemplate(state, workbench, services());
    }
    BusyFiles* files = nullptr;
};

TEST_F(DeletingFromATemplate, AsksWithOkAndCancelAndWithoutTitleOrIcon) {
    makeTemplate({"T", "T.1d"});
    remove("T.1");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "您真的要删除‘名T.1’吗？");
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::okCancel);
    EXPECT_EQ(messages.shown[0].icon, Icon::none);
    EXPECT_EQ(messages.shown[0].title, "");
}

TEST_F(DeletingFromATemplate, WhatWasAskedForGoesEvenWhenTheTreeWasListedAnewMeanwhile) {
    makeTemplate({"T", "T.1d", "T.2d"});
    listTemplates();
    selectTemplate("T.1");
    messages.whileOpen = [this] {
        messages.whileOpen = nullptr;
        listTemplates();
        selectTemplate("T.2");
    };
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::deleted);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_TRUE(state.Remarks.isEmpty());
}

TEST_F(DeletingFromATemplate, CancelChangesNothing) {
    makeTemplate({"T", "T.1d"});
    messages.otherwise = Answer::cancel;
    EXPECT_EQ(remove("T.1").result, TemplateDeleted::cancelled);
    EXPECT_EQ(remove("T").result, TemplateDeleted::cancelled);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"T", "T.1"}));
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(DeletingFromATemplate, WithNothingSelectedItEndsInSilence) {
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(state.gWs->InTransaction());
}

// A root

TEST_F(DeletingFromATemplate, ARootTakesTableRowNodeAndFolderAlong) {
    makeTemplate({"S", "S.1d"});
    makeTemplate({"T", "T.1d"});
    EXPECT_EQ(remove("T").result, TemplateDeleted::deleted);
    EXPECT_FALSE(hasTable("T"));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"S"});
    EXPECT_FALSE(folder.exists("Sys/标书模板/T"));
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"S", "S.1"}));
    EXPECT_FALSE(state.gWs->InTransaction());
    EXPECT_TRUE(folder.exists(templateFile("S.1")));
}

TEST_F(DeletingFromATemplate, ARootHidesTheBrowseItem) {
    makeTemplate({"T"});
    workbench.mnuBroTemplate = true;
    remove("T");
    EXPECT_FALSE(workbench.mnuBroTemplate);
}

TEST_F(DeletingFromATemplate, ANodeLeavesTheBrowseItem) {
    makeTemplate({"T", "T.1"});
    workbench.mnuBroTemplate = true;
    remove("T.1");
    EXPECT_TRUE(workbench.mnuBroTemplate);
}

TEST_F(DeletingFromATemplate, AnotherTemplateWhoseNameBeginsAlikeStays) {
    makeTemplate({"T", "T.1d"});
    makeTemplate({"T1", "T1.1d"});
    remove("T");
    EXPECT_EQ(templateKeys("T1"), QStringList({"T1", "T1.1"}));
    EXPECT_TRUE(folder.exists(templateFile("T1.1")));
}

TEST_F(DeletingFromATemplate, AFolderInUseIsToldAndTriedUntilItGoes) {
    makeTemplate({"T", "T.1d"});
    files->busyFor = 3;
    EXPECT_EQ(remove("T").result, TemplateDeleted::deleted);
    ASSERT_EQ(messages.shown.size(), 4U);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_EQ(messages.shown[i].text, "请关闭你正在使用的东西！");
        EXPECT_EQ(messages.shown[i].title, "提示");
        EXPECT_EQ(messages.shown[i].icon, Icon::exclamation);
    }
    EXPECT_EQ(files->tries, 4);
    EXPECT_FALSE(folder.exists("Sys/标书模板/T"));
}

TEST_F(DeletingFromATemplate, WhenTheFolderIsInUseTableAndRowHaveGoneForGood) {
    makeTemplate({"T", "T.1d"});
    files->busyFor = 1;
    bool committed = false;
    struct Watching : test::FakeMessageBoxes {
        Answer show(const desktop::Message& message) override {
            if (message.buttons == desktop::Buttons::ok) {
                *committed =
                    !state->gWs->InTransaction() && !state->gDbTemplate->TableDefs().Contains("T");
            }
            return FakeMessageBoxes::show(message);
        }
        bool* committed = nullptr;
        modMain* state = nullptr;
    } watching;
    watching.otherwise = Answer::ok;
    watching.committed = &committed;
    watching.state = &state;
    listTemplates();
    selectTemplate("T");
    mnuDelTemplate(state, workbench, {watching, splash, dialogs, events, word, longRun});
    EXPECT_TRUE(committed);
}

TEST_F(DeletingFromATemplate, WhereNobodyCanCloseTheFileItEndsWithTheReason) {
    makeTemplate({"T", "T.1d"});
    files->busyFor = 1000;
    struct Nobody : test::FakeMessageBoxes {
        bool askForRetry(const QString& text, Icon icon, const QString& title) override {
            FakeMessageBoxes::askForRetry(text, icon, title);
            return shown.size() < 5;
        }
    } nobody;
    nobody.otherwise = Answer::ok;
    listTemplates();
    selectTemplate("T");
    const auto outcome =
        mnuDelTemplate(state, workbench, {nobody, splash, dialogs, events, word, longRun});
    EXPECT_EQ(outcome.result, TemplateDeleted::failed);
    EXPECT_EQ(outcome.reason, "没有权限");
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
}

TEST_F(DeletingFromATemplate, AMissingFolderEndsItInSilenceBehindTheCommit) {
    makeTemplate({"T"});
    listTemplates();
    QDir(folder.path("Sys/标书模板/T")).removeRecursively();
    selectTemplate("T");
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_FALSE(state.gWs->InTransaction());
    EXPECT_FALSE(hasTable("T"));
}

TEST_F(DeletingFromATemplate, ARootWithoutItsTableLeavesTheTransactionOpenAndTheRestAsItWas) {
    makeTemplate({"T", "T.1d"});
    listTemplates();
    selectTemplate("T");
    state.gDbTemplate->TableDefs().Delete("T");
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"T", "T.1"}));
    EXPECT_TRUE(folder.exists("Sys/标书模板/T"));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
}

TEST_F(DeletingFromATemplate, ARootWithoutItsRowLosesTableAndNodeButKeepsItsFolder) {
    makeTemplate({"T", "T.1d"});
    listTemplates();
    selectTemplate("T");
    state.gDbTemplate->Execute(QStringLiteral("Delete * from 遍历表"));
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_FALSE(hasTable("T"));
    EXPECT_EQ(workbench.TrvTemplate.Count(), 0);
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
}

// Any other node

TEST_F(DeletingFromATemplate, ANodeTakesItsSubtreeAlongInBothDatabasesAndOnDisk) {
    makeTemplate({"T", "T.1", "T.1.1d", "T.1.2", "T.1.2.1d", "T.2d"});
    EXPECT_EQ(remove("T.1").result, TemplateDeleted::deleted);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.2.doc", "T.mdb"}));
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"T", "T.2"}));
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(DeletingFromATemplate, ANodeTakesAlongRowsAndFilesOfEveryKeyThatMerelyBeginsAlike) {
    makeTemplate({"T", "T.1d", "T.10d", "T.11d", "T.2d"});
    remove("T.1");
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.2.doc", "T.mdb"}));
}

TEST_F(DeletingFromATemplate, FileNamesAreComparedWithoutCaseAndWhateverTheirExtension) {
    makeTemplate({"Ta", "Ta.1d", "Ta.2d"});
    folder.write("Sys/标书模板/Ta/tA.1.doc.bak", "");
    folder.write("Sys/标书模板/Ta/TA.12.rtf", "");
    folder.write("Sys/标书模板/Ta/xTa.1.doc", "");
    remove("Ta.1");
    EXPECT_EQ(folder.names("Sys/标书模板/Ta"), QStringList({"Ta.2.doc", "Ta.mdb", "xTa.1.doc"}));
}

TEST_F(DeletingFromATemplate, TheTreeIsListedAnewBehindANode) {
    makeTemplate({"T", "T.1d", "T.10d", "T.2d"});
    listTemplates();
    workbench.TrvTemplate.Add("stale", "stale", image::root, image::rootSelected);
    selectTemplate("T.1");
    mnuDelTemplate(state, workbench, services());
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"T", "T.2"}));
}

TEST_F(DeletingFromATemplate, AFileInUseStaysAndTheRestGoes) {
    makeTemplate({"T", "T.1", "T.1.1d", "T.1.2d", "T.1.3d"});
    files->busyFile = "T.1.2.doc";
    EXPECT_EQ(remove("T.1").result, TemplateDeleted::deleted);
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.2.doc", "T.mdb"}));
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(state.Remarks, QStringList("1 个文件没有删去，可能正在使用：T.1.2.doc"));
    EXPECT_EQ(templateKeys("T"), QStringList{"T"});
}

TEST_F(DeletingFromATemplate, AnyOtherFailureOfAFileEndsItAndTheNodeStaysOnTheScreen) {
    makeTemplate({"T", "T.1", "T.1.1d", "T.1.2d", "T.1.3d"});
    files->busyFile = "T.1.2.doc";
    files->busyNumber = error::pathAccess;
    EXPECT_EQ(remove("T.1").result, TemplateDeleted::failed);
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.2.doc", "T.1.3.doc", "T.mdb"}));
    EXPECT_EQ(templateKeys("T"), QStringList{"T"});
    EXPECT_NE(workbench.TrvTemplate.find("T.1"), nullptr);
}

TEST_F(DeletingFromATemplate, AMissingDatabaseOfTheFolderLeavesTheTransactionOpenAndTheRowsThere) {
    makeTemplate({"T", "T.1d"});
    QFile::remove(store::templateDatabasePath(state, "T"));
    EXPECT_EQ(remove("T.1").result, TemplateDeleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
}

TEST_F(DeletingFromATemplate, WithoutARollbackTheRowsOfTheFoldersDatabaseAreGoneForGood) {
    makeTemplate({"T", "T.1d"});
    listTemplates();
    selectTemplate("T.1");
    state.gDbTemplate->TableDefs().Delete("T");
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_TRUE(state.gWs->InTransaction());
    state.gWs->BeginTrans();
    state.gWs->CommitTrans();
    EXPECT_EQ(templateCopyKeys("T"), QStringList{"T"});
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
}

// Names in statements

TEST_F(DeletingFromATemplate, AKeyThatIsNoBareNameDeletesNothing) {
    makeTemplate({"甲", "甲.1d"});
    for (const char* key : {"甲 乙.1", "甲'.1", "甲#.1", "甲?.1", "甲*.1", "[甲].1", "[甲]",
                            "甲 乙", "甲*", "", ".1", "甲.' or key like '"}) {
        workbench.TrvTemplate.Clear();
        workbench.TrvTemplate.Select(
            &workbench.TrvTemplate.Add(key, "x", image::folder, image::folderSelected));
        EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed)
            << key;
        EXPECT_EQ(templateKeys("甲"), QStringList({"甲", "甲.1"})) << key;
        EXPECT_EQ(templateCopyKeys("甲"), QStringList({"甲", "甲.1"})) << key;
        EXPECT_TRUE(folder.exists(templateFile("甲.1"))) << key;
        EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"甲"}) << key;
    }
}

TEST_F(DeletingFromATemplate, ATemplateWhoseNameNeedsBracketsCannotBePruned) {
    for (const QString name : {"甲 乙", "甲#", "甲-乙"}) {
        makeTemplate({name, name + ".1d"});
        const auto rs = state.gDbTemplate->OpenRecordset("Select * from [" + name + "]");
        workbench.TrvTemplate.Clear();
        FillOutlineTree(*rs, workbench.TrvTemplate);
        selectTemplate(name + ".1");
        EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
        EXPECT_EQ(templateKeys(name), QStringList({name, name + ".1"}));
        EXPECT_EQ(templateCopyKeys(name), QStringList({name, name + ".1"}));
        EXPECT_TRUE(folder.exists(templateFile(name + ".1")));
        EXPECT_TRUE(state.gWs->InTransaction());
    }
}

TEST_F(DeletingFromATemplate, ATemplateWithAnApostropheLosesItsTableAndThenNothingMore) {
    makeTemplate({"甲'乙", "甲'乙.1d"});
    makeTemplate({"甲", "甲.1d"});
    workbench.TrvTemplate.Select(
        &workbench.TrvTemplate.Add("甲'乙", "甲'乙", image::root, image::rootSelected));
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
    EXPECT_FALSE(hasTable("甲'乙"));
    EXPECT_TRUE(folder.exists(templateFile("甲'乙.1")));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList({"甲'乙", "甲"}));
    EXPECT_EQ(templateKeys("甲"), QStringList({"甲", "甲.1"}));
    EXPECT_TRUE(state.gWs->InTransaction());
}

TEST_F(DeletingFromATemplate, EmojiAndRightToLeftTemplatesCanBePruned) {
    for (const QString name : {"塔吊🏗️", "مشروع"}) {
        makeTemplate({name, name + ".1d", name + ".2d"});
        EXPECT_EQ(remove(name + ".1").result, TemplateDeleted::deleted);
        EXPECT_EQ(templateKeys(name), QStringList({name, name + ".2"}));
        EXPECT_FALSE(folder.exists(templateFile(name + ".1")));
        EXPECT_EQ(remove(name).result, TemplateDeleted::deleted);
        EXPECT_FALSE(folder.exists("Sys/标书模板/" + name));
    }
}

TEST_F(DeletingFromATemplate, ATextThatIsNoKeyTakesItsOwnRowAloneAndNoFile) {
    makeTemplate({"T", "T.1d"});
    add(*state.gDbTemplate->OpenRecordset("Select * from T"), {"T.*", "星", "是"});
    folder.write("Sys/标书模板/外.doc", "outside");
    listTemplates();
    selectTemplate("T.*");
    messages.otherwise = desktop::Answer::ok;
    EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::deleted);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_TRUE(folder.exists(templateFile("T.1")));
    EXPECT_EQ(folder.read("Sys/标书模板/外.doc"), "outside");
}

TEST_F(DeletingFromATemplate, ARootWhoseKeyIsAPathDeletesNoFolder) {
    makeTemplate({"T", "T.1d"});
    listTemplates();
    for (const char* key : {"../../外", "/外", "..\\外"}) {
        folder.write("外/文.doc", "outside");
        workbench.TrvTemplate.Select(
            &workbench.TrvTemplate.Add(key, "外", image::root, image::rootSelected));
        messages.otherwise = desktop::Answer::ok;
        EXPECT_EQ(mnuDelTemplate(state, workbench, services()).result, TemplateDeleted::failed);
        state.gWs->CommitTrans();
    }
    EXPECT_TRUE(folder.exists("外/文.doc"));
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
}

} // namespace
