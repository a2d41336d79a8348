#include "outline/TrvCurrentEvents.h"

#include "outline/NodeCommands.h"
#include "support/FakePreview.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct CurrentTree : testing::Test, OutlineWorld {
    test::FakePreview preview;
    TrvCurrentEvents events_{state, workbench, services(), preview};

    CurrentTree() {
        makePlan({"T", "T.1", "T.1.2d", "T.1.2.3d", "T.4d"});
        openPlan("T");
    }
    OutlineNode& node(const QString& key) { return workbench.TrvCurrent.Item(key); }
    void click(const QString& key) { events_.NodeClick(node(key)); }
};

// The table of what a node offers: every item in every column.

enum class Expect { off, on, unchanged };

struct Cell {
    const char* item;
    const char* key;
    Expect expect;
    bool pasteArmed = false;
};

void PrintTo(const Cell& cell, std::ostream* out) {
    *out << cell.item << " of " << cell.key << (cell.pasteArmed ? ", armed" : "");
}

bool& itemOf(Workbench& workbench, const QString& name) {
    if (name.startsWith("Toolbar ")) {
        return workbench.TbarBid[static_cast<std::size_t>(name.mid(8).toInt())];
    }
    const std::pair<const char*, bool Workbench::*> items[] = {
        {"mnuBrowseDoc", &Workbench::mnuBrowseDoc},
        {"mnuEQFolder", &Workbench::mnuEQFolder},
        {"mnuLTFolder", &Workbench::mnuLTFolder},
        {"mnuAddDoc", &Workbench::mnuAddDoc},
        {"mnuEQDoc", &Workbench::mnuEQDoc},
        {"mnuLTDoc", &Workbench::mnuLTDoc},
        {"mnuRename", &Workbench::mnuRename},
        {"mnuEditDelete", &Workbench::mnuEditDelete},
        {"mnuPaste", &Workbench::mnuPaste},
        {"mnuSaveTemplate", &Workbench::mnuSaveTemplate},
        {"mnuDelete", &Workbench::mnuDelete},
        {"cmdEdit", &Workbench::cmdEdit},
        {"mnuEdit", &Workbench::mnuEdit}};
    for (const auto& [known, member] : items) {
        if (name == known) {
            return workbench.*member;
        }
    }
    qFatal("no item %s", qPrintable(name));
}

std::vector<Cell> cells() {
    constexpr Expect off = Expect::off;
    constexpr Expect on = Expect::on;
    constexpr Expect unchanged = Expect::unchanged;
    struct Row {
        const char* item;
        Expect root, folder, document, documentUnderDocument;
    };
    const Row rows[] = {
        {"mnuBrowseDoc", off, off, on, on},
        {"mnuEQFolder", off, on, on, off},
        {"mnuLTFolder", on, on, off, off},
        {"mnuAddDoc", on, on, on, on},
        {"mnuEQDoc", off, on, on, on},
        {"mnuLTDoc", on, on, on, on},
        {"mnuRename", off, on, on, on},
        {"mnuEditDelete", on, on, on, on},
        {"mnuSaveTemplate", on, on, on, on},
        {"mnuPaste", off, off, off, off},
        {"mnuDelete", on, unchanged, unchanged, unchanged},
        {"cmdEdit", unchanged, unchanged, unchanged, unchanged},
        {"mnuEdit", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 1", off, on, on, on},
        {"Toolbar 2", on, on, off, off},
        {"Toolbar 3", off, on, on, on},
        {"Toolbar 4", on, on, on, on},
        {"Toolbar 5", on, on, on, on},
        {"Toolbar 6", off, on, on, on},
        {"Toolbar 7", off, off, on, on},
        {"Toolbar 8", on, on, on, on},
        {"Toolbar 9", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 10", off, off, unchanged, unchanged},
        {"Toolbar 11", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 12", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 13", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 14", unchanged, unchanged, unchanged, unchanged},
        {"Toolbar 15", unchanged, unchanged, unchanged, unchanged},
    };
    std::vector<Cell> all;
    for (const Row& row : rows) {
        all.insert(all.end(), {{row.item, "T", row.root},
                               {row.item, "T.1", row.folder},
                               {row.item, "T.4", row.document},
                               {row.item, "T.1.2", row.document},
                               {row.item, "T.1.2.3", row.documentUnderDocument}});
    }
    for (const char* item : {"mnuPaste", "Toolbar 10"}) {
        all.push_back({item, "T", on, true});
        all.push_back({item, "T.1", on, true});
    }
    all.push_back({"mnuPaste", "T.4", on, true});
    all.push_back({"Toolbar 10", "T.4", unchanged, true});
    return all;
}

struct EnableTable : CurrentTree, testing::WithParamInterface<Cell> {};

std::string nameOf(const testing::TestParamInfo<Cell>& cell) {
    return QString("%1_of_%2%3")
        .arg(cell.param.item, cell.param.key, cell.param.pasteArmed ? "_armed" : "")
        .replace('.', '_')
        .remove(' ')
        .toStdString();
}

INSTANTIATE_TEST_SUITE_P(Cells, EnableTable, testing::ValuesIn(cells()), nameOf);

TEST_P(EnableTable, IsKept) {
    const Cell& cell = GetParam();
    workbench.pasteArmed = cell.pasteArmed;
    bool& item = itemOf(workbench, cell.item);
    for (const bool before : {false, true}) {
        item = before;
        click(cell.key);
        EXPECT_EQ(item, cell.expect == Expect::unchanged ? before : cell.expect == Expect::on)
            << "before: " << before;
    }
}

TEST_F(CurrentTree, ARootIsARootWhateverItsRowSays) {
    makePlan("U", {{"U", "根", "是"}});
    openPlan("U");
    click("U");
    EXPECT_FALSE(workbench.mnuBrowseDoc || workbench.mnuEQFolder || workbench.TbarBid[7]);
    EXPECT_TRUE(workbench.mnuLTFolder && workbench.TbarBid[2]);
}

TEST_F(CurrentTree, AFolderBelowADocumentMayHaveAFolderBesideIt) {
    OutlineWorld::add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.4.9", "夹", "否"});
    openPlan("T");
    click("T.4.9");
    EXPECT_TRUE(workbench.mnuEQFolder && workbench.mnuLTFolder);
    EXPECT_FALSE(workbench.mnuBrowseDoc);
}

TEST_F(CurrentTree, TheKindIsThatOfTheRowAndNotThatOfTheNode) {
    workbench.TrvCurrent.AddChild("T", "T.7", "旧", image::folder, image::folderSelected);
    OutlineWorld::add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.7", "档", "是"});
    click("T.7");
    EXPECT_TRUE(workbench.mnuBrowseDoc);
    EXPECT_FALSE(workbench.mnuLTFolder);
}

TEST_F(CurrentTree, ANodeWhoseRowHasGoneLeavesWhatWasOffered) {
    click("T.1");
    state.gDbUser->Execute("Delete * from T where Key='T.4'");
    click("T.4");
    EXPECT_TRUE(workbench.mnuLTFolder && workbench.TbarBid[2]);
    EXPECT_FALSE(workbench.mnuBrowseDoc || workbench.TbarBid[7]);
    EXPECT_EQ(workbench.clickedKey, "T.4");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CurrentTree, ANodeWhoseRowHasGoneStillSetsPasteAndTheSelectedPlan) {
    click("T");
    workbench.pasteArmed = true;
    state.gDbUser->Execute("Delete * from T where Key='T.4'");
    click("T.4");
    EXPECT_TRUE(workbench.mnuPaste);
    EXPECT_EQ(state.gSelectedPlan, "");
}

TEST_F(CurrentTree, ARootsTextIsTheSelectedPlanAndAnyOtherNodeEmptiesIt) {
    click("T");
    EXPECT_EQ(state.gSelectedPlan, "名T");
    click("T.1");
    EXPECT_EQ(state.gSelectedPlan, "");
    EXPECT_TRUE(workbench.mnuDelete);
}

TEST_F(CurrentTree, AClickEmptiesTheSelectedPlan) {
    click("T");
    events_.Click();
    EXPECT_EQ(state.gSelectedPlan, "");
}

TEST_F(CurrentTree, AWholeClickOnTheRootLeavesItTheSelectedPlan) {
    EXPECT_EQ(events_.MouseDown(MouseButton::left, &node("T")), PopUp::none);
    events_.Click();
    click("T");
    EXPECT_EQ(state.gSelectedPlan, "名T");
}

TEST_F(CurrentTree, AFailureOfTheLookUpIsToldOnceAndLeavesWhatWasOffered) {
    click("T.1");
    state.gDbUser->TableDefs().Delete("T");
    EXPECT_EQ(events_.MouseDown(MouseButton::right, &node("T.4")), PopUp::mnuSysEdit);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_TRUE(workbench.mnuLTFolder);
    EXPECT_FALSE(workbench.mnuBrowseDoc);
}

// MouseDown

TEST_F(CurrentTree, AMouseButtonSelectsTheNodeUnderIt) {
    EXPECT_EQ(events_.MouseDown(MouseButton::left, &node("T.1.2")), PopUp::none);
    EXPECT_EQ(selectedKey(), "T.1.2");
    EXPECT_EQ(workbench.clickedKey, "T.1.2");
}

TEST_F(CurrentTree, AMouseButtonForgetsTheSelectedTemplate) {
    for (OutlineNode* hit : {&node("T"), static_cast<OutlineNode*>(nullptr)}) {
        workbench.selectedTemplate = "模板";
        events_.MouseDown(MouseButton::left, hit);
        EXPECT_EQ(workbench.selectedTemplate, "");
    }
}

TEST_F(CurrentTree, AMouseButtonClosesBrowsingForNoAndOpensItOtherwise) {
    events_.MouseDown(MouseButton::left, &node("T.4"));
    EXPECT_TRUE(workbench.mnuBrowseDoc);
    events_.MouseDown(MouseButton::left, &node("T.1"));
    EXPECT_FALSE(workbench.mnuBrowseDoc);
    OutlineWorld::add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.9", "怪", "也许"});
    openPlan("T");
    events_.MouseDown(MouseButton::left, &node("T.9"));
    EXPECT_TRUE(workbench.mnuBrowseDoc);
}

TEST_F(CurrentTree, TheLeftButtonAloneLeavesTheOtherCommands) {
    click("T");
    events_.MouseDown(MouseButton::left, &node("T.4"));
    EXPECT_TRUE(workbench.mnuLTFolder);
    EXPECT_FALSE(workbench.mnuRename);
    EXPECT_EQ(state.gSelectedPlan, "名T");
}

TEST_F(CurrentTree, TheRightButtonClicksTheNodeAndBringsUpTheEditMenu) {
    click("T");
    EXPECT_EQ(events_.MouseDown(MouseButton::right, &node("T.4")), PopUp::mnuSysEdit);
    EXPECT_EQ(selectedKey(), "T.4");
    EXPECT_FALSE(workbench.mnuLTFolder);
    EXPECT_TRUE(workbench.mnuRename && workbench.mnuBrowseDoc);
    EXPECT_EQ(state.gSelectedPlan, "");
}

TEST_F(CurrentTree, TheRightButtonOnEmptySpaceOffersOnlyANewPlan) {
    openPlan("T", "T.1");
    workbench.clickedKey = "T.1";
    EXPECT_EQ(events_.MouseDown(MouseButton::right, nullptr), PopUp::onlyMnuNew);
    EXPECT_EQ(selectedKey(), "T.1");
    EXPECT_EQ(workbench.clickedKey, "T.1");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CurrentTree, TheLeftButtonOnEmptySpaceBringsUpNothing) {
    EXPECT_EQ(events_.MouseDown(MouseButton::left, nullptr), PopUp::none);
}

// KeyDown and DblClick

TEST_F(CurrentTree, TheDeleteKeyDeletesAfterAsking) {
    openPlan("T", "T.4");
    events_.KeyDown(deleteKey);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "真的要删除[名T.4]吗？");
    messages.otherwise = desktop::Answer::yes;
    events_.KeyDown(46);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.2", "T.1.2.3"}));
}

TEST_F(CurrentTree, OtherKeysDoNothing) {
    openPlan("T", "T.4");
    for (const int key : {8, 13, 45, 47, 127}) {
        events_.KeyDown(key);
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CurrentTree, ADoubleClickShowsTheSelectedDocument) {
    folder.write("用户模板/名T/T.4.doc", "text");
    openPlan("T", "T.4");
    events_.DblClick();
    EXPECT_EQ(preview.shown.size(), 1);
}

TEST_F(CurrentTree, ANodeSelectedByACommandCountsAsClickedOnce) {
    const auto selectAndFollow = [this](OutlineNode* selected) {
        workbench.TrvCurrent.Select(selected);
        followSelection(state, workbench, messages);
    };
    selectAndFollow(&node("T.1"));
    EXPECT_TRUE(workbench.mnuRename);
    closeNodeCommands(workbench);
    selectAndFollow(&node("T.1"));
    EXPECT_FALSE(workbench.mnuRename);
    selectAndFollow(nullptr);
    EXPECT_EQ(workbench.clickedKey, "");
    selectAndFollow(&node("T.1"));
    EXPECT_TRUE(workbench.mnuRename);
}

} // namespace
