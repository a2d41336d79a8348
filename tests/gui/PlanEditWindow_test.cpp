#include "gui/support/PlanEditWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include <utility>

using namespace qvnd;

namespace qvnd::test {
namespace {

// Load and enabling

TEST_F(PlanEditWindow, LoadShowsTheOpenPlanWithItsLastNodeSelected) {
    open();
    EXPECT_EQ(form->windowTitle(), "施工组织方案编辑");
    EXPECT_EQ(tree().outline().tree().Count(), 4);
    EXPECT_EQ(tree().outline().nodeOf(tree().currentIndex())->Key(), "T.2");
    EXPECT_TRUE(tree().visualRect(tree().currentIndex()).isValid());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(PlanEditWindow, OpeningIsOnOfferOnADocumentAlone) {
    open();
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
    EXPECT_TRUE(key("打开文档").isEnabled());
    EXPECT_EQ(&key("打开文档"), form->findChild<generate::BidEditToolbar*>()->at(4));
    click("T.1");
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
    EXPECT_FALSE(key("打开文档").isEnabled());
    click("T");
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
    click("T.1.1");
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
    EXPECT_TRUE(key("打开文档").isEnabled());
}

TEST_F(PlanEditWindow, TheOutlineCannotBeEditedHere) {
    open();
    click("T.2");
    QTest::keyClick(&tree(), Qt::Key_F2);
    QTest::keyClick(&tree(), Qt::Key_Delete);
    EXPECT_EQ(tree().findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(tree().outline().tree().Count(), 4);
    EXPECT_FALSE(tree().dragEnabled());
}

TEST_F(PlanEditWindow, TheMenusStandInTheirOrder) {
    open();
    QStringList items;
    for (QMenu* menu : form->menus()) {
        items << menu->objectName();
        for (QAction* action : menu->actions()) {
            items << action->objectName();
        }
    }
    EXPECT_EQ(items.mid(0, 11), (QStringList{"mnuBidEdit", "mnuBidSet", "mnuBul", "mnuBuildbid",
                                             "mnuBrowsebid", "mnuspace1", "mnuBack", "mnudatadoc",
                                             "mnuBidData", "mnuBidLike", "mnuOpenDoc"}));
    EXPECT_TRUE(item("mnuspace1").isSeparator());
}

TEST_F(PlanEditWindow, MenusAndPopUpBearTheirCaptions) {
    open();
    const QList<std::pair<const char*, const char*>> captions{
        {"mnuBidSet", "施工方案设置"},
        {"mnuBul", "生成目录"},
        {"mnuBuildbid", "生成卷宗编制"},
        {"mnuBrowsebid", "浏览卷宗编制"},
        {"mnuBack", "返回"},
        {"mnuBidData", "资料库"},
        {"mnuBidLike", "类似文档"},
        {"mnuOpenDoc", "打开文档"},
        {"mnuDocOpen", "打开"},
        {"mnuBrowseDoc", "浏览"},
    };
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(item(name).text(), caption);
    }
    EXPECT_EQ(form->menus()[0]->title(), "施工方案编辑(&E)");
    EXPECT_EQ(form->menus()[1]->title(), "资料文档(&D)");
    QStringList popUp;
    for (const QAction* action : control<QMenu>("mnuOpen").actions()) {
        popUp << action->objectName();
    }
    EXPECT_EQ(popUp, (QStringList{"mnuDocOpen", "mnuBrowseDoc"}));
}

TEST_F(PlanEditWindow, ARightClickMeansTheNodeUnderItAndOpensThePopUp) {
    open();
    click("T.1.1", Qt::RightButton);
    auto* popUp = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popUp, nullptr);
    EXPECT_EQ(popUp->objectName(), "mnuOpen");
    EXPECT_EQ(popUp->actions().size(), 2);
    popUp->close();
    choose("mnuBrowseDoc");
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.1.1")});
}

TEST_F(PlanEditWindow, ARightClickBesideAllNodesOpensThePopUpToo) {
    open();
    QTest::mouseClick(tree().viewport(), Qt::RightButton, {},
                      {20, tree().viewport()->height() - 3});
    auto* popUp = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popUp, nullptr);
    popUp->close();
}

// The workbench of the same program

TEST_F(PlanEditWindow, ACommandActsOnTheOutlineAsTheWorkbenchHasLeftIt) {
    open();
    click("T.1.1");
    outline::OutlineTree& shown = tree().outline().tree();
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key='T.2'");
    choose("mnuBrowseDoc");
    EXPECT_EQ(shown.Count(), 3);
    EXPECT_EQ(shown.SelectedItem()->Key(), "T.1.1") << "the selected node stays the selected one";
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.1.1")}) << "and the command is carried out";
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(PlanEditWindow, ACommandOnANodeThatTheWorkbenchHasDeletedMeansTheRoot) {
    open();
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key='T.2'");
    choose("mnuOpenDoc");
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T");
    EXPECT_TRUE(shell.opened.isEmpty());
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
}

// Settings

TEST_F(PlanEditWindow, WithoutAFormatDialogItsCommandIsClosed) {
    open();
    EXPECT_FALSE(item("mnuBidSet").isEnabled());
    EXPECT_FALSE(key("标书设置").isEnabled());
}

TEST_F(PlanEditWindow, MenuAndKeyBothShowTheFormatDialogAndOpenButtonTwo) {
    int shown = 0;
    showSettings = [&] { ++shown; };
    open();
    key("生成标书").setEnabled(false);
    choose("mnuBidSet");
    EXPECT_TRUE(key("生成标书").isEnabled());
    key("生成标书").setEnabled(false);
    press("标书设置");
    EXPECT_TRUE(key("生成标书").isEnabled());
    EXPECT_EQ(&key("生成标书"), form->findChild<generate::BidEditToolbar*>()->at(2));
    EXPECT_EQ(shown, 2);
}

// Opening in the word processor

TEST_F(PlanEditWindow, OpenOfThePopUpAndTheKeyShowTheDocumentAndStartItsApplication) {
    open();
    choose("mnuDocOpen");
    press("打开文档");
    QApplication::setActiveWindow(form.get());
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(shell.opened, QStringList(3, fileOf("T.2")));
    EXPECT_EQ(preview.shown, QStringList(3, fileOf("T.2")));
    EXPECT_TRUE(control("OleEdit").isVisible());
}

TEST_F(PlanEditWindow, OpenOfThePopUpLeavesAPaneThatIsOffAsItIs) {
    open();
    doubleClick("T.1");
    click("T.2");
    choose("mnuDocOpen");
    EXPECT_EQ(shell.opened, QStringList{fileOf("T.2")});
    EXPECT_FALSE(control("OleEdit").isVisible());
    doubleClick("T.1.1");
    choose("mnuDocOpen");
    EXPECT_TRUE(control("OleEdit").isVisible());
    EXPECT_EQ(preview.shown.last(), fileOf("T.1.1"));
}

TEST_F(PlanEditWindow, OpenDocumentOfTheMenuLeavesThePreviewOff) {
    open();
    choose("mnuOpenDoc");
    EXPECT_EQ(shell.opened, QStringList{fileOf("T.2")});
    EXPECT_FALSE(control("OleEdit").isVisible());
}

TEST_F(PlanEditWindow, ADoubleClickOnThePreviewOpensWhatIsSeen) {
    open();
    doubleClick("T.1.1");
    QTest::mouseDClick(pane, Qt::LeftButton);
    EXPECT_EQ(shell.opened, QStringList{fileOf("T.1.1")});
}

TEST_F(PlanEditWindow, ADoubleClickOnTheReasonWhyADocumentIsNotSeenOpensItToo) {
    open();
    QWidget& hint = *control("PicEdit").findChild<QLabel*>();
    QTest::mouseDClick(&hint, Qt::LeftButton);
    EXPECT_TRUE(shell.opened.isEmpty()) << "nothing is loaded";
    preview.failure = RunTimeError(error::documentNotShown, u"设有打开密码，请去掉密码后再试。");
    choose("mnuBrowseDoc");
    world.messages.shown.clear();
    QTest::mouseDClick(&hint, Qt::LeftButton);
    EXPECT_EQ(shell.opened, QStringList{fileOf("T.2")});
    doubleClick("T.1");
    QTest::mouseDClick(&hint, Qt::LeftButton);
    EXPECT_EQ(shell.opened.size(), 1) << "the pane is off";
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(PlanEditWindow, AFailedOpeningIsToldDifferentlyByEachOfTheTwins) {
    open();
    shell.isBroken = true;
    choose("mnuDocOpen");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].startsWith("打开文档时出现意外的错误！\n找不到文件\n文档："));
    choose("mnuOpenDoc");
    EXPECT_EQ(messages().last(), "找不到文件");
    expectUsable();
}

TEST_F(PlanEditWindow, ADocumentThatCannotBeShownIsOpenedInTheWordProcessorAllTheSame) {
    open();
    const QString reason = "设有打开密码，请去掉密码后再试。";
    preview.failure = RunTimeError(error::invalidCall, reason.toStdU16String());
    choose("mnuDocOpen");
    EXPECT_EQ(control("PicEdit").findChild<QLabel*>()->text(), reason);
    EXPECT_FALSE(control("OleEdit").isVisible());
    choose("mnuOpenDoc");
    press("打开文档");
    EXPECT_EQ(shell.opened, QStringList(3, fileOf("T.2")));
    EXPECT_TRUE(messages().isEmpty());
    shell.isBroken = true;
    choose("mnuDocOpen");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].startsWith("打开文档时出现意外的错误！\n找不到文件\n文档："));
}

// The finished document and the companion tool

TEST_F(PlanEditWindow, BrowsingTheFinishedDocumentDiffersByMenuAndKey) {
    open();
    press("浏览");
    choose("mnuBrowsebid");
    EXPECT_EQ(messages(), QStringList(2, "对不起，系统尚未生成标书！"));
    for (const desktop::Message& told : world.messages.shown) {
        EXPECT_EQ(told.icon, desktop::Icon::exclamation);
        EXPECT_EQ(told.title, QString());
    }
    world.folder.write("施工方案.doc", "finished");
    press("浏览");
    EXPECT_EQ(shell.basedOn, QStringList{finished()});
    EXPECT_TRUE(preview.shown.isEmpty());
    doubleClick("T.1");
    ASSERT_FALSE(control("OleEdit").isVisible());
    choose("mnuBrowsebid");
    EXPECT_EQ(preview.shown, QStringList{finished()});
    EXPECT_EQ(shell.opened, QStringList{finished()});
    EXPECT_TRUE(control("OleEdit").isVisible());
}

TEST_F(PlanEditWindow, TheCompanionToolDiffersByMenuAndKey) {
    open();
    const QString program = world.state.gAppPath + "sys/文档柜/文档柜.exe";
    press("资料库");
    EXPECT_EQ(messages(), QStringList{"没找到" + program});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(world.messages.shown[0].title, QString());
    choose("mnuBidData");
    EXPECT_EQ(shell.started.size(), 1) << "started without a test";
    world.folder.write("Sys/文档柜/文档柜.exe", "program");
    press("资料库");
    EXPECT_EQ(shell.started.size(), 2);
    windows.isThere = true;
    press("资料库");
    EXPECT_EQ(shell.started.size(), 2) << "its window came to front";
}

TEST_F(PlanEditWindow, AMissingCompanionFailsInTheMenuWithNoMessageOfItsOwn) {
    open();
    shell.isBroken = true;
    choose("mnuBidData");
    EXPECT_EQ(messages(), QStringList{"找不到文件"});
}

// The way back

TEST_F(PlanEditWindow, TheKeyGivesTheWorkbenchTheWholeFrameAndTheMenuShowsItAsItWas) {
    open();
    press("返回");
    EXPECT_EQ(frame.asked, (QStringList{"unload", "maximize"}));
    frame.asked.clear();
    choose("mnuBack");
    EXPECT_EQ(frame.asked, (QStringList{"unload", "show"}));
}

// Rebuilding the contents

TEST_F(PlanEditWindow, RebuildingTheContentsNeedsAFileInTheWorkFolder) {
    TemporaryFolder empty;
    world.state.gWorkPath = empty.root();
    open();
    choose("mnuBul");
    EXPECT_EQ(messages(), QStringList{"还没生成标书!"});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(world.messages.shown[0].title, QString());
}

TEST_F(PlanEditWindow, RebuildingTheContentsOfAMissingDocumentIsAnErrorAndTheWindowGoesOn) {
    world.folder.write("别的.txt", "file");
    open();
    choose("mnuBul");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("施工方案.doc")) << messages()[0].toStdString();
    expectUsable();
    press("生成标书");
    EXPECT_EQ(messages().size(), 1);
    EXPECT_TRUE(QFile::exists(finished()));
}

TEST_F(PlanEditWindow, RebuildingTheContentsLeavesTheFileAsItIsAndSaysSo) {
    open();
    choose("mnuBuildbid");
    const QByteArray before = world.folder.read("施工方案.doc");
    frame.status.clear();
    choose("mnuBul");
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(world.folder.read("施工方案.doc"), before);
    EXPECT_EQ(frame.status,
              QStringList("目录能够重新生成；这个命令不保存，“施工方案.doc”保持原样。"));
}

TEST_F(PlanEditWindow, RebuildingTheContentsOfADocumentWithoutThemTellsWhatToDo) {
    writeDocument("T.2", u"正文");
    QFile::copy(fileOf("T.2"), finished());
    open();
    choose("mnuBul");
    EXPECT_EQ(messages(), QStringList("“施工方案.doc”里没有目录，请重新生成施工方案。"));
    EXPECT_TRUE(frame.status.isEmpty());
    expectUsable();
}

} // namespace
} // namespace qvnd::test
