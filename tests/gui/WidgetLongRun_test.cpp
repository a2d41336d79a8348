#include "platform/desktop/windows/WidgetLongRun.h"

#include "support/Text.h"
#include "support/WaitFor.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

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

TEST(LongRuns, KeepTheWindowsPaintedBeforeTheirTimeHasPassed) {
    desktop::WidgetLongRun run(60'000);
    bool isServed = false;
    QMetaObject::invokeMethod(
        qApp, [&] { isServed = true; }, Qt::QueuedConnection);
    run.begin("添加文档", 2);
    EXPECT_FALSE(run.isCancelled());
    EXPECT_TRUE(isServed);
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
    run.begin("添加文档", 1);
    EXPECT_FALSE(run.isCancelled());
    run.end();
}

} // namespace
} // namespace qvnd::test
