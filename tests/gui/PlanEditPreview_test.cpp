#include "gui/support/PlanEditWindow.h"

#include <QLabel>

namespace qvnd::test {
namespace {

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

TEST_F(PlanEditWindow, ADoubleClickTellsTheErrorOfTheContainerAloneUnderItsTitle) {
    open();
    preview.failure = RunTimeError(31024, u"无法显示");
    doubleClick("T.1.1");
    ASSERT_EQ(messages(), QStringList("出现意外的错误。可能是你的系统不稳定，请退出程序重新进入"
                                      "或是重启计算机。\n无法显示\n文档：编制依据（T.1.1）"));
    EXPECT_EQ(world.messages.shown[0].title, "提示");
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    choose("mnuBrowseDoc");
    EXPECT_EQ(messages().last(), "打开文档时出现意外的错误！\n无法显示\n文档：编制依据（T.1.1）");
    EXPECT_EQ(world.messages.shown[1].title, QString());
    EXPECT_EQ(world.messages.shown[1].icon, desktop::Icon::exclamation);
}

TEST_F(PlanEditWindow, EnterOnANodeIsADoubleClick) {
    open();
    QTest::keyClick(&tree(), Qt::Key_Return);
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.2")});
}

// Layout, in twips of 15 to a pixel

TEST_F(PlanEditWindow, ThePanesFollowTheWindow) {
    open();
    form->resize(1000, 680); // 15000 by 10200 twips
    EXPECT_EQ(tree().geometry(), QRect(QPoint(7, 30), QPoint(306, 646)));
    EXPECT_EQ(control("Image1").geometry(), QRect(QPoint(307, 30), QPoint(309, 646)));
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

TEST_F(PlanEditWindow, TheWindowsResizeAndTheSplitterBringTheViewDownToThePane) {
    open();
    pane->wanted = 3000;
    const auto expectDown = [this] {
        EXPECT_EQ(control("OleEdit").geometry(), QRect(QPoint(), control("PicEdit").size()));
        EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 0);
    };
    doubleClick("T.1.1");
    control<QScrollBar>("VSEdit").setValue(5);
    form->resize(900, 600);
    expectDown();
    doubleClick("T.1.1");
    EXPECT_EQ(control<QScrollBar>("VSEdit").maximum(), 10);
    dragSplitter(control("Image1"), 0);
    expectDown();
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

} // namespace
} // namespace qvnd::test
