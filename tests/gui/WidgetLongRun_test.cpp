#include "platform/desktop/windows/WidgetLongRun.h"

#include "gui/support/ModalWindow.h"
#include "gui/support/PlanEditWindow.h"
#include "startup/WordProcessor.h"
#include "startup/windows/PlanEditing.h"
#include "support/ChangedVariable.h"
#include "support/FakeOffice.h"
#include "support/Text.h"
#include "support/WaitFor.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace qvnd::test {
namespace {

QWidget* dialog() { return QApplication::activeModalWidget(); }

// Until a run without patience has something to show.
void waitForDialog(desktop::WidgetLongRun& run) {
    ASSERT_TRUE(waitFor([&run] {
        EXPECT_FALSE(run.isCancelled());
        return dialog() != nullptr;
    }));
}

TEST(LongRuns, ShowNothingBeforeTheirTimeHasPassed) {
    desktop::WidgetLongRun run(60'000);
    run.begin("添加文档", 2);
    run.next("甲.doc");
    EXPECT_FALSE(run.isCancelled());
    EXPECT_EQ(dialog(), nullptr);
    run.end();
}

class PaintedWindow : public QWidget {
public:
    int painted = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++painted; }
};

TEST(LongRuns, KeepTheWindowsPaintedBeforeTheirTimeHasPassed) {
    PaintedWindow window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    desktop::WidgetLongRun run(60'000);
    const int before = window.painted;
    window.update();
    EXPECT_FALSE(run.isCancelled());
    EXPECT_EQ(window.painted, before) << "nothing has begun";
    run.begin("添加文档", 2);
    EXPECT_FALSE(run.isCancelled());
    EXPECT_EQ(window.painted, before + 1);
    run.end();
}

TEST(LongRuns, ThenNameThePieceAndEndWithTheWork) {
    desktop::WidgetLongRun run(0);
    run.begin("添加文档", 2);
    run.next("甲.doc");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    EXPECT_EQ(dialog()->windowTitle(), "添加文档");
    EXPECT_EQ(dialog()->findChild<QLabel*>()->text(), "甲.doc");
    run.next("乙.doc");
    EXPECT_EQ(dialog()->findChild<QLabel*>()->text(), "乙.doc");
    run.end();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(run.isCancelled());
}

TEST(LongRuns, ThatCannotBeStoppedAnyMoreLoseTheButtonAndWithinOthersKeepIt) {
    desktop::WidgetLongRun run(0);
    run.begin("添加文档", 2);
    run.next("甲.doc");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    run.begin("检查", 0);
    run.offerNoCancel();
    EXPECT_NE(dialog()->findChild<QPushButton*>(), nullptr) << "the other one can stop behind it";
    run.end();
    run.offerNoCancel();
    EXPECT_EQ(dialog()->findChild<QPushButton*>(), nullptr);
    EXPECT_FALSE(run.isCancelled());
    run.end();
}

TEST(LongRuns, OfUnknownLengthShowABusyBar) {
    desktop::WidgetLongRun run(0);
    run.begin("输出 PDF", 0);
    run.next("施工方案.pdf");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    const auto* bar = dialog()->findChild<QProgressBar*>();
    EXPECT_EQ(bar->minimum(), bar->maximum());
    run.end();
}

TEST(LongRuns, AreCancelledByTheButtonUntilTheNextBegins) {
    desktop::WidgetLongRun run(0);
    run.begin("添加文档", 2);
    run.next("甲.rtf");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    dialog()->findChild<QPushButton*>()->click();
    EXPECT_TRUE(run.isCancelled());
    run.end();
    EXPECT_FALSE(run.isCancelled());
    run.begin("添加文档", 1);
    EXPECT_FALSE(run.isCancelled());
    run.end();
}

// Keys that were meant for the window behind the dialog.
TEST(LongRuns, AreNotCancelledBySpaceOrEnterButTabLeadsToTheButton) {
    desktop::WidgetLongRun run(0);
    run.begin("输出 PDF", 0);
    run.next("施工方案.pdf");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog()));
    ASSERT_NE(dialog()->focusWidget(), nullptr);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(dialog()->focusWidget(), key);
        EXPECT_FALSE(run.isCancelled());
    }
    QTest::keyClick(dialog()->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(dialog()->focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(run.isCancelled());
    run.end();
}

// What a user does to be rid of the dialog.
class CancelledLongRuns : public testing::TestWithParam<const char*> {
protected:
    static void cancel() {
        const std::string way = GetParam();
        if (way == "Button") {
            dialog()->findChild<QPushButton*>()->click();
        } else if (way == "Escape") {
            QTest::keyClick(dialog(), Qt::Key_Escape);
        } else {
            dialog()->close();
        }
    }
};

TEST_P(CancelledLongRuns, SayThatTheyStopUntilTheWorkHasEnded) {
    desktop::WidgetLongRun run(0);
    run.begin("添加文档", 2);
    run.next("甲.doc");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    const QWidget* const shown = dialog();
    cancel();
    EXPECT_TRUE(run.isCancelled());
    run.next("乙.doc");
    EXPECT_TRUE(run.isCancelled());
    ASSERT_EQ(dialog(), shown) << "it stays";
    EXPECT_EQ(shown->findChild<QLabel*>()->text(), "正在停止……");
    EXPECT_FALSE(shown->findChild<QPushButton*>()->isEnabled());
    cancel();
    EXPECT_EQ(dialog(), shown) << "however often";
    run.end();
    EXPECT_EQ(dialog(), nullptr);
}

TEST_P(CancelledLongRuns, AreNotOnceTheWorkCannotBeStopped) {
    const bool hasButton = std::string(GetParam()) == "Button";
    desktop::WidgetLongRun run(0);
    run.begin("添加文档", 0);
    run.offerNoCancel();
    run.next("甲.doc");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    const QWidget* const shown = dialog();
    EXPECT_EQ(shown->findChild<QPushButton*>(), nullptr);
    if (!hasButton) {
        cancel();
    }
    EXPECT_FALSE(run.isCancelled());
    ASSERT_EQ(dialog(), shown) << "it stays";
    EXPECT_EQ(shown->findChild<QLabel*>()->text(), "甲.doc");
    run.end();
    run.begin("添加文档", 0);
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    EXPECT_NE(dialog()->findChild<QPushButton*>(), nullptr) << "of the next one";
    run.end();
}

INSTANTIATE_TEST_SUITE_P(Ways, CancelledLongRuns, testing::Values("Button", "Escape", "Close"),
                         [](const auto& way) { return std::string(way.param); });

TEST(LongRuns, AreOneWithThoseThatBeginWithinThem) {
    desktop::WidgetLongRun run(0);
    run.begin("生成目录", 3);
    run.next("第一步");
    ASSERT_NO_FATAL_FAILURE(waitForDialog(run));
    run.begin("计算目录的页码", 0);
    run.next("已排 40 页");
    EXPECT_EQ(dialog()->windowTitle(), "生成目录");
    EXPECT_EQ(dialog()->findChild<QLabel*>()->text(), "已排 40 页");
    EXPECT_EQ(dialog()->findChild<QProgressBar*>()->maximum(), 3);
    EXPECT_EQ(dialog()->findChild<QProgressBar*>()->value(), 0);
    dialog()->findChild<QPushButton*>()->click();
    EXPECT_TRUE(run.isCancelled());
    run.end();
    EXPECT_TRUE(run.isCancelled()) << "the whole";
    EXPECT_NE(dialog(), nullptr);
    run.begin("计算目录的页码", 0);
    EXPECT_TRUE(run.isCancelled()) << "and what follows in it";
    run.end();
    run.end();
    EXPECT_EQ(dialog(), nullptr);
}

// The plan edit window as the program puts it together, with an office suite that hangs; the user
// cancels as soon as he can.
class CancelledInTheWindow : public PlanEditWindow {
protected:
    CancelledInTheWindow() {
        suite.setScript("sleep 600\n");
        QFile::rename(suite.folder.path("office.sh"), suite.folder.path("soffice"));
        longRun = &run;
        QObject::connect(&user, &QTimer::timeout, qApp, [this] {
            auto* shown = qobject_cast<QProgressDialog*>(dialog());
            if (shown && suite.starts() > 0) {
                cancelled << shown->windowTitle();
                user.stop();
                shown->findChild<QPushButton*>()->click();
            }
        });
        user.start(1);
    }

    FakeOffice suite;
    const ChangedVariable path{"PATH", suite.folder.path().toUtf8() + ":" + qgetenv("PATH")};
    const ChangedVariable cache{"XDG_CACHE_HOME", suite.folder.path("cache").toUtf8()};
    desktop::WidgetLongRun run{0};
    QTimer user;
    QStringList cancelled;
};

TEST_F(CancelledInTheWindow, RebuildingTheContentsEndsWithoutAWordOfSuccess) {
    preview::PageConversion conversion(suite.settings());
    startup::DesktopPlanEditing editing(world.messages, world.events, run, conversion,
                                        [] { return false; });
    generation = &editing.services().generation;
    world.folder.write("施工方案.doc", "{\\rtf1 text}");
    open();
    choose("mnuBul");
    EXPECT_EQ(cancelled, QStringList{"生成目录"});
    EXPECT_TRUE(frame.status.isEmpty()) << frame.status.join("|").toStdString();
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    EXPECT_EQ(world.folder.read("施工方案.doc"), "{\\rtf1 text}");
    EXPECT_EQ(dialog(), nullptr);
    expectUsable();
}

TEST_F(CancelledInTheWindow, AnInsertionLeavesTheDocumentAsItWasAndSaysNothing) {
    OutlineWorld::makeTable(*world.state.gDbTemplate, "甲",
                            {{"甲", "甲"}, {"甲.1", "施工部署", "是"}});
    world.registerName(*world.state.gDbTemplate, "甲");
    world.folder.write("Sys/标书模板/甲/甲.1.doc", "{\\rtf1 text}");
    startup::WordProcessor processor(world.messages, [this] { return run.isCancelled(); });
    insertion = &processor.factory();
    open();
    const QByteArray before = world.folder.read("用户模板/T/T.2.doc");
    onceModal<QDialog>([](QDialog& like) {
        like.findChild<QPushButton*>("cmdInsert")->click();
        EXPECT_TRUE(like.isVisible()) << "another one may be chosen";
        like.findChild<QPushButton*>("cmdExit")->click();
    });
    choose("mnuBidLike");
    EXPECT_EQ(cancelled, QStringList{"插入文档"});
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    EXPECT_EQ(world.folder.read("用户模板/T/T.2.doc"), before);
    EXPECT_TRUE(preview.shown.isEmpty());
    expectUsable();
}

} // namespace
} // namespace qvnd::test
