#include "outline/StoreTemplate.h"

#include "TemplateWorld.h"
#include "store/OutlineFolders.h"
#include "support/Commits.h"
#include "support/DragWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using desktop::Icon;

namespace {

struct StoringATemplate : testing::Test, test::TemplateWorld {
    // The plan, made current, with a file for each of its documents.
    void makeCurrentPlan(const QStringList& keys) {
        makePlan(keys.front(), rowsOf(keys));
        for (const auto& row : rowsOf(keys)) {
            if (row.isDocument == u"是") {
                folder.write(planFile(row.key), "plan " + row.key.toUtf8());
            }
        }
        setCurrent(keys.front());
    }
    static QString planFile(const QString& key) {
        return "用户模板/" + tableOfKey(key) + "/" + key + ".doc";
    }
    void setCurrent(const QString& name) {
        state.gDbUser->Execute(QStringLiteral("Delete * from 当前表"));
        const auto current = state.gDbUser->OpenRecordset(QStringLiteral("Select * from 当前表"));
        current->AddNew();
        current->Set(u"名称", name);
        current->Update();
    }
    StoreOutcome store() { return mnuSaveTemplate(state, workbench, services()); }

    void expectNothingStored(const QString& name) {
        EXPECT_EQ(registered(*state.gDbTemplate), QStringList());
        EXPECT_FALSE(folder.exists("Sys/标书模板/" + name));
        EXPECT_EQ(state.gDbTemplate->TableDefs().Names(), QStringList{"遍历表"});
    }
};

TEST_F(StoringATemplate, CopiesTableFolderDatabaseDocumentsAndListsIt) {
    makeCurrentPlan({"T", "T.1", "T.1.7d", "T.2d"});
    EXPECT_EQ(store().result, Stored::stored);
    const QStringList keys = {"T", "T.1", "T.1.7", "T.2"};
    EXPECT_EQ(templateKeys("T"), keys);
    EXPECT_EQ(templateCopyKeys("T"), keys);
    EXPECT_EQ(column(*state.gDbTemplate, "T", u"是否文档"),
              column(*state.gDbUser, "T", u"是否文档"));
    EXPECT_EQ(folder.read("Sys/标书模板/T/T.1.7.doc"), "plan T.1.7");
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.7.doc", "T.2.doc", "T.mdb"}));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
    EXPECT_EQ(shown(workbench.TrvTemplate), keys);
    EXPECT_TRUE(messages.shown.empty());
}

// A table that a killed process left without its row would refuse the plan ever after.
TEST_F(StoringATemplate, TableAndRowOfTheTemplateLastTogether) {
    makeCurrentPlan({"T", "T.1d", "T.2d"});
    test::Commits commits(state.gDbTemplate->Name());
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(StoringATemplate, TheDatabaseOfTheFolderStandsAlone) {
    makeCurrentPlan({"T", "T.1d"});
    store();
    state.gDbTemplate->Execute(QStringLiteral("Delete * from T"));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.1"}));
}

TEST_F(StoringATemplate, TheInformationTableIsNotStored) {
    makeCurrentPlan({"T"});
    state.gDbUser->TableDefs().Append(nameTable("TOrg"));
    store();
    EXPECT_FALSE(hasTable("TOrg"));
    EXPECT_FALSE(state.gWs->OpenDatabase(store::templateDatabasePath(state, "T"))
                     ->TableDefs()
                     .Contains("TOrg"));
}

TEST_F(StoringATemplate, ItIsThePlanOfTheCurrentTableNotTheOneOnTheScreen) {
    makePlan({"S", "S.1"});
    makeCurrentPlan({"T", "T.1"});
    openPlan("S", "S.1");
    store();
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
}

TEST_F(StoringATemplate, TheNameOfAnExistingTemplateIsRefusedAndNothingElseHappens) {
    makeCurrentPlan({"T", "T.1d"});
    makeTable(*state.gDbTemplate, "T", {{"T", "旧"}});
    EXPECT_EQ(store().result, Stored::alreadyThere);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "标书模板中已存在 [ T ] ！");
    EXPECT_EQ(messages.shown[0].icon, Icon::information);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(templateKeys("T"), QStringList{"T"});
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList());
    EXPECT_FALSE(folder.exists("Sys/标书模板/T"));
}

TEST_F(StoringATemplate, APlanCanBeStoredOnceAndIsNotOverwritten) {
    makeCurrentPlan({"T", "T.1d"});
    store();
    folder.write(planFile("T.1"), "newer");
    EXPECT_EQ(store().result, Stored::alreadyThere);
    EXPECT_EQ(folder.read("Sys/标书模板/T/T.1.doc"), "plan T.1");
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
}

TEST_F(StoringATemplate, AFolderThatIsThereKeepsItsOldDatabase) {
    makeCurrentPlan({"T", "T.1d"});
    folder.makeFolder("Sys/标书模板/T");
    makeTable(*create(store::templateDatabasePath(state, "T")), "T", {{"T", "旧"}});
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(templateCopyKeys("T"), QStringList{"T"});
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(folder.read("Sys/标书模板/T/T.1.doc"), "plan T.1");
}

TEST_F(StoringATemplate, AFolderThatIsThereWithoutADatabaseGetsNone) {
    makeCurrentPlan({"T", "T.1d"});
    folder.makeFolder("Sys/标书模板/T");
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_FALSE(folder.exists("Sys/标书模板/T/T.mdb"));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList{"T"});
}

TEST_F(StoringATemplate, AMissingDocumentFileIsPassedBy) {
    makeCurrentPlan({"T", "T.1d", "T.2d", "T.3d"});
    QFile::remove(folder.path(planFile("T.2")));
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.doc", "T.3.doc", "T.mdb"}));
    EXPECT_EQ(templateKeys("T").size(), 4);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoringATemplate, ADocumentThatLiesThereIsOverwritten) {
    makeCurrentPlan({"T", "T.1d"});
    folder.write("Sys/标书模板/T/T.1.doc", "old");
    store();
    EXPECT_EQ(folder.read("Sys/标书模板/T/T.1.doc"), "plan T.1");
}

TEST_F(StoringATemplate, TheFileOfAFolderRowIsNotCopied) {
    makeCurrentPlan({"T", "T.1"});
    folder.write(planFile("T.1"), "stray");
    store();
    EXPECT_FALSE(folder.exists("Sys/标书模板/T/T.1.doc"));
}

TEST_F(StoringATemplate, AnyOtherErrorEndsItInSilenceAndWhatWasDoneStays) {
    makeCurrentPlan({"T", "T.1d"});
    QDir(folder.path("Sys/标书模板")).removeRecursively();
    folder.write("Sys/标书模板", "a file where the folder should be");
    const StoreOutcome outcome = store();
    EXPECT_EQ(outcome.result, Stored::failed);
    EXPECT_FALSE(outcome.reason.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(hasTable("T"));
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList());
}

TEST_F(StoringATemplate, ADocumentThatCannotBeCopiedLeavesTheFolderWithWhatHadComeByThen) {
    makeCurrentPlan({"T", "T.1d", "T.2d"});
    state.gFso =
        std::make_unique<test::FailingDisk>([](test::FailingDisk::Call, const QString& path) {
            return path.endsWith("T.2.doc") ? error::diskFull : 0L;
        });
    EXPECT_EQ(store().result, Stored::failed);
    EXPECT_EQ(folder.names("Sys/标书模板"), QStringList{"T"});
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.doc", "T.mdb"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(StoringATemplate, WhatAKilledProcessLeftHalfDoneDoesNotComeAlong) {
    makeCurrentPlan({"T", "T.1d"});
    folder.write("Sys/标书模板/.~stored/T.9.doc", "of another plan");
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.doc", "T.mdb"}));
    EXPECT_EQ(folder.names("Sys/标书模板"), QStringList{"T"});
}

TEST_F(StoringATemplate, ATemplateWithoutItsFolderIsForgottenEvenWhereMissingPlansAreKept) {
    makeTemplate({"M", "M.1"});
    QDir(folder.path("Sys/标书模板/M")).removeRecursively();
    updateTreeTemplate(state, *state.gDbTemplate, workbench.TrvTemplate, true, messages, splash);
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList());
    EXPECT_FALSE(hasTable("M"));
}

TEST_F(StoringATemplate, WithoutACurrentPlanItEndsInSilence) {
    EXPECT_EQ(store().result, Stored::failed);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoringATemplate, ACurrentPlanWithoutATableEndsInSilence) {
    setCurrent("无");
    EXPECT_EQ(store().result, Stored::failed);
    expectNothingStored("无");
}

// The statement that copies the table has the name bare.
TEST_F(StoringATemplate, ANameThatNeedsBracketsIsNotStoredAndTouchesNoOtherTable) {
    makePlan({"甲", "甲.1d"});
    for (const char* name : {"甲 乙", "甲'乙", "甲.乙", "甲#", "甲?", "甲*", "甲-乙", "select",
                             "甲 from 甲", "甲;", ".."}) {
        setCurrent(name);
        const StoreOutcome outcome = store();
        EXPECT_EQ(outcome.result, Stored::failed) << name;
        EXPECT_FALSE(outcome.reason.isEmpty()) << name;
        expectNothingStored(name == QStringLiteral("..") ? "none" : name);
    }
    EXPECT_EQ(keys("甲"), QStringList({"甲", "甲.1"}));
}

TEST_F(StoringATemplate, APlanWhoseNameNeedsBracketsIsNotStoredThoughItsTableIsThere) {
    for (const char* name : {"甲 乙", "甲'乙", "甲#", "甲-乙"}) {
        makeCurrentPlan({name, QString(name) + ".1d"});
        EXPECT_EQ(store().result, Stored::failed) << name;
        expectNothingStored(name);
    }
}

TEST_F(StoringATemplate, ANameInBracketsDoesNotMeanTheTableWithin) {
    makePlan({"甲", "甲.1d"});
    for (const char* name : {"[甲]", "甲]", "[甲", "甲] x ["}) {
        setCurrent(name);
        EXPECT_EQ(store().result, Stored::failed) << name;
        expectNothingStored(name);
    }
}

TEST_F(StoringATemplate, EmojiAndRightToLeftNamesAreStored) {
    for (const char* name : {"塔吊🏗️方案", "مشروع", "Планㄱ"}) {
        makeCurrentPlan({name, QString(name) + ".1d"});
        EXPECT_EQ(store().result, Stored::stored) << name;
        EXPECT_EQ(templateKeys(name), QStringList({name, QString(name) + ".1"}));
        EXPECT_TRUE(folder.exists(templateFile(QString(name) + ".1"))) << name;
    }
    EXPECT_EQ(registered(*state.gDbTemplate).size(), 3);
}

TEST_F(StoringATemplate, ANameTooLongForATableIsNotStored) {
    const QString name(250, u'a');
    setCurrent(name);
    EXPECT_EQ(store().result, Stored::failed);
    expectNothingStored(name);
}

TEST_F(StoringATemplate, ADatabasePathWithAnApostropheServes) {
    makeCurrentPlan({"T", "T.1d"});
    const QString sys = folder.path("Sys 'x'");
    QDir().rename(folder.path("Sys"), sys);
    state.gDbTemplate = state.gWs->OpenDatabase(sys + "/Database/Db_Template.mdb");
    state.gSysPath = files::withSeparator(sys);
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.1"}));
}

TEST_F(StoringATemplate, ATextThatIsNoKeyBringsNoFileFromOutsideThePlansFolder) {
    makeCurrentPlan({"T", "T.1d"});
    folder.write("用户模板/外.doc", "outside");
    for (const char* key : {"T./../外", "T.\\..\\外", "T.NUL", "T./外"}) {
        add(*state.gDbUser->OpenRecordset("Select * from T"), {key, "外", "是"});
    }
    EXPECT_EQ(store().result, Stored::stored);
    EXPECT_EQ(folder.names("Sys/标书模板/T"), QStringList({"T.1.doc", "T.mdb"}));
    EXPECT_EQ(folder.read("用户模板/外.doc"), "outside");
}

} // namespace
