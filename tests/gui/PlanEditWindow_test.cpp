#include "gui/support/PlanEditWindow.h"

#include "platform/files/WorkSpaceTurn.h"
#include "platform/history/History.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>

#include <memory>
#include <stdexcept>
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

// Preview

TEST_F(PlanEditWindow, ADoubleClickShowsTheDocumentAsHighAsItIsWithTenSteps) {
    open();
    pane->wanted = 3000;
    doubleClick("T.1.1");
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.1.1")});
    EXPECT_TRUE(control("OleEdit").isVisible());
    EXPECT_EQ(control("OleEdit").height(), 3000);
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 10);
}

TEST_F(PlanEditWindow, ScrollingMovesByTenthsOfWhatDoesNotFit) {
    open();
    pane->wanted = 3000;
    doubleClick("T.1.1");
    const int hidden = 3000 - control("PicEdit").height();
    for (const int step : {0, 1, 5, 10}) {
        control<QScrollBar>("VSEdit").setValue(step);
        EXPECT_EQ(control("OleEdit").y(), -qRound(hidden * 0.1 * step)) << step;
    }
}

TEST_F(PlanEditWindow, ADocumentThatFitsHasNoScrollBar) {
    open();
    pane->wanted = 100;
    doubleClick("T.1.1");
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 0);
    EXPECT_FALSE(control<QScrollBar>("VSEdit").isVisible());
    EXPECT_EQ(control("OleEdit").y(), 0);
}

TEST_F(PlanEditWindow, WheelAndKeysMoveByTheScrollBarsSteps) {
    open();
    pane->wanted = 3000;
    doubleClick("T.1.1");
    pane->setFocus();
    QTest::keyClick(pane, Qt::Key_PageDown);
    EXPECT_EQ(control<QScrollBar>("VSEdit").value(), 1);
    QTest::keyClick(pane, Qt::Key_End);
    EXPECT_EQ(control<QScrollBar>("VSEdit").value(), 10);
    QWheelEvent up({5, 5}, pane->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                   Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(pane, &up);
    EXPECT_EQ(control<QScrollBar>("VSEdit").value(), 9);
}

TEST_F(PlanEditWindow, BrowsingBringsTheViewDownToThePane) {
    open();
    pane->wanted = 3000;
    click("T.1.1");
    choose("mnuBrowseDoc");
    EXPECT_EQ(control("OleEdit").size(), control("PicEdit").size());
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 0);
    EXPECT_EQ(pane->height(), 3000) << "its pages move inside";
}

TEST_F(PlanEditWindow, AViewThatGrowsLaterGetsItsSteps) {
    open();
    doubleClick("T.1.1");
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 0);
    pane->setWanted(2000);
    QCoreApplication::processEvents();
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 10);
}

TEST_F(PlanEditWindow, ADoubleClickOnAFolderTurnsThePreviewOffWithoutAMessage) {
    open();
    doubleClick("T.1.1");
    doubleClick("T.1");
    EXPECT_FALSE(control("OleEdit").isVisible());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(PlanEditWindow, ADocumentThatCannotBeShownSaysWhyInThePaneAndOnlyBrowsingShowsABox) {
    open();
    preview.failure = RunTimeError(error::invalidCall, u"设有打开密码，请去掉密码后再试。");
    doubleClick("T.1.1");
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(control("PicEdit").findChild<QLabel*>()->text(), "设有打开密码，请去掉密码后再试。");
    choose("mnuBrowseDoc");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].startsWith(
        "打开文档时出现意外的错误！\n设有打开密码，请去掉密码后再试。\n文档："));
}

TEST_F(PlanEditWindow, EnterOnANodeIsADoubleClick) {
    open();
    QTest::keyClick(&tree(), Qt::Key_Return);
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.2")});
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

// Layout, in twips of 15 to a pixel

TEST_F(PlanEditWindow, ThePanesFollowTheWindow) {
    open();
    form->resize(1000, 680); // 15000 by 10200 twips
    EXPECT_EQ(tree().geometry(), QRect(QPoint(7, 30), QPoint(306, 646)));
    EXPECT_EQ(control("Image1").x(), 307);
    EXPECT_EQ(control("PicEdit").geometry(), QRect(QPoint(310, 30), QPoint(986, 646)));
    EXPECT_EQ(control("OleEdit").size(), control("PicEdit").size());
}

TEST_F(PlanEditWindow, AWindowOf4000TwipsKeepsItsLayout) {
    open();
    const QRect before = tree().geometry();
    form->resize(266, 680);
    EXPECT_EQ(tree().geometry(), before);
    form->resize(1000, 266);
    EXPECT_EQ(tree().geometry(), before);
    form->resize(267, 680);
    EXPECT_NE(tree().geometry(), before);
}

void dragSplitter(QWidget& bar, int by) {
    QTest::mousePress(&bar, Qt::LeftButton, {}, {1, 50});
    QTest::mouseMove(&bar, {1 + by, 50});
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {1 + by, 50});
}

TEST_F(PlanEditWindow, TheSplitterMovesThePanes) {
    open();
    dragSplitter(control("Image1"), 100);
    EXPECT_EQ(control("Image1").x(), 407);
    EXPECT_EQ(tree().geometry().right(), 406);
    EXPECT_EQ(control("PicEdit").x(), 410);
    EXPECT_EQ(control("PicEdit").geometry().right(), 982);
}

TEST_F(PlanEditWindow, ASplitterReleasedBeyondItsLimitsStandsOnThem) {
    open();
    dragSplitter(control("Image1"), 600);
    EXPECT_EQ(control("Image1").x(), 700);
    dragSplitter(control("Image1"), -600);
    EXPECT_EQ(control("Image1").x(), 300);
}

TEST_F(PlanEditWindow, OnItsWayTheSplitterFollowsOnlyBetweenItsLimits) {
    open();
    QWidget& bar = control("Image1");
    EXPECT_EQ(bar.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
    QTest::mousePress(&bar, Qt::LeftButton, {}, {1, 50});
    QTest::mouseMove(&bar, {101, 50});
    EXPECT_EQ(bar.x(), 407);
    EXPECT_EQ(tree().geometry().right(), 306) << "the panes wait for the release";
    QTest::mouseMove(&bar, {1 + 294, 50}); // 0.7 of the width and beyond
    EXPECT_EQ(bar.x(), 407);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {1 + 294, 50});
    EXPECT_EQ(bar.x(), 700);
    EXPECT_EQ(bar.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
}

TEST_F(PlanEditWindow, InASmallWindowTheSplitterStays) {
    open();
    for (const QSize small : {QSize(400, 680), QSize(1000, 333)}) { // 6000 and 4995 twips
        form->resize(small);
        const int before = control("Image1").x();
        dragSplitter(control("Image1"), 40);
        EXPECT_EQ(control("Image1").x(), before) << small.width();
    }
    form->resize(1000, 334);
    dragSplitter(control("Image1"), 40);
    EXPECT_EQ(control("Image1").x(), 347);
    form->resize(1000, 266); // 3990 twips: the panes stand as before
    const int before = control("Image1").x();
    dragSplitter(control("Image1"), 40);
    EXPECT_EQ(control("Image1").x(), before);
}

TEST_F(PlanEditWindow, TheScrollBarStandsOverTheRightEdgeOfThePreview) {
    open();
    pane->wanted = 3000;
    doubleClick("T.1.1");
    const auto expectInPlace = [this] {
        const QRect bar = control("VSEdit").geometry();
        const QSize inside = control("PicEdit").size();
        EXPECT_EQ(bar.x(), inside.width() - bar.width() - 3); // 50 twips
        EXPECT_EQ(bar.y(), 0);
        EXPECT_EQ(bar.height(), inside.height() - 3);
    };
    expectInPlace();
    dragSplitter(control("Image1"), 100);
    expectInPlace();
    form->resize(900, 600);
    expectInPlace();
}

// Rebuilding the contents

TEST_F(PlanEditWindow, RebuildingTheContentsNeedsAFileInTheWorkFolder) {
    TemporaryFolder empty;
    world.state.gWorkPath = empty.root();
    open();
    choose("mnuBul");
    EXPECT_EQ(messages(), QStringList{"还没生成标书!"});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
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

// Check and PDF

struct PlanEditCheck : PlanEditWindow {
    QTreeWidget& list() { return *form->findChild<QTreeWidget*>("lstFindings"); }
    QString summary() { return form->findChild<QLabel*>("lblSummary")->text(); }
};

TEST_F(PlanEditCheck, ItListsWhatToMendAndAClickSelectsTheNode) {
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    ASSERT_EQ(list().topLevelItemCount(), 2);
    EXPECT_EQ(list().topLevelItem(0)->text(0), "工程概况") << "its heading would run on";
    EXPECT_EQ(list().topLevelItem(1)->text(0), "编制依据");
    EXPECT_TRUE(list().topLevelItem(1)->text(1).contains("T.1.1.doc"));
    EXPECT_TRUE(summary().contains("2"));
    list().setCurrentItem(list().topLevelItem(0));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1");
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
    list().setCurrentItem(list().topLevelItem(1));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
    EXPECT_TRUE(messages().isEmpty());
    expectUsable();
}

TEST_F(PlanEditCheck, OfASoundPlanItSaysSo) {
    switches.gBlankLineAroundTitle = true;
    open();
    choose("mnuCheck");
    EXPECT_EQ(summary(), "没有发现问题，可以生成。");
    EXPECT_FALSE(list().isVisible());
    EXPECT_LT(list().window()->height(), 200) << "no empty room for rows";
}

TEST_F(PlanEditCheck, AskedAgainItShowsWhatIsSoNow) {
    switches.gBlankLineAroundTitle = true;
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    EXPECT_EQ(list().topLevelItemCount(), 1);
    writeDocument("T.1.1", u"依据正文");
    choose("mnuCheck");
    EXPECT_EQ(list().topLevelItemCount(), 0);
}

TEST_F(PlanEditCheck, AClickOnTheCurrentRowSelectsItsNodeAgain) {
    QFile::remove(fileOf("T.1.1"));
    switches.gBlankLineAroundTitle = true;
    open();
    choose("mnuCheck");
    const auto clickRow = [&] {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualItemRect(list().topLevelItem(0)).center());
    };
    clickRow();
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    click("T.1");
    clickRow();
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
}

TEST_F(PlanEditCheck, OpenedItLeavesTheSelectedNodeUntilARowIsChosen) {
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    ASSERT_TRUE(QTest::qWaitForWindowActive(list().window()));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.2");
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_NE(tree().outline().tree().SelectedItem()->Key(), "T.2");
}

TEST_F(PlanEditCheck, LongTextsStandInSeveralLines) {
    open();
    choose("mnuCheck");
    QTest::qWait(1);
    EXPECT_EQ(list().columnWidth(1), 240) << "as wide as it may be";
    const int line = list().fontMetrics().lineSpacing();
    EXPECT_GE(list().visualItemRect(list().topLevelItem(0)).height(), 2 * line)
        << "the advice for a heading that runs on is long";
}

TEST_F(PlanEditCheck, OfAPlanWithNothingInItSaysThatThereIsNothingToGenerate) {
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key<>'T'");
    open();
    choose("mnuCheck");
    ASSERT_EQ(list().topLevelItemCount(), 1);
    EXPECT_EQ(list().topLevelItem(0)->text(1), "没有内容去生成标书！");
}

TEST_F(PlanEditCheck, CancelledItShowsNoList) {
    world.longRun.cancel = [] { return true; };
    open();
    choose("mnuCheck");
    EXPECT_EQ(form->findChild<QTreeWidget*>("lstFindings"), nullptr);
    expectUsable();
}

TEST_F(PlanEditCheck, ItLeavesTheTurnToOthersAndIsNoStepOfTheHistory) {
    world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.root());
    world.state.History = std::make_unique<history::History>(
        world.state.gUserTplPath + ".~history",
        history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
        *world.state.gFso, "测试");
    QFile::remove(fileOf("T.1.1"));
    open();
    int yields = 0;
    world.events.whileServed = [&] {
        ++yields;
        EXPECT_FALSE(world.state.Turn->isTaken());
        EXPECT_FALSE(world.state.History->isUnderWay());
    };
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key='T.2'");
    choose("mnuCheck");
    EXPECT_EQ(yields, 2) << "of the outline as the workbench has left it";
    EXPECT_EQ(list().topLevelItemCount(), 2);
    form.reset();
}

TEST_F(PlanEditCheck, WhatIsNoRunTimeErrorIsToldAndTheWindowGoesOn) {
    open();
    world.events.whileServed = [] { throw std::logic_error("odd"); };
    choose("mnuCheck");
    EXPECT_EQ(messages(), QStringList("程序内部出错，这一步没有完成。（odd）"));
    EXPECT_FALSE(world.longRun.running);
    expectUsable();
    world.events.whileServed = nullptr;
    choose("mnuCheck");
    EXPECT_EQ(messages().size(), 1);
    expectUsable();
}

TEST_F(PlanEditCheck, NoOtherCommandRunsInIt) {
    open();
    int yields = 0;
    world.events.whileServed = [&] {
        ++yields;
        for (const char* name : {"mnuCheck", "mnuBrowsebid", "mnuOpenDoc", "mnuBack", "mnuPdf"}) {
            choose(name);
        }
        press("生成标书");
    };
    choose("mnuCheck");
    EXPECT_EQ(yields, 3) << "at each node";
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    EXPECT_TRUE(frame.asked.isEmpty() && shell.opened.isEmpty() && pdf.printed.isEmpty());
    EXPECT_FALSE(QFile::exists(finished()));
    expectUsable();
}

TEST_F(PlanEditWindow, ThePdfStandsBesideTheFinishedDocument) {
    open();
    choose("mnuPdf");
    EXPECT_EQ(messages(), QStringList{"对不起，系统尚未生成标书！"});
    world.folder.write("施工方案.doc", "finished");
    choose("mnuPdf");
    EXPECT_EQ(pdf.printed, QStringList({finished()}));
    EXPECT_EQ(world.folder.read("施工方案.pdf"), pdf.content);
    EXPECT_TRUE(messages().last().endsWith("施工方案.pdf"));
    pdf.failure = RunTimeError(error::invalidCall, u"办公套件无法转换文件");
    choose("mnuPdf");
    EXPECT_EQ(messages().last(), "办公套件无法转换文件");
    expectUsable();
}

TEST_F(PlanEditWindow, WhatIsNoRunTimeErrorOfThePdfIsToldAndTheWindowGoesOn) {
    class OddPrinter : public office::PdfPrinter {
        bool isAvailable() const override { return true; }
        void print(const QString&, const QString&) override { throw std::logic_error("odd"); }
    } odd;
    printer = &odd;
    world.folder.write("施工方案.doc", "finished");
    open();
    choose("mnuPdf");
    EXPECT_EQ(messages(), QStringList("程序内部出错，这一步没有完成。（odd）"));
    EXPECT_FALSE(world.longRun.running);
    EXPECT_FALSE(QFile::exists(world.state.gWorkPath + "施工方案.pdf"));
    expectUsable();
    form.reset(); // which knows the printer
}

} // namespace
} // namespace qvnd::test
