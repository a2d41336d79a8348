#include "gui/support/DesktopWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QMessageBox>

namespace qvnd::test {
namespace {

// What a second start on the same folder shows of the first one's windows.
class BroughtToFront : public testing::Test {
protected:
    // Another program's window, which lies in front.
    void cover() {
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    }

    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};
    QWidget other;
};

TEST_F(BroughtToFront, TheMainWindowIsActiveAgain) {
    ASSERT_TRUE(world.start());
    cover();
    world.run().bringToFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&world.mainForm()));
}

TEST_F(BroughtToFront, AMinimisedMainWindowIsAsLargeAsItWas) {
    ASSERT_TRUE(world.start());
    ASSERT_TRUE(world.mainForm().isMaximized());
    world.mainForm().setWindowState(world.mainForm().windowState() | Qt::WindowMinimized);
    ASSERT_TRUE(world.mainForm().isMinimized());
    world.run().bringToFront();
    EXPECT_FALSE(world.mainForm().isMinimized());
    EXPECT_TRUE(world.mainForm().isMaximized());
}

TEST_F(BroughtToFront, ABoxThatWaitsForItsAnswerIsInFrontOfTheMainWindow) {
    ASSERT_TRUE(world.start());
    QMessageBox box(&world.mainForm());
    box.open();
    cover();
    world.run().bringToFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
}

TEST_F(BroughtToFront, WhileTheFirstStillStartsNothingIsShown) {
    world.prepare = [this] { world.run().bringToFront(); };
    EXPECT_TRUE(world.start());
}

} // namespace
} // namespace qvnd::test
