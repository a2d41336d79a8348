#include "gui/support/WindowWalk.h"
#include "gui/support/WorkbenchWindow.h"

#include "outline/windows/SplitterBar.h"
#include "outline/windows/WorkbenchLayout.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>

namespace qvnd::test {
namespace {

using outline::WorkbenchLayout;

constexpr QSize form{1000, 600}; // 15000 by 9000 twips

int inTwips(int pixels) { return pixels * 15; }

TEST(WorkbenchLayoutRules, TheBarStandsByTheSizeOfTheForm) {
    WorkbenchLayout layout;
    ASSERT_TRUE(layout.resize(form));
    const QRect bar = layout.places().lblResize;
    EXPECT_NEAR(inTwips(bar.left()), 0.4 * 15000 + 20, 8);
    EXPECT_EQ(inTwips(bar.top()), 450);
    EXPECT_NEAR(inTwips(bar.width()), 80, 15);
    EXPECT_NEAR(inTwips(bar.height()), 0.6 * 9000 - 300, 15);
}

TEST(WorkbenchLayoutRules, ASmallFormIsLeftAsItWas) {
    WorkbenchLayout layout;
    layout.resize(form);
    const QRect before = layout.places().TabTemplate;
    EXPECT_FALSE(layout.resize({333, 600}));
    EXPECT_FALSE(layout.resize({1000, 266}));
    EXPECT_EQ(layout.places().TabTemplate, before);
    EXPECT_TRUE(layout.resize({334, 267}));
}

TEST(WorkbenchLayoutRules, PanesMeetTheBarsAndNeverOverlap) {
    for (const QSize size : {QSize(334, 267), QSize(1000, 600), QSize(2560, 1370)}) {
        WorkbenchLayout layout;
        layout.resize(size);
        const auto at = layout.places();
        const std::vector<QRect> all{at.TbarBid,    at.TabCurrent,  at.lblResize, at.fraSee,
                                     at.imgSpliter, at.TabTemplate, at.cmdEdit,   at.cmdExit};
        for (std::size_t i = 0; i < all.size(); ++i) {
            EXPECT_TRUE(all[i].isValid()) << i;
            EXPECT_TRUE(QRect(QPoint(), size).contains(all[i])) << i;
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_FALSE(all[i].intersects(all[j])) << i << " and " << j;
            }
        }
        EXPECT_EQ(at.TabCurrent.right() + 1, at.lblResize.left());
        EXPECT_EQ(at.lblResize.right() + 1, at.fraSee.left());
    }
}

TEST(WorkbenchLayoutRules, TheUprightBarIsFollowedBetweenFourAndSevenTenths) {
    WorkbenchLayout layout;
    layout.resize(form);
    const int start = layout.places().lblResize.left();
    layout.dragVertical(100);
    EXPECT_NEAR(layout.places().lblResize.left(), start + 101, 1);
    const int followed = layout.places().lblResize.left();
    layout.dragVertical(400);
    EXPECT_EQ(layout.places().lblResize.left(), followed);
    layout.dragVertical(-300);
    EXPECT_EQ(layout.places().lblResize.left(), followed);
}

TEST(WorkbenchLayoutRules, ADragThatEndsOutsideLeavesTheBarAtItsLimit) {
    WorkbenchLayout layout;
    layout.resize(form);
    layout.dragVertical(900);
    layout.drop();
    EXPECT_EQ(layout.places().lblResize.left(), 700);
    layout.dragVertical(-900);
    layout.drop();
    EXPECT_EQ(layout.places().lblResize.left(), 400);
    layout.dragHorizontal(900);
    layout.drop();
    EXPECT_EQ(layout.places().lblResize.height(), 420);
    layout.dragHorizontal(-900);
    layout.drop();
    EXPECT_EQ(layout.places().lblResize.height(), 180);
}

TEST(WorkbenchLayoutRules, TheLowerBarChangesTheHeightOfTheUprightOne) {
    WorkbenchLayout layout;
    layout.resize(form);
    const QRect before = layout.places().lblResize;
    layout.dragHorizontal(40);
    EXPECT_EQ(layout.places().lblResize.height(), before.height() + 40);
    EXPECT_EQ(layout.places().imgSpliter.top(), before.bottom() + 41);
}

TEST(WorkbenchLayoutRules, RestoredBarsStandInAFormOfTheirSizeAlone) {
    WorkbenchLayout before;
    before.resize(form);
    before.dragVertical(100);
    before.dragHorizontal(-40);
    before.drop();
    const QRect bar = before.places().lblResize;

    WorkbenchLayout after;
    after.restore(before.bars());
    after.resize({900, 600});
    EXPECT_EQ(after.places().lblResize.left(), qRound((0.4 * 13500 + 20) / 15));
    after.resize(form);
    EXPECT_EQ(after.places().lblResize, bar);
}

TEST(WorkbenchLayoutRules, ADragEndsWhatWasRestored) {
    WorkbenchLayout layout;
    layout.restore({form, 9000, 4000});
    layout.resize(form);
    layout.dragVertical(10);
    layout.drop();
    layout.resize({900, 600});
    layout.resize(form);
    EXPECT_NEAR(inTwips(layout.places().lblResize.left()), 0.4 * 15000 + 20, 8);
}

TEST(WorkbenchLayoutRules, RestoredBarsOutsideTheirLimitsAreLeftOut) {
    for (const WorkbenchLayout::Bars& bars :
         {WorkbenchLayout::Bars{form, 100, 4000}, WorkbenchLayout::Bars{form, 9000, 8999}}) {
        WorkbenchLayout layout;
        layout.restore(bars);
        layout.resize(form);
        EXPECT_NEAR(inTwips(layout.places().lblResize.left()), 0.4 * 15000 + 20, 8);
    }
}

TEST(WorkbenchLayoutRules, TheLeastSizeHoldsEveryPaneWhereverTheBarsStand) {
    const QSize plan(130, 100);
    const QSize preview(180, 110);
    const QSize libraries(200, 95);
    const QSize least = WorkbenchLayout::leastSize(300, plan, preview, libraries);
    for (const int x : {-2000, 2000}) {
        for (const int y : {-2000, 2000}) {
            WorkbenchLayout layout;
            ASSERT_TRUE(layout.resize(least));
            layout.dragVertical(x);
            layout.dragHorizontal(y);
            layout.drop();
            const auto at = layout.places();
            const auto holds = [](const QRect& place, const QSize& pane) {
                return place.width() + 1 >= pane.width() && place.height() + 1 >= pane.height();
            };
            EXPECT_TRUE(holds(at.TabCurrent, plan));
            EXPECT_TRUE(holds(at.fraSee, preview));
            EXPECT_TRUE(holds(at.TabTemplate, libraries));
            EXPECT_GE(at.TbarBid.width(), 300);
            EXPECT_GE(at.cmdEdit.top(), at.imgSpliter.bottom());
        }
    }
}

TEST_F(WorkbenchWindow, NothingIsCutAtTheSmallestSize) {
    open();
    form->resize(form->minimumSizeHint());
    QCoreApplication::processEvents();
    EXPECT_EQ(form->size(), form->minimumSizeHint());
    EXPECT_EQ(cutTexts(*form), QStringList());
    EXPECT_GE(toolbar().width(), toolbar().sizeHint().width());
    for (const char* name : {"TabCurrent", "TabTemplate"}) {
        const auto* tabs = form->findChild<QTabWidget*>(name);
        EXPECT_GE(tabs->width(), tabs->tabBar()->sizeHint().width()) << name;
    }
    for (const char* name : {"cmdEdit", "cmdExit"}) {
        EXPECT_TRUE(form->rect().contains(form->findChild<QPushButton*>(name)->geometry()));
    }
}

TEST_F(WorkbenchWindow, ADraggedBarMovesAtOnceAndThePanesAtItsEnd) {
    open();
    auto* bar = form->findChild<outline::SplitterBar*>("lblResize");
    auto* plan = form->findChild<QTabWidget*>("TabCurrent");
    const QRect before = plan->geometry();
    const int left = bar->x();
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(2, 50));
    QTest::mouseMove(bar, QPoint(62, 50));
    EXPECT_NEAR(bar->x(), left + 61, 2);
    EXPECT_EQ(plan->geometry(), before);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(2, 50));
    EXPECT_EQ(plan->geometry().right() + 1, bar->x());
    EXPECT_GT(plan->width(), before.width());
}

TEST_F(WorkbenchWindow, TheBarsMoveByArrowKeysToo) {
    open();
    auto* bar = form->findChild<outline::SplitterBar*>("imgSpliter");
    const int top = bar->y();
    QTest::keyClick(bar, Qt::Key_Up);
    EXPECT_LT(bar->y(), top);
    QTest::keyClick(bar, Qt::Key_Right);
    QTest::keyClick(bar, Qt::Key_Down);
    EXPECT_EQ(bar->y(), top);
}

TEST_F(WorkbenchWindow, TheCloseItemIsGoneFromTheSystemMenu) {
    openAsItIs();
    QMdiArea area;
    QMdiSubWindow* window = area.addSubWindow(form.get());
    window->show();
    EXPECT_FALSE(window->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    ASSERT_NE(window->systemMenu(), nullptr);
    EXPECT_GT(window->systemMenu()->actions().size(), 3);
    for (const QAction* action : window->systemMenu()->actions()) {
        EXPECT_FALSE(action->text().contains("Close") || action->text().contains("关闭"));
    }
    form->setParent(nullptr);
}

TEST_F(WorkbenchWindow, ATallDocumentScrollsInTenStepsOfATenthOfItsHeight) {
    open("T.2");
    auto* bar = form->findChild<QScrollBar*>("VSSee");
    pane->setWanted(1000);
    item("mnuBrowseDoc").trigger();
    EXPECT_EQ(bar->maximum(), 10);
    EXPECT_EQ(pane->height(), 1000);
    bar->setValue(3);
    EXPECT_EQ(pane->y(), -300);
    bar->setValue(10);
    EXPECT_EQ(pane->y(), -1000);
    item("mnuBrowseDoc").trigger();
    EXPECT_EQ(pane->y(), 0);
}

TEST_F(WorkbenchWindow, AShortDocumentDoesNotScroll) {
    open("T.2");
    auto* bar = form->findChild<QScrollBar*>("VSSee");
    item("mnuBrowseDoc").trigger();
    EXPECT_EQ(bar->maximum(), 0);
    EXPECT_EQ(pane->y(), 0);
}

TEST_F(WorkbenchWindow, TheEmptyPreviewSaysHowToFillIt) {
    open("T.2");
    const auto* hint = fraSee->findChild<QLabel*>();
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), "双击文档即可在此预览");
    item("mnuBrowseDoc").trigger();
    EXPECT_FALSE(hint->isVisible());
}

TEST_F(WorkbenchWindow, ADocumentThatGrowsWhileItIsShownCanBeScrolled) {
    open("T.2");
    item("mnuBrowseDoc").trigger();
    pane->setWanted(2000);
    QCoreApplication::processEvents();
    EXPECT_EQ(form->findChild<QScrollBar*>("VSSee")->maximum(), 10);
    EXPECT_EQ(pane->height(), 2000);
}

TEST_F(WorkbenchWindow, EveryControlHasAnAccessibleName) {
    open();
    int counted = 0;
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        if (widget->focusPolicy() != Qt::NoFocus && widget->isVisible() &&
            !widget->objectName().startsWith("qt_")) {
            ++counted;
            EXPECT_FALSE(widget->accessibleName().isEmpty())
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        }
    }
    EXPECT_GT(counted, 15);
}

TEST_F(WorkbenchWindow, TabGoesThroughEveryControl) {
    open();
    form->activateWindow();
    QStringList passed;
    const QWidget* first = &trvCurrent();
    const QWidget* at = first;
    do {
        if (at->isVisible() && at->isEnabled() && (at->focusPolicy() & Qt::TabFocus)) {
            passed << at->objectName();
        }
        at = at->nextInFocusChain();
    } while (at != first);
    for (const char* name :
         {"TrvCurrent", "TrvTemplate", "cmdEdit", "cmdExit", "lblResize", "imgSpliter"}) {
        EXPECT_TRUE(passed.contains(name)) << name;
    }
    EXPECT_LT(passed.indexOf("TrvTemplate"), passed.indexOf("cmdEdit"));
    EXPECT_LT(passed.indexOf("cmdEdit"), passed.indexOf("cmdExit"));
}

TEST_F(WorkbenchWindow, CaptionsFitTheirButtons) {
    open();
    for (const char* name : {"cmdEdit", "cmdExit"}) {
        const auto* button = form->findChild<QPushButton*>(name);
        EXPECT_GE(button->width(), button->sizeHint().width()) << name;
        EXPECT_GE(button->height(), button->minimumSizeHint().height()) << name;
    }
}

} // namespace
} // namespace qvnd::test
