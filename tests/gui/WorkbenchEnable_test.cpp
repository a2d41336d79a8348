#include "gui/support/Renaming.h"
#include "gui/support/WorkbenchWindow.h"

#include "outline/OutlineKeys.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace qvnd::test {
namespace {

// One row of the table: what a click on a root, a folder, a document and a document below a
// document leaves open. "Toolbar 3" is a position, the others are menu items.
struct EnableRow {
    const char* item;
    bool root;
    bool folder;
    bool document;
    bool documentBelowDocument;
};

std::ostream& operator<<(std::ostream& out, const EnableRow& row) { return out << row.item; }

class EnableTable : public WorkbenchWindow, public testing::WithParamInterface<EnableRow> {
protected:
    bool isEnabled() {
        const QString name = GetParam().item;
        if (name.startsWith("Toolbar ")) {
            return toolbar().at(name.mid(8).toInt())->isEnabled();
        }
        return item(name).isEnabled();
    }
};

TEST_P(EnableTable, FollowsTheKindOfTheClickedNode) {
    open();
    trvCurrent().expandAll();
    const EnableRow& row = GetParam();
    // Each kind behind another one, so that nothing is left over from before.
    click(trvCurrent(), "T.1");
    EXPECT_EQ(isEnabled(), row.folder) << "folder";
    click(trvCurrent(), "T");
    EXPECT_EQ(isEnabled(), row.root) << "root";
    click(trvCurrent(), "T.2");
    EXPECT_EQ(isEnabled(), row.document) << "document";
    click(trvCurrent(), "T.2.1");
    EXPECT_EQ(isEnabled(), row.documentBelowDocument) << "document below a document";
    click(trvCurrent(), "T.1.1");
    EXPECT_EQ(isEnabled(), row.document) << "document below a folder";
}

INSTANTIATE_TEST_SUITE_P(Rows, EnableTable,
                         testing::Values(EnableRow{"mnuBrowseDoc", false, false, true, true},
                                         EnableRow{"mnuEQFolder", false, true, true, false},
                                         EnableRow{"mnuLTFolder", true, true, false, false},
                                         EnableRow{"mnuAddDoc", true, true, true, true},
                                         EnableRow{"mnuEQDoc", false, true, true, true},
                                         EnableRow{"mnuLTDoc", true, true, true, true},
                                         EnableRow{"mnuRename", false, true, true, true},
                                         EnableRow{"mnuEditDelete", true, true, true, true},
                                         EnableRow{"mnuSaveTemplate", true, true, true, true},
                                         EnableRow{"mnuPaste", false, false, false, false},
                                         EnableRow{"Toolbar 1", false, true, true, true},
                                         EnableRow{"Toolbar 2", true, true, false, false},
                                         EnableRow{"Toolbar 3", false, true, true, true},
                                         EnableRow{"Toolbar 4", true, true, true, true},
                                         EnableRow{"Toolbar 5", true, true, true, true},
                                         EnableRow{"Toolbar 6", false, true, true, true},
                                         EnableRow{"Toolbar 7", false, false, true, true}),
                         [](const auto& row) {
                             return QString(row.param.item).remove(u' ').toStdString();
                         });

TEST_F(WorkbenchWindow, PositionTenAndPasteFollowPasteArmed) {
    open("T.1");
    EXPECT_FALSE(toolbar().at(10)->isEnabled());
    EXPECT_FALSE(item("mnuPaste").isEnabled());
    world.workbench.pasteArmed = true;
    click(trvCurrent(), "T.3");
    EXPECT_TRUE(toolbar().at(10)->isEnabled());
    EXPECT_TRUE(item("mnuPaste").isEnabled());
}

TEST_F(WorkbenchWindow, ADocumentLeavesPositionTenAsItIs) {
    open("T.1");
    world.workbench.pasteArmed = true;
    click(trvCurrent(), "T.2");
    EXPECT_FALSE(toolbar().at(10)->isEnabled());
    EXPECT_TRUE(item("mnuPaste").isEnabled());
    click(trvCurrent(), "T.1");
    click(trvCurrent(), "T.2");
    EXPECT_TRUE(toolbar().at(10)->isEnabled());
}

TEST_F(WorkbenchWindow, DeletingThePlanIsOfferedOnceTheRootWasClicked) {
    open("T.2");
    EXPECT_FALSE(item("mnuDelete").isEnabled());
    click(trvCurrent(), "T");
    EXPECT_TRUE(item("mnuDelete").isEnabled());
    EXPECT_EQ(world.state.gSelectedPlan, "T");
    click(trvCurrent(), "T.2");
    EXPECT_EQ(world.state.gSelectedPlan, QString());
}

TEST_F(WorkbenchWindow, AClickBesideAllNodesForgetsTheSelectedPlan) {
    open("T");
    ASSERT_EQ(world.state.gSelectedPlan, "T");
    QTest::mouseClick(trvCurrent().viewport(), Qt::LeftButton, {}, beside(trvCurrent()));
    EXPECT_EQ(world.state.gSelectedPlan, QString());
}

TEST_F(WorkbenchWindow, AfterADeletionPositionsOneToEightWaitForTheNextClick) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    item("mnuEditDelete").trigger();
    for (int position = 1; position <= 8; ++position) {
        EXPECT_FALSE(toolbar().at(position)->isEnabled()) << position;
    }
    click(trvCurrent(), "T.2");
    for (const int position : {1, 4, 5, 7, 8}) {
        EXPECT_TRUE(toolbar().at(position)->isEnabled()) << position;
    }
}

TEST_F(WorkbenchWindow, TheKeyboardOpensTheCommandsLikeAClick) {
    open("T");
    QTest::keyClick(&trvCurrent(), Qt::Key_Down);
    EXPECT_EQ(selected(), "T.1");
    EXPECT_TRUE(item("mnuEQFolder").isEnabled());
}

TEST_F(WorkbenchWindow, AtLoadTheLastNodeIsSelectedAndItsCommandsAreOpen) {
    open();
    EXPECT_EQ(selected(), "T.3");
    EXPECT_TRUE(item("mnuEQFolder").isEnabled());
    EXPECT_TRUE(item("mnuLTFolder").isEnabled());
    EXPECT_FALSE(item("mnuBrowseDoc").isEnabled());
    EXPECT_TRUE(item("mnuEdit").isEnabled());
    EXPECT_TRUE(toolbar().at(12)->isEnabled());
    EXPECT_EQ(form->findChild<QTabWidget*>("TabTemplate")->currentIndex(), 0);
}

TEST_F(WorkbenchWindow, WithoutACurrentPlanEditingAndEveryNodeCommandAreOff) {
    openAsItIs();
    EXPECT_FALSE(form->findChild<QPushButton*>("cmdEdit")->isEnabled());
    for (const char* name :
         {"mnuEdit", "mnuDelete", "mnuEQFolder", "mnuLTFolder", "mnuAddDoc", "mnuPaste",
          "mnuBrowseDoc", "mnuRename", "mnuEditDelete", "mnuSaveTemplate"}) {
        EXPECT_FALSE(item(name).isEnabled()) << name;
    }
    for (const int position : {1, 2, 4, 5, 7, 12}) {
        EXPECT_FALSE(toolbar().at(position)->isEnabled()) << position;
    }
    EXPECT_TRUE(item("mnuNew").isEnabled());
    EXPECT_TRUE(toolbar().at(15)->isEnabled());
}

TEST_F(WorkbenchWindow, APlanWhoseFolderIsGoneOpensNothing) {
    setCurrentPlan("无");
    openAsItIs();
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 0);
    EXPECT_FALSE(item("mnuEdit").isEnabled());
    EXPECT_FALSE(toolbar().at(12)->isEnabled());
}

// A node that a command selected counts as clicked

class SelectedByACommand : public WorkbenchWindow {
protected:
    // F2 on whatever is selected; the text goes to the row and the node of that key.
    void renameTo(const QString& text, const QString& key) {
        QLineEdit* editor = beginRenaming(trvCurrent());
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        EXPECT_EQ(world.workbench.TrvCurrent.Item(key).Text(), text);
        const auto row =
            world.state.gDbUser->OpenRecordset("Select * from T where Key='" + key + u'\'');
        EXPECT_EQ(row->Get(u"名称").TextOrEmpty(), text);
    }
    void expectFolderCommands() {
        EXPECT_TRUE(item("mnuRename").isEnabled() && item("mnuEQFolder").isEnabled() &&
                    item("mnuLTFolder").isEnabled());
        EXPECT_FALSE(item("mnuBrowseDoc").isEnabled());
    }
};

TEST_F(SelectedByACommand, AFolderJustAddedIsRenamedByF2AndOffersItsCommands) {
    open("T");
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>("TxtAdd")->setText("新章");
        dialog->findChild<QPushButton*>("OKButton")->click();
    });
    item("mnuLTFolder").trigger();
    const QString key = selected();
    ASSERT_NE(key, "T");
    EXPECT_EQ(world.workbench.clickedKey, key);
    EXPECT_EQ(world.state.gSelectedPlan, QString());
    expectFolderCommands();
    renameTo("改名", key);
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T")).Text(), "T");
}

TEST_F(SelectedByACommand, ADocumentJustAddedCanBeBrowsedAndRenamed) {
    open("T.1");
    writeDocument(world.folder.path("说明.doc"));
    world.dialogs.chosen = world.folder.path("说明.doc");
    item("mnuEQDoc").trigger();
    const QString key = selected();
    EXPECT_EQ(world.workbench.clickedKey, key);
    EXPECT_TRUE(item("mnuBrowseDoc").isEnabled());
    EXPECT_FALSE(item("mnuLTFolder").isEnabled());
    renameTo("改名", key);
}

TEST_F(SelectedByACommand, AMovedNodeIsRenamedUnderItsNewKey) {
    open("T.1");
    trvCurrent().expandAll();
    click(trvCurrent(), "T.1.1");
    emit trvCurrent().oleStartDrag();
    emit trvCurrent().oleDragDrop(&world.workbench.TrvCurrent.Item(QString("T.3")));
    const QString key = selected();
    EXPECT_TRUE(key.startsWith("T.3."));
    EXPECT_EQ(world.workbench.clickedKey, key);
    EXPECT_TRUE(item("mnuBrowseDoc").isEnabled());
    renameTo("改名", key);
}

TEST_F(SelectedByACommand, TheTargetOfACopiedDocumentCountsAsClicked) {
    open("T.2");
    world.workbench.copySourceKey = "M.2";
    trvTemplate().outline().tree().Select(&world.workbench.TrvTemplate.Item(QString("M.2")));
    emit trvCurrent().oleDragDrop(&world.workbench.TrvCurrent.Item(QString("T.3")));
    EXPECT_EQ(selected(), "T.3");
    EXPECT_EQ(world.workbench.clickedKey, "T.3");
    expectFolderCommands();
    renameTo("改名", "T.3");
}

TEST_F(SelectedByACommand, TheNodeThatIsSelectedAtTheLoadIsRenamedWithoutAClick) {
    open();
    EXPECT_EQ(world.workbench.clickedKey, "T.3");
    renameTo("改名", "T.3");
}

TEST_F(SelectedByACommand, TheNodeUnderADragThatIsGivenUpIsTheOneThatF2Renames) {
    open("T.1");
    emit trvCurrent().oleDragOver(&world.workbench.TrvCurrent.Item(QString("T.3")));
    EXPECT_EQ(world.workbench.clickedKey, "T.3");
    renameTo("改名", "T.3");
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.1")).Text(), "名T.1");
}

TEST_F(SelectedByACommand, BehindADeletionF2RenamesTheNeighbourWhileTheButtonsWait) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    item("mnuEditDelete").trigger();
    EXPECT_EQ(selected(), "T.2");
    EXPECT_TRUE(item("mnuBrowseDoc").isEnabled());
    EXPECT_FALSE(item("mnuLTFolder").isEnabled());
    for (int position = 1; position <= 8; ++position) {
        EXPECT_FALSE(toolbar().at(position)->isEnabled()) << position;
    }
    renameTo("改名", "T.2");
}

TEST_F(SelectedByACommand, BehindTheDeletionOfThePlanNoNodeCountsAsClicked) {
    OutlineWorld::makeTable(*world.state.gDbUser, "TOrg", {});
    open("T");
    world.messages.otherwise = desktop::Answer::yes;
    item("mnuEditDelete").trigger();
    EXPECT_EQ(world.workbench.clickedKey, QString());
    EXPECT_FALSE(item("mnuLTFolder").isEnabled());
}

} // namespace
} // namespace qvnd::test
