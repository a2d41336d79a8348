#include "outline/CopyPaste.h"
#include "outline/TreeDrag.h"

#include "support/DragWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <utility>

using namespace qvnd;
using namespace qvnd::outline;
using test::DragWorld;
using test::FailingDisk;

namespace {

struct CopyTemplate : testing::Test, DragWorld {
    // M with a chapter of two documents and a folder, a document with one below it, and a folder.
    void sample() {
        systemTemplate({{"M", "模板"},
                        {"M.4", "章"},
                        {"M.4.7", "甲", "是"},
                        {"M.4.9", "节"},
                        {"M.4.9.2", "乙", "是"},
                        {"M.6", "丙", "是"},
                        {"M.6.1", "丁", "是"},
                        {"M.8", "尾"}});
    }
    QStringList names(const QString& table = "T") { return column(*state.gDbUser, table, u"名称"); }
    QStringList shownKeys() const { return shown(workbench.TrvCurrent); }
    void expectOnly(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }
    Pasted paste(const QString& key, const QString& targetKey) {
        workbench.TrvTemplate.Select(&workbench.TrvTemplate.Item(key));
        mnuCopy(workbench);
        workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(targetKey));
        return mnuPaste(state, workbench, services());
    }
};

TEST_F(CopyTemplate, OnlyADropOnTheRootGoesBackToTheRoot) {
    plan({"T", "T.1", "T.2"});
    sample();
    dragTemplate("M.8", "T.1");
    EXPECT_NE(selectedKey(), "T");
    dragTemplate("M.8", "T");
    EXPECT_EQ(selectedKey(), "T");
    EXPECT_TRUE(workbench.TrvCurrent.Item("T").Expanded());
}

TEST_F(CopyTemplate, AFolderComesWithAllThatIsBelowItUnderNewNumbers) {
    plan({"T", "T.1", "T.2"});
    sample();
    const Dropped dropped = dragTemplate("M.4", "T.1");
    EXPECT_TRUE(dropped.done);
    EXPECT_EQ(dropped.newKeys, QStringList({"T.1.1", "T.1.1.1", "T.1.1.2", "T.1.1.2.1"}));
    EXPECT_EQ(keys("T"),
              QStringList({"T", "T.1", "T.2", "T.1.1", "T.1.1.1", "T.1.1.2", "T.1.1.2.1"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.2", "章", "甲", "节", "乙"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"),
              QStringList({"否", "否", "否", "否", "是", "否", "是"}));
    EXPECT_EQ(document("T.1.1.1"), "M.4.7");
    EXPECT_EQ(document("T.1.1.2.1"), "M.4.9.2");
    EXPECT_EQ(shownKeys(),
              QStringList({"T", "T.1", "T.1.1", "T.1.1.1", "T.1.1.2", "T.1.1.2.1", "T.2"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CopyTemplate, TheTreesMayBeFilledAnewWhileAQuestionIsOpen) {
    makePlan("T", {{"T", "T"}, {"T.1", "丙", "是"}});
    folder.write(documentName("T.1"), "mine");
    openPlan("T");
    sample();
    messages.otherwise = desktop::Answer::yes;
    messages.whileOpen = [this] {
        openPlan("T");
        const auto rs = state.gDbTemplate->OpenRecordset("Select * from M order by ID asc");
        workbench.TrvTemplate.Clear();
        FillOutlineTree(*rs, workbench.TrvTemplate);
    };
    EXPECT_TRUE(dragTemplate("M", "T").done);
    expectOnly("[ 丙 ]已存在，是否覆盖？", desktop::Icon::information, "提示");
    EXPECT_EQ(document("T.1"), "M.6");
    EXPECT_EQ(names().last(), "尾");
}

TEST_F(CopyTemplate, TheNumberIsOneMoreThanTheLargestOfTheChildren) {
    plan({"T", "T.1", "T.1.7", "T.1.3d"});
    sample();
    EXPECT_EQ(dragTemplate("M.8", "T.1").newKeys, QStringList("T.1.8"));
    EXPECT_EQ(dragTemplate("M.6", "T.1").newKeys, QStringList("T.1.9"));
}

TEST_F(CopyTemplate, NumbersAreSixteenBitsWide) {
    plan({"T", "T.1", "T.1.32767", "T.2", "T.2.40000", "T.3", "T.3.abc"});
    sample();
    EXPECT_FALSE(dragTemplate("M.8", "T.1").done);
    EXPECT_FALSE(dragTemplate("M.8", "T.2").done);
    EXPECT_FALSE(dragTemplate("M.8", "T.3").done);
    ASSERT_EQ(messages.shown.size(), 3U);
    EXPECT_EQ(messages.shown[0].text, "溢出");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
    EXPECT_EQ(messages.shown[0].title, "");
    EXPECT_EQ(messages.shown[1].text, "溢出");
    EXPECT_EQ(keys("T").size(), 7);
}

TEST_F(CopyTemplate, ADocumentDroppedOnAPlanDocumentBecomesItsChild) {
    plan({"T", "T.1d", "T.2d", "T.2.4d"});
    sample();
    EXPECT_EQ(dragTemplate("M.6", "T.1").newKeys, QStringList("T.1.1"));
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1.1").Parent()->Image(), image::document);
    EXPECT_EQ(dragTemplate("M.6", "T.2").newKeys, QStringList("T.2.5"));
    EXPECT_EQ(document("T.2.5"), "M.6");
}

TEST_F(CopyTemplate, TheRowsLastWhenTheCopyEndsAndWhenTheUserIsAsked) {
    makePlan("T", {{"T", "T"}, {"T.1", "丙", "是"}});
    openPlan("T");
    sample();
    test::ActingMessageBoxes boxes;
    QStringList seen;
    const auto lasting = [&] {
        jet::Workspace other;
        return column(*other.OpenDatabase(state.gDbUser->Name()), "T", u"Key");
    };
    boxes.onBox = [&](std::size_t) { seen = lasting(); };
    workbench.copySourceKey = "M";
    OLEDragDrop(state, workbench, {boxes, splash, dialogs, events, word, longRun},
                &workbench.TrvCurrent.Item("T"));
    EXPECT_EQ(seen, QStringList({"T", "T.1", "T.2", "T.2.1", "T.2.2", "T.2.2.1"}));
    EXPECT_EQ(lasting(), keys("T"));
    EXPECT_FALSE(state.gWs->InTransaction());
    state.gWs->BeginTrans();
    dragTemplate("M.6", "T.2");
    EXPECT_TRUE(state.gWs->InTransaction());
}

TEST_F(CopyTemplate, AFolderDroppedOnAPlanDocumentIsRefused) {
    plan({"T", "T.1d"});
    sample();
    EXPECT_FALSE(dragTemplate("M.4", "T.1").done);
    expectOnly("文档下面不能包含文件夹，此时文档不能作为拖放对象.", desktop::Icon::information,
               "提示");
    EXPECT_EQ(keys("T").size(), 2);
}

TEST_F(CopyTemplate, TheRefusalLooksAtTheNodeSelectedInTheTemplatesNotAtTheCopiedOne) {
    plan({"T", "T.1d"});
    sample();
    OutlineTree& templates = workbench.TrvTemplate;
    templates.Select(&templates.Item("M.4"));
    mnuCopy(workbench);
    templates.Select(&templates.Item("M.6"));
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T.1"));
    EXPECT_EQ(mnuPaste(state, workbench, services()).newKeys.size(), 4);
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1.1").Image(), image::folder);
}

TEST_F(CopyTemplate, NothingSelectedInTheTemplatesIsAnErrorOnlyOnADocument) {
    plan({"T", "T.1d", "T.2"});
    sample();
    workbench.copySourceKey = "M.6";
    EXPECT_TRUE(dropOn("T.2").done);
    EXPECT_FALSE(dropOn("T.1").done);
    expectOnly("没有选中节点，请先选中一个节点。", desktop::Icon::none, "");
}

TEST_F(CopyTemplate, AFoldersDocumentsPassWhenTheTargetIsAFolder) {
    plan({"T", "T.1"});
    sample();
    EXPECT_EQ(paste("M.4", "T.1").outcome, Copied::copied);
    EXPECT_TRUE(documents().contains("T.1.1.1.doc"));
}

TEST_F(CopyTemplate, ATemplatesRootIsCopiedAsItsChildrenWithoutANodeOfItsOwn) {
    plan({"T", "T.1", "T.1.2"});
    sample();
    EXPECT_EQ(dragTemplate("M", "T.1").newKeys,
              QStringList({"T.1.3", "T.1.3.1", "T.1.3.2", "T.1.3.2.1", "T.1.4", "T.1.5"}));
    EXPECT_FALSE(names().contains("模板"));
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1.4").Text(), "丙");
}

TEST_F(CopyTemplate, AFolderWhoseNameExistsStopsTheWholeCopyAndKeepsWhatCameBefore) {
    plan({"T", "T.1"});
    systemTemplate({{"M", "模板"},
                    {"M.1", "甲", "是"},
                    {"M.2", "章"},
                    {"M.2.1", "乙", "是"},
                    {"M.3", "丙", "是"}});
    makeTable(*state.gDbUser, "U", {{"U", "U"}, {"U.1", "夹"}, {"U.1.1", "章"}});
    folder.makeFolder("用户模板/U");
    openPlan("U");
    EXPECT_FALSE(dragTemplate("M", "U.1").done);
    expectOnly("[ 章 ]已存在,无法复制!", desktop::Icon::information, "提示");
    EXPECT_EQ(names("U"), QStringList({"U", "夹", "章", "甲"}));
    EXPECT_EQ(documents("U"), QStringList("U.1.2.doc"));
}

TEST_F(CopyTemplate, WhatIsLeftOutBehindAFolderThatExistsIsNamed) {
    plan({"T", "T.1"});
    systemTemplate({{"M", "模板"},
                    {"M.1", "甲", "是"},
                    {"M.2", "章"},
                    {"M.2.1", "乙", "是"},
                    {"M.3", "丙", "是"},
                    {"M.4", "丁"}});
    makeTable(*state.gDbUser, "U", {{"U", "U"}, {"U.1", "夹"}, {"U.1.1", "章"}});
    folder.makeFolder("用户模板/U");
    openPlan("U");
    EXPECT_FALSE(dragTemplate("M", "U.1").done);
    EXPECT_EQ(state.Remarks, QStringList("复制到“章”停止了，没有复制 3 项（连同它们的下级）："
                                         "章、丙、丁"));
}

TEST_F(CopyTemplate, AFolderThatIsLeftOutAloneIsNamedByItsBox) {
    plan({"T", "T.1", "T.1.1d"});
    systemTemplate({{"M", "模板"}, {"M.1", "名T.1.1"}});
    EXPECT_FALSE(dragTemplate("M.1", "T.1").done);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(state.Remarks, QStringList());
}

TEST_F(CopyTemplate, AFolderClashesWithADocumentOfItsNameToo) {
    plan({"T", "T.1", "T.1.1d"});
    systemTemplate({{"M", "模板"}, {"M.1", "名T.1.1"}});
    EXPECT_FALSE(dragTemplate("M.1", "T.1").done);
    EXPECT_EQ(messages.shown.at(0).text, "[ 名T.1.1 ]已存在,无法复制!");
}

TEST_F(CopyTemplate, NamesAreComparedExactly) {
    makePlan("T", {{"T", "T"}, {"T.1", "Ab "}});
    openPlan("T");
    systemTemplate({{"M", "模板"}, {"M.1", "Ab"}, {"M.2", "ab "}});
    EXPECT_EQ(dragTemplate("M", "T").newKeys, QStringList({"T.2", "T.3"}));
}

TEST_F(CopyTemplate, ADeclinedOverwritingLeavesTheDocumentAndGoesOnWithTheNext) {
    makePlan("T", {{"T", "T"}, {"T.1", "丙", "是"}});
    folder.write(documentName("T.1"), "mine");
    openPlan("T");
    sample();
    const Dropped dropped = dragTemplate("M", "T");
    EXPECT_FALSE(dropped.done);
    expectOnly("[ 丙 ]已存在，是否覆盖？", desktop::Icon::information, "提示");
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::yesNo);
    EXPECT_EQ(document("T.1"), "mine");
    EXPECT_EQ(names().last(), "尾");
}

TEST_F(CopyTemplate, AfterAnOverwriteAStrayCopyBearsTheLargestNumberSeenSoFar) {
    makePlan("T", {{"T", "T"}, {"T.7", "一"}, {"T.3", "二"}, {"T.4", "丙", "是"}, {"T.9", "三"}});
    folder.write(documentName("T.4"), "mine");
    openPlan("T");
    sample();
    messages.answers = {desktop::Answer::yes};
    const Dropped dropped = dragTemplate("M.6", "T");
    EXPECT_TRUE(dropped.done);
    EXPECT_TRUE(dropped.newKeys.isEmpty());
    EXPECT_EQ(keys("T").size(), 5);
    EXPECT_EQ(document("T.4"), "M.6");
    EXPECT_EQ(folder.read("用户模板/T/7.doc"), "M.6");
    EXPECT_EQ(documents(), QStringList({"7.doc", "T.4.doc"}));
}

TEST_F(CopyTemplate, AfterAnOverwriteTheTargetAloneIsSelectedAndExpanded) {
    makePlan("T", {{"T", "T"}, {"T.1", "章"}, {"T.1.1", "丙", "是"}});
    openPlan("T");
    workbench.TrvCurrent.Expand(workbench.TrvCurrent.Item("T"));
    sample();
    messages.answers = {desktop::Answer::yes};
    EXPECT_TRUE(dragTemplate("M.6", "T.1").done);
    EXPECT_EQ(selectedKey(), "T.1");
    EXPECT_TRUE(workbench.TrvCurrent.Item("T.1").Expanded());
    EXPECT_FALSE(workbench.TrvCurrent.Item("T").Expanded());
}

TEST_F(CopyTemplate, AfterAnOverwriteOfTheFirstChildTheStrayCopyHasNoName) {
    makePlan("T", {{"T", "T"}, {"T.4", "丙", "是"}, {"T.7", "一"}});
    openPlan("T");
    sample();
    messages.answers = {desktop::Answer::yes};
    dragTemplate("M.6", "T");
    EXPECT_EQ(documents(), QStringList({".doc", "T.4.doc"}));
}

TEST_F(CopyTemplate, AnOverwriteTakesAFolderOfThatNameForADocument) {
    makePlan("T", {{"T", "T"}, {"T.4", "丙"}});
    openPlan("T");
    sample();
    messages.answers = {desktop::Answer::yes};
    EXPECT_TRUE(dragTemplate("M.6", "T").done);
    EXPECT_EQ(document("T.4"), "M.6");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.4"}));
}

TEST_F(CopyTemplate, ADocumentsChildNodesAreNotCopied) {
    plan({"T", "T.1"});
    sample();
    EXPECT_EQ(dragTemplate("M.6", "T.1").newKeys, QStringList("T.1.1"));
    EXPECT_FALSE(names().contains("丁"));
}

TEST_F(CopyTemplate, ADocumentWithoutAFileIsCopiedAsItsRow) {
    plan({"T", "T.1"});
    sample();
    QFile::remove(folder.path("Sys/标书模板/M/M.6.doc"));
    EXPECT_TRUE(dragTemplate("M.6", "T.1").done);
    EXPECT_EQ(keys("T").last(), "T.1.1");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(CopyTemplate, AnErrorEndsItsCallAloneAndTheNextOnesGoOn) {
    plan({"T", "T.1"});
    sample();
    state.gFso = std::make_unique<FailingDisk>([](FailingDisk::Call, const QString& path) {
        return path.endsWith("T.1.1.2.1.doc") ? error::diskFull : 0;
    });
    EXPECT_FALSE(dragTemplate("M", "T.1").done);
    expectOnly("磁盘出错", desktop::Icon::none, "");
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "章", "甲", "节", "乙", "丙", "尾"}));
    EXPECT_EQ(documents(), QStringList({"T.1.1.1.doc", "T.1.2.doc"}));
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.1", "T.1.1", "T.1.1.1", "T.1.1.2", "T.1.1.2.1",
                                        "T.1.2", "T.1.3"}));
}

TEST_F(CopyTemplate, BehindAFailedFileTheNextNumberIsTakenFromTheUnfilledTree) {
    plan({"T", "T.1"});
    systemTemplate({{"M", "模板"}, {"M.1", "甲", "是"}, {"M.2", "乙", "是"}, {"M.3", "丙"}});
    bool failed = false;
    state.gFso = std::make_unique<FailingDisk>([&](FailingDisk::Call, const QString&) {
        return std::exchange(failed, true) ? 0 : error::diskFull;
    });
    EXPECT_FALSE(dragTemplate("M", "T.1").done);
    EXPECT_EQ(messages.shown.size(), 3U);
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "甲"}));
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(CopyTemplate, AKeyOfAnotherTreeIsNotFound) {
    plan({"T", "T.1"});
    sample();
    workbench.copySourceKey = "T.1";
    EXPECT_FALSE(dropOn("T.1").done);
    expectOnly("编号为“T.1”的节点已不存在", desktop::Icon::none, "");
    EXPECT_EQ(keys("T").size(), 2);
}

TEST_F(CopyTemplate, ATemplatesNodeThatIsGoneSinceItWasCopiedIsToldByItsName) {
    plan({"T", "T.1"});
    sample();
    workbench.TrvTemplate.Select(&workbench.TrvTemplate.Item("M.4"));
    const QString text = workbench.TrvTemplate.SelectedItem()->Text();
    mnuCopy(workbench);
    workbench.TrvTemplate.Remove("M.4");
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T.1"));
    EXPECT_EQ(mnuPaste(state, workbench, services()).outcome, Copied::incomplete);
    expectOnly("节点“" + text + "”（M.4）已不存在", desktop::Icon::none, "");
}

TEST_F(CopyTemplate, ANodeOfAUsersPlanIsToldByItsNameAndWhereToCopyFrom) {
    plan({"T", "T.1"});
    sample();
    workbench.TrvTemplate_Us.Add("U", "U", image::root, image::rootSelected);
    workbench.TrvTemplate_Us.AddChild("U", "U.1", "说明", image::document, 6);
    workbench.copySourceKey = "U.1";
    EXPECT_FALSE(dropOn("T.1").done);
    expectOnly("“说明”（U.1）在“用户方案”中，不能复制。只能复制“施工方案模板”中的节点。",
               desktop::Icon::none, "");
}

TEST_F(CopyTemplate, ATemplatesNodeIsCopiedThoughAUsersPlanHasItsKeyToo) {
    plan({"T", "T.1"});
    sample();
    workbench.TrvTemplate_Us.Add("M", "M", image::root, image::rootSelected);
    workbench.TrvTemplate_Us.AddChild("M", "M.8", "另一", image::document, 6);
    EXPECT_TRUE(dragTemplate("M.8", "T.1").done);
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "尾"}));
}

TEST_F(CopyTemplate, AKeyThatLeadsOutOfTheFolderCopiesNeitherRowNorFile) {
    plan({"T", "T.1"});
    folder.write("Sys/标书模板/外.doc", "outside");
    systemTemplate({{"M", "M"}, {"M./../外", "外", "是"}, {"M.1", "内", "是"}});
    workbench.TrvTemplate.AddChild("M", "M.\\..\\外", "也", image::document, 6);
    for (const char* key : {"M./../外", "M.\\..\\外"}) {
        if (!workbench.TrvTemplate.find(key)) {
            workbench.TrvTemplate.AddChild("M", key, "外", image::document, 6);
        }
        EXPECT_FALSE(dragTemplate(key, "T.1").done) << key;
    }
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(CopyTemplate, WithoutATargetNothingHappens) {
    plan({"T", "T.1"});
    sample();
    workbench.copySourceKey = "M.6";
    workbench.TrvCurrent.Select(nullptr);
    EXPECT_EQ(mnuPaste(state, workbench, services()).outcome, Copied::stopped);
    EXPECT_FALSE(OLEDragDrop(state, workbench, services(), nullptr).done);
    EXPECT_EQ(keys("T").size(), 2);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CopyTemplate, ThePlansOwnCopyIsNotTouched) {
    plan({"T", "T.1"});
    sample();
    dragTemplate("M.4", "T.1");
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1"}));
}

TEST_F(CopyTemplate, TheScratchTableIsNotUsed) {
    plan({"T", "T.1"});
    add(*state.gDbUser->OpenRecordset("Select * from temp"), {"left", "behind"});
    sample();
    dragTemplate("M.4", "T.1");
    EXPECT_EQ(keys("temp"), QStringList("left"));
}

TEST_F(CopyTemplate, AfterADocumentItsParentIsSelectedAndExpanded) {
    plan({"T", "T.1", "T.2"});
    sample();
    paste("M.6", "T.1");
    EXPECT_EQ(selectedKey(), "T.1");
    EXPECT_TRUE(workbench.TrvCurrent.Item("T.1").Expanded());
    EXPECT_FALSE(workbench.TrvCurrent.Item("T").Expanded());
}

TEST_F(CopyTemplate, AfterAFolderNothingIsSelected) {
    plan({"T", "T.1", "T.2"});
    sample();
    paste("M.8", "T.1");
    EXPECT_EQ(selectedKey(), "");
    EXPECT_FALSE(workbench.TrvCurrent.Item("T.1").Expanded());
}

TEST_F(CopyTemplate, ADropOnTheRootEndsWithTheFirstNodeSelectedAndExpanded) {
    plan({"T", "T.1"});
    sample();
    dragTemplate("M.8", "T");
    EXPECT_EQ(selectedKey(), "T");
    EXPECT_TRUE(workbench.TrvCurrent.Item(1).Expanded());
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(CopyTemplate, ADropEmptiesTheTargetValues) {
    plan({"T", "T.1d"});
    sample();
    dragTemplate("M.6", "T.1");
    EXPECT_EQ(workbench.dropTargetKey, "");
    EXPECT_EQ(workbench.dropTargetImage, 0);
}

TEST_F(CopyTemplate, PasteMayBeUsedAgain) {
    plan({"T", "T.1", "T.2"});
    sample();
    EXPECT_EQ(paste("M.4", "T.1").newKeys.value(0), "T.1.1");
    EXPECT_TRUE(workbench.pasteArmed);
    EXPECT_EQ(workbench.copySourceKey, "M.4");
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T.2"));
    EXPECT_EQ(mnuPaste(state, workbench, services()).newKeys.value(0), "T.2.1");
    EXPECT_EQ(workbench.dropTargetKey, "");
    EXPECT_EQ(workbench.dropTargetImage, 0);
}

TEST_F(CopyTemplate, CopyNeedsASelectedTemplateNode) {
    sample();
    mnuCopy(workbench);
    EXPECT_FALSE(workbench.pasteArmed);
    EXPECT_EQ(workbench.copySourceKey, "");
    workbench.TrvTemplate.Select(&workbench.TrvTemplate.Item("M.6"));
    mnuCopy(workbench);
    workbench.TrvTemplate.Select(nullptr);
    mnuCopy(workbench);
    EXPECT_TRUE(workbench.pasteArmed);
    EXPECT_EQ(workbench.copySourceKey, "M.6");
}

TEST_F(CopyTemplate, PasteDisablesPositionTenAlone) {
    plan({"T", "T.1"});
    sample();
    workbench.TbarBid.fill(true);
    paste("M.8", "T.1");
    EXPECT_FALSE(workbench.TbarBid[10]);
    EXPECT_TRUE(workbench.TbarBid[12]);
    workbench.TbarBid[10] = true;
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T"));
    toolbarPaste(state, workbench, services());
    EXPECT_FALSE(workbench.TbarBid[10]);
    EXPECT_TRUE(workbench.TbarBid[12]);
}

TEST_F(CopyTemplate, NamesOfEveryKindOfTextAreCopied) {
    plan({"T", "T.1"});
    const QStringList all{"O'Brien", "[节] *?#", "a.b", "😀", "مرحبا", QString(250, u'长'), "", " "};
    std::vector<test::OutlineRowText> rows{{"M", "模板"}};
    for (const QString& name : all) {
        rows.push_back({"M." + QString::number(rows.size()), name, "是"});
    }
    systemTemplate(rows);
    EXPECT_TRUE(dragTemplate("M", "T.1").done);
    EXPECT_EQ(names().mid(2), all);
    EXPECT_EQ(documents().size(), all.size());
}

TEST_F(CopyTemplate, APlanNameThatNeedsBracketsIsNotMistakenForAnotherTable) {
    makePlan({"甲", "甲.1"});
    sample();
    for (const char* name : {"甲 乙", "甲 where ID", "O'Brien", "order", "a-b"}) {
        const QString root = QString::fromUtf8(name);
        makeTable(*state.gDbUser, root, {{root, "根"}, {root + ".1", "一"}});
        folder.makeFolder("用户模板/" + root);
        openPlan(root);
        messages.shown.clear();
        EXPECT_FALSE(dragTemplate("M.4", root).done) << name;
        EXPECT_FALSE(dragTemplate("M.6", root + ".1").done) << name;
        ASSERT_EQ(messages.shown.size(), 2U);
        EXPECT_TRUE(messages.shown[0].text.contains(root)) << messages.shown[0].text.toStdString();
        EXPECT_EQ(ids(root), QStringList({"1", "2"})) << name;
        EXPECT_TRUE(documents(root).isEmpty()) << name;
    }
    EXPECT_EQ(ids("甲"), QStringList({"1", "2"}));
}

TEST_F(CopyTemplate, ARowThatCannotHangInTheTreeHidesWhatIsCopiedBehindIt) {
    plan({"T", "T.1", "T.9.1"});
    sample();
    const Dropped dropped = dragTemplate("M.4", "T.1");
    // The folder's row is there, but its node is not: its children have no target.
    EXPECT_FALSE(dropped.done);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.9.1", "T.1.1"}));
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.1"}));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, "编号为“T.1.1”的节点已不存在\n文档：甲（M.4.7）");
}

} // namespace
