#include "gui/support/DesktopWorld.h"
#include "outline/windows/SplitterBar.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabWidget>

namespace qvnd::test {
namespace {

// The whole program, started, left and started again on the same folder.
class RememberedWindows : public testing::Test {
protected:
    RememberedWindows() { start(); }

    void start() {
        world.drop();
        ASSERT_TRUE(world.start());
        QCoreApplication::processEvents();
    }
    void leave() { world.mainForm().close(); }
    void showNormal(const QRect& place) {
        world.mainForm().showNormal();
        world.mainForm().setGeometry(place);
        QCoreApplication::processEvents();
    }
    template <class Widget>
    Widget& part(const char* name) {
        return *world.mainForm().findChild<Widget*>(name);
    }
    void drag(const char* name, const QPoint& by) {
        auto& bar = part<outline::SplitterBar>(name);
        QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(2, 2));
        QTest::mouseMove(&bar, QPoint(2, 2) + by);
        QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(2, 2));
    }
    QString selected() {
        const auto* node = world.run().program().workbench().TrvCurrent.SelectedItem();
        return node ? node->Key() : QString();
    }
    void click(const QString& key) {
        auto& view = part<outline::OutlineView>("TrvCurrent");
        const QModelIndex index = view.outline().indexOf(&view.outline().tree().Item(key));
        view.scrollTo(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    }

    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};
};

TEST_F(RememberedWindows, TheFirstStartIsMaximisedOnTheFirstTabWithTheLastNodeSelected) {
    EXPECT_TRUE(world.mainForm().isMaximized());
    EXPECT_EQ(part<QTabWidget>("TabTemplate").currentIndex(), 0);
    EXPECT_EQ(selected(), "甲.3");
}

TEST_F(RememberedWindows, SizeAndPlaceAreAsTheyWereLeft) {
    const QRect place(20, 30, 780, 620);
    showNormal(place);
    leave();
    start();
    EXPECT_FALSE(world.mainForm().isMaximized());
    EXPECT_EQ(world.mainForm().geometry(), place);
}

TEST_F(RememberedWindows, AMaximisedFrameIsMaximisedAgain) {
    leave();
    start();
    EXPECT_TRUE(world.mainForm().isMaximized());
}

TEST_F(RememberedWindows, BothBarsStandWhereTheyWereLeft) {
    showNormal({20, 30, 780, 620});
    drag("lblResize", {70, 0});
    drag("imgSpliter", {0, -40});
    const QRect upright = part<QWidget>("lblResize").geometry();
    const QRect lying = part<QWidget>("imgSpliter").geometry();
    leave();
    start();
    EXPECT_EQ(part<QWidget>("lblResize").geometry(), upright);
    EXPECT_EQ(part<QWidget>("imgSpliter").geometry(), lying);
    EXPECT_EQ(part<QWidget>("TabCurrent").geometry().right() + 1, upright.left());
}

TEST_F(RememberedWindows, TheLowerTabIsTheOneThatWasLeft) {
    part<QTabWidget>("TabTemplate").setCurrentIndex(1);
    leave();
    start();
    EXPECT_EQ(part<QTabWidget>("TabTemplate").currentIndex(), 1);
}

TEST_F(RememberedWindows, TheSelectedNodeCountsAsClickedInTheNextRun) {
    click("甲.1.1");
    leave();
    start();
    EXPECT_EQ(selected(), "甲.1.1");
    EXPECT_EQ(world.run().program().workbench().clickedKey, "甲.1.1");
    EXPECT_TRUE(world.run().program().workbench().mnuBrowseDoc);
    auto& view = part<outline::OutlineView>("TrvCurrent");
    EXPECT_TRUE(view.viewport()->rect().intersects(view.visualRect(view.currentIndex())));
}

TEST_F(RememberedWindows, ANodeThatIsGoneLeavesTheLastOneSelected) {
    click("甲.1.1");
    leave();
    world.drop();
    {
        jet::DBEngine engine;
        const auto db =
            engine.Workspaces(0).OpenDatabase(world.folder.path("Sys/用户模板/Db_UsTemplate.mdb"));
        db->Execute("Delete * from 甲 where Key='甲.1.1'");
    }
    start();
    EXPECT_EQ(selected(), "甲.3");
}

TEST_F(RememberedWindows, ExitOfTheMenuRemembersToo) {
    part<QTabWidget>("TabTemplate").setCurrentIndex(1);
    part<QAction>("mnuExit").trigger();
    start();
    EXPECT_EQ(part<QTabWidget>("TabTemplate").currentIndex(), 1);
}

TEST_F(RememberedWindows, AWorkbenchThatWasNotMaximisedStandsInItsPlace) {
    showNormal({20, 30, 860, 700});
    auto* child = world.mainForm().findChild<QMdiArea*>()->subWindowList().constFirst();
    child->showNormal();
    child->setGeometry(5, 5, child->minimumSizeHint().width() + 20,
                       child->minimumSizeHint().height() + 10);
    QCoreApplication::processEvents();
    const QRect place = child->geometry();
    leave();
    start();
    child = world.mainForm().findChild<QMdiArea*>()->subWindowList().constFirst();
    EXPECT_FALSE(child->isMaximized());
    EXPECT_EQ(child->geometry(), place);
}

TEST_F(RememberedWindows, ADamagedMemoryIsAFirstStart) {
    showNormal({20, 30, 780, 620});
    leave();
    world.folder.write("windows.ini", "[General]\nframe=@ByteArray(junk)\nworkbench=7\nbarsFor=x\n"
                                      "verticalBar=-3\nlibrary=99\nnode=[\n");
    start();
    EXPECT_TRUE(world.mainForm().isMaximized());
    EXPECT_EQ(part<QTabWidget>("TabTemplate").currentIndex(), 0);
    EXPECT_EQ(selected(), "甲.3");
}

TEST_F(RememberedWindows, TheFrameCannotBeMadeSoSmallThatTheWorkbenchIsCut) {
    showNormal({20, 30, 100, 100});
    const auto& workbench = part<outline::frmBid>("frmBid");
    EXPECT_GE(workbench.width(), workbench.minimumSizeHint().width());
    EXPECT_GE(workbench.height(), workbench.minimumSizeHint().height());
}

} // namespace
} // namespace qvnd::test
