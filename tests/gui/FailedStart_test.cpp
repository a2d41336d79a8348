#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "startup/windows/DesktopRun.h"
#include "startup/windows/SingleInstance.h"
#include "startup/windows/frmSplash.h"
#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

namespace qvnd::test {
namespace {

using startup::runOnDesktop;

// A portable installation whose Db_BidSet.mdb is no database. Answers a box of the start.
class FailedStart : public testing::Test {
protected:
    FailedStart() {
        folder.write("qvnd.portable", "");
        folder.write("Sys/Database/Db_BidSet.mdb", "junk");
    }
    static QStringList windowsInSight() {
        QStringList names;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible()) {
                names << window->objectName();
            }
        }
        return names;
    }
    // Presses the box's only button once the box stands; `look` looks at it before.
    void answerBox(const std::function<void(QMessageBox&)>& look) {
        waiting.callOnTimeout(&waiting, [this, look] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box != nullptr) {
                waiting.stop();
                look(*box);
                box->accept();
            }
        });
        waiting.start(10);
    }

    QTimer waiting;
    TemporaryFolder folder;
    FakeMessageBoxes fake;
    desktop::WidgetMessageBoxes boxes;
};

TEST_F(FailedStart, EndsTheProcessWithAStatusOfItsOwn) {
    EXPECT_NE(runOnDesktop(folder.path(), fake), 0);
    ASSERT_EQ(fake.shown.size(), 1U);
    EXPECT_TRUE(fake.shown[0].text.startsWith("3343")) << fake.shown[0].text.toStdString();
    EXPECT_EQ(windowsInSight(), QStringList());
}

TEST_F(FailedStart, MakesRoomForTheNextStart) {
    runOnDesktop(folder.path(), fake);
    startup::SingleInstance next(folder.path());
    EXPECT_TRUE(next.begin());
}

TEST_F(FailedStart, TellsItsReasonInABoxThatBelongsToTheSplash) {
    int looked = 0;
    answerBox([&](QMessageBox& box) {
        const QWidget* splash = nullptr;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            splash = window->objectName() == "frmSplash" && window->isVisible() ? window : splash;
        }
        ASSERT_NE(splash, nullptr) << "a failed start leaves it on the screen";
        EXPECT_EQ(box.windowHandle()->transientParent(), splash->windowHandle());
        EXPECT_TRUE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        ++looked;
    });
    EXPECT_NE(runOnDesktop(folder.path(), boxes), 0);
    EXPECT_EQ(looked, 1);
}

TEST_F(FailedStart, ABoxWithoutASplashStandsLikeAnyOther) {
    int looked = 0;
    answerBox([&](QMessageBox& box) {
        EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        ++looked;
    });
    boxes.tell("提示的内容");
    EXPECT_EQ(looked, 1);
}

} // namespace
} // namespace qvnd::test
