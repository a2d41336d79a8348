#include "platform/desktop/windows/HelpKey.h"

#include "support/FakeHelpWindow.h"
#include "support/FakeMessageBoxes.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QTest>

using namespace qvnd;
using namespace Qt::StringLiterals;

namespace {

struct HelpKey : testing::Test {
    test::FakeHelpWindow help;
    test::FakeMessageBoxes messages;
    QString file = u"Qvnd.hlp"_s;
    desktop::HelpKey key{help, [this] { return file; }, messages};
    QMainWindow frame;
    QMdiArea* area = new QMdiArea(&frame);

    HelpKey() {
        frame.setObjectName(u"MainForm"_s);
        frame.setCentralWidget(area);
        qApp->installEventFilter(&key);
    }
    ~HelpKey() override { qApp->removeEventFilter(&key); }

    QLineEdit* addChild() {
        auto* child = new QWidget;
        child->setObjectName(u"frmBid"_s);
        auto* box = new QLineEdit(child);
        area->addSubWindow(child);
        return box;
    }
};

TEST_F(HelpKey, ShowsThePageOfTheDialogThatHoldsTheBox) {
    QDialog dialog(&frame);
    dialog.setObjectName(u"DlgNew"_s);
    QLineEdit box(&dialog);
    dialog.show();
    QTest::keyClick(&box, Qt::Key_F1);
    EXPECT_EQ(help.shown, QStringList{"DlgNew Qvnd.hlp"});
}

TEST_F(HelpKey, ShowsThePageOfTheChildWindow) {
    QLineEdit* box = addChild();
    frame.show();
    QTest::keyClick(box, Qt::Key_F1);
    EXPECT_EQ(help.shown, QStringList{"frmBid Qvnd.hlp"});
}

TEST_F(HelpKey, InTheFrameItselfTheChildInFrontCounts) {
    addChild();
    frame.show();
    area->subWindowList().constFirst()->show();
    area->setActiveSubWindow(area->subWindowList().constFirst());
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_EQ(help.shown, QStringList{"frmBid Qvnd.hlp"});
}

TEST_F(HelpKey, ShowsThePageOfTheFrameWithoutAChild) {
    frame.show();
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_EQ(help.shown, QStringList{"MainForm Qvnd.hlp"});
}

TEST_F(HelpKey, AMenuCountsForItsWindow) {
    QDialog dialog(&frame);
    dialog.setObjectName(u"DlgNew"_s);
    QMenu menu(&dialog);
    menu.setObjectName(u"mnuSomething"_s);
    EXPECT_EQ(desktop::HelpKey::pageOwner(&menu), "DlgNew");
}

TEST_F(HelpKey, AFileDialogCountsForItsWindow) {
    QFileDialog dialog(&frame);
    EXPECT_EQ(desktop::HelpKey::pageOwner(&dialog), "MainForm");
}

TEST_F(HelpKey, AMessageBoxHasThePageOfMessages) {
    const QMessageBox box;
    EXPECT_EQ(desktop::HelpKey::pageOwner(&box), "messages");
    const QMessageBox inFront(&frame);
    EXPECT_EQ(desktop::HelpKey::pageOwner(&inFront), "messages");
}

TEST_F(HelpKey, AWindowWithoutANameHasNoPage) {
    const QDialog dialog;
    EXPECT_EQ(desktop::HelpKey::pageOwner(&dialog), "");
}

TEST_F(HelpKey, TakesTheKeyFromAShortcut) {
    QAction contents(&frame);
    contents.setShortcut(Qt::Key_F1);
    frame.addAction(&contents);
    int triggered = 0;
    QObject::connect(&contents, &QAction::triggered, [&] { ++triggered; });
    frame.show();
    frame.activateWindow();
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_EQ(triggered, 0);
    EXPECT_EQ(help.shown.size(), 1);
}

TEST_F(HelpKey, LeavesEveryOtherKeyAlone) {
    QLineEdit* box = addChild();
    frame.show();
    QTest::keyClicks(box, "a");
    QTest::keyClick(box, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(box, Qt::Key_F2);
    EXPECT_EQ(box->text(), "a");
    EXPECT_TRUE(help.shown.isEmpty());
}

TEST_F(HelpKey, ARequestForHelpOfTheDesktopIsAnsweredToo) {
    QEvent request(QEvent::HelpRequest);
    QApplication::sendEvent(&frame, &request);
    EXPECT_EQ(help.shown, QStringList{"MainForm Qvnd.hlp"});
}

TEST_F(HelpKey, SaysThatThereIsNoHelpFile) {
    file.clear();
    frame.setWindowTitle(u"卷宗编制系统"_s);
    QTest::keyClick(&frame, Qt::Key_F1);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "无法显示帮助目录，该工程没有相关联的帮助。");
    EXPECT_EQ(messages.shown[0].title, "卷宗编制系统");
    EXPECT_TRUE(help.shown.isEmpty());
}

TEST_F(HelpKey, SaysWhyTheHelpCannotBeShown) {
    help.failure = RunTimeError(error::unrecognizedFormat, u"帮助文件已损坏");
    QTest::keyClick(&frame, Qt::Key_F1);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "帮助文件已损坏");
}

} // namespace
