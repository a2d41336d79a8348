#include "plans/windows/DlgNewWindow.h"

#include "support/OutlineWorld.h"

#include <gtest/gtest.h>

#include <QCalendarWidget>
#include <QClipboard>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QStyleOptionGroupBox>
#include <QTest>
#include <QTextEdit>

#include <memory>

namespace qvnd::test {
namespace {

using plans::DlgNewWindow;
using plans::ShowMode;

class DlgNewWindowTest : public testing::Test {
protected:
    void show(ShowMode mode = ShowMode::newPlan) {
        dialog = std::make_unique<DlgNewWindow>(world.state, world.workbench, world.messages,
                                                world.splash, mode);
        dialog->show();
    }
    QLineEdit& box(const char* name) { return *dialog->findChild<QLineEdit*>(name); }
    QLineEdit& TxtName() { return box("TxtName"); }
    void makePlan(const QString& name) {
        show();
        TxtName().setText(name);
        box("TxtBldOffice").setText("建设公司");
        dialog->findChild<QPushButton*>("BtnOk")->click();
        ASSERT_EQ(dialog->result(), QDialog::Accepted);
        world.messages.shown.clear();
    }
    QStringList told() const {
        QStringList texts;
        for (const auto& message : world.messages.shown) {
            texts << message.text;
        }
        return texts;
    }

    OutlineWorld world;
    std::unique_ptr<DlgNewWindow> dialog;
};

TEST_F(DlgNewWindowTest, LabelsAndButtonsBearTheStatedTexts) {
    show();
    EXPECT_EQ(dialog->windowTitle(), "新建方案");
    QStringList labels;
    for (const QLabel* label : dialog->findChildren<QLabel*>()) {
        labels << label->text();
    }
    for (const char* text :
         {"方案名称：", "建设单位：", "施工单位：", "编  制  人：", "审  批  人：", "审批日期："}) {
        EXPECT_TRUE(labels.contains(QString(text))) << text;
    }
    EXPECT_EQ(dialog->findChild<QGroupBox*>()->title(), "注释");
    EXPECT_EQ(dialog->findChild<QPushButton*>("BtnOk")->text(), "确定(&O)");
    EXPECT_EQ(dialog->findChild<QPushButton*>("BtnCancel")->text(), "取消(&C)");
    EXPECT_EQ(dialog->focusWidget(), &TxtName());
    EXPECT_EQ(dialog->findChild<QDateEdit*>("DTP")->date(), QDate::currentDate());
}

TEST_F(DlgNewWindowTest, LabelsAndFieldsStandOnOneGrid) {
    show();
    QCoreApplication::processEvents();
    QSet<int> labelEnds;
    QSet<QPair<int, int>> fields;
    QRect form;
    for (const char* name :
         {"TxtName", "TxtBldOffice", "TxtConOffice", "TxtEdit", "TxtDecide", "DTP"}) {
        const auto* field = dialog->findChild<QWidget*>(name);
        fields << qMakePair(field->geometry().left(), field->geometry().right());
        form |= field->geometry();
        const auto* label =
            dialog->findChild<QFormLayout*>()->labelForField(const_cast<QWidget*>(field));
        labelEnds << label->geometry().right();
        form |= label->geometry();
        EXPECT_LE(qAbs(label->geometry().center().y() - field->geometry().center().y()), 1) << name;
    }
    EXPECT_EQ(labelEnds.size(), 1);
    EXPECT_EQ(fields.size(), 1);
    const QRect frame = dialog->findChild<QGroupBox*>()->geometry();
    EXPECT_EQ(frame.left(), form.left());
    EXPECT_EQ(frame.right(), form.right());
}

TEST_F(DlgNewWindowTest, TheTitleOfTheNotesStandsInTheirFrame) {
    show();
    auto* frame = dialog->findChild<QGroupBox*>();
    QStyleOptionGroupBox option;
    option.initFrom(frame);
    option.text = frame->title();
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const auto place = [&](QStyle::SubControl part) {
        return frame->style()->subControlRect(QStyle::CC_GroupBox, &option, part, frame);
    };
    const QRect title = place(QStyle::SC_GroupBoxLabel);
    const QRect border = place(QStyle::SC_GroupBoxFrame);
    EXPECT_GT(title.left(), border.left());
    EXPECT_GE(title.bottom(), border.top()) << "not above the frame";
}

TEST_F(DlgNewWindowTest, TheNameInTheInformationLooksLocked) {
    show();
    const QColor open = TxtName().palette().color(QPalette::Base);
    makePlan("滨江");
    show(ShowMode::information);
    const QColor locked = TxtName().palette().color(QPalette::Base);
    EXPECT_NE(locked, open);
    EXPECT_EQ(locked, dialog->palette().color(QPalette::Disabled, QPalette::Window));
    EXPECT_EQ(box("TxtBldOffice").palette().color(QPalette::Base), open);
    EXPECT_FALSE(TxtName().toolTip().isEmpty());
}

TEST_F(DlgNewWindowTest, TheCalendarSpeaksChineseWhateverTheDesktopSpeaks) {
    show();
    const QCalendarWidget* calendar = dialog->findChild<QDateEdit*>("DTP")->calendarWidget();
    EXPECT_EQ(calendar->locale().language(), QLocale::Chinese);
    EXPECT_EQ(calendar->firstDayOfWeek(), Qt::Monday);
}

TEST_F(DlgNewWindowTest, EveryBoxHasAnAccessibleName) {
    show();
    EXPECT_EQ(box("TxtEdit").accessibleName(), "编制人");
    for (const char* name : {"TxtName", "TxtBldOffice", "TxtConOffice", "TxtDecide", "DTP",
                             "RtfExplain", "BtnOk", "BtnCancel"}) {
        EXPECT_FALSE(dialog->findChild<QWidget*>(name)->accessibleName().isEmpty()) << name;
    }
}

TEST_F(DlgNewWindowTest, LettersDigitsAndChineseAreTakenWithoutAWord) {
    show();
    QTest::keyClicks(&TxtName(), "Ab9");
    QInputMethodEvent chinese;
    chinese.setCommitString("滨江工程");
    QCoreApplication::sendEvent(&TxtName(), &chinese);
    EXPECT_EQ(TxtName().text(), "Ab9滨江工程");
    EXPECT_EQ(told(), QStringList());
}

TEST_F(DlgNewWindowTest, AnIllegalKeyIsToldAndTakenBack) {
    show();
    TxtName().setText("甲");
    for (const char key : {'.', ' ', '-', '*', '\'', '#'}) {
        QTest::keyClick(&TxtName(), key);
        EXPECT_EQ(TxtName().text(), "甲") << key;
        ASSERT_FALSE(world.messages.shown.empty());
        const auto& message = world.messages.shown.back();
        EXPECT_EQ(message.text,
                  QString("对不起，输入字符非法！\n方案名称只能由汉字、字母和数字组成，不能有：“") +
                      key + "”");
        EXPECT_EQ(message.icon, desktop::Icon::exclamation);
        EXPECT_EQ(message.title, QString());
    }
    EXPECT_EQ(told().size(), 6);
    QTest::keyClick(&TxtName(), 'b');
    EXPECT_EQ(TxtName().text(), "甲b");
}

TEST_F(DlgNewWindowTest, BackspaceIsNoIllegalKey) {
    show();
    TxtName().setText("甲乙");
    QTest::keyClick(&TxtName(), Qt::Key_Backspace);
    EXPECT_EQ(TxtName().text(), "甲");
    EXPECT_EQ(told(), QStringList());
}

TEST_F(DlgNewWindowTest, AWordOfAnInputMethodLosesExactlyItsIllegalCharacters) {
    show();
    QTest::keyClicks(&TxtName(), "A");
    QInputMethodEvent word;
    word.setCommitString("1.0版 ");
    QCoreApplication::sendEvent(&TxtName(), &word);
    EXPECT_EQ(TxtName().text(), "A10版");
    ASSERT_EQ(told().size(), 1);
    EXPECT_TRUE(told()[0].startsWith("对不起，输入字符非法！\n")) << told()[0].toStdString();
    EXPECT_TRUE(told()[0].endsWith("“.”、“ ”")) << told()[0].toStdString();
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(world.messages.shown[0].title, QString());
}

TEST_F(DlgNewWindowTest, APastedTextLosesExactlyItsIllegalCharacters) {
    show();
    TxtName().setText("甲乙");
    TxtName().setCursorPosition(1);
    QGuiApplication::clipboard()->setText("1.0/2_版");
    QTest::keyClick(&TxtName(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TxtName().text(), "甲102版乙");
    EXPECT_EQ(TxtName().cursorPosition(), 5);
    ASSERT_EQ(told().size(), 1);
    EXPECT_TRUE(told()[0].endsWith("“.”、“/”、“_”")) << told()[0].toStdString();
    QTest::keyClick(&TxtName(), 'b');
    EXPECT_EQ(TxtName().text(), "甲102版b乙");
}

TEST_F(DlgNewWindowTest, ASpaceCanBePasted) {
    show();
    QGuiApplication::clipboard()->setText("滨江 工程");
    QTest::keyClick(&TxtName(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TxtName().text(), "滨江 工程");
    EXPECT_EQ(told(), QStringList());
}

TEST_F(DlgNewWindowTest, EnterInAnyTextBoxRunsOkOnce) {
    for (const char* name : {"TxtName", "TxtBldOffice", "TxtConOffice", "TxtEdit", "TxtDecide"}) {
        world.messages.shown.clear();
        show();
        QTest::keyClick(&box(name), Qt::Key_Return);
        EXPECT_EQ(told(), QStringList{"对不起，名称不能为空!"}) << name;
        EXPECT_TRUE(dialog->isVisible()) << name;
    }
}

TEST_F(DlgNewWindowTest, EnterInTheDateRunsNothing) {
    show();
    QTest::keyClick(dialog->findChild<QDateEdit*>("DTP"), Qt::Key_Return);
    EXPECT_EQ(told(), QStringList());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DlgNewWindowTest, OkCreatesThePlanWithWhatTheControlsHold) {
    show();
    TxtName().setText("滨江");
    box("TxtConOffice").setText("一建");
    dialog->findChild<QDateEdit*>("DTP")->setDate(QDate(2026, 2, 10));
    dialog->findChild<QTextEdit*>("RtfExplain")->setPlainText("说明");
    QTest::keyClick(&TxtName(), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    const auto row = world.state.gDbUser->OpenRecordset("Select * from 滨江Org");
    EXPECT_EQ(row->Get(u"施工单位").TextOrEmpty(), "一建");
    EXPECT_EQ(row->Get(u"注释").TextOrEmpty(), "说明");
}

TEST_F(DlgNewWindowTest, CancelChangesNothing) {
    show();
    TxtName().setText("滨江");
    dialog->findChild<QPushButton*>("BtnCancel")->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(world.registered(*world.state.gDbUser), QStringList());
    EXPECT_EQ(world.registered(*world.state.gDbUser, "当前表"), QStringList());
}

TEST_F(DlgNewWindowTest, TheInformationShowsThePlanWithoutAMessage) {
    makePlan("滨江");
    show(ShowMode::information);
    EXPECT_EQ(dialog->windowTitle(), "工程信息");
    EXPECT_EQ(TxtName().text(), "滨江");
    EXPECT_EQ(box("TxtBldOffice").text(), "建设公司");
    EXPECT_EQ(told(), QStringList());
}

TEST_F(DlgNewWindowTest, TheNameInTheInformationCannotBeChangedByAnyKey) {
    makePlan("滨江");
    show(ShowMode::information);
    QTest::keyClick(&TxtName(), 'a');
    QTest::keyClick(&TxtName(), Qt::Key_Backspace);
    QTest::keyClick(&TxtName(), Qt::Key_Return);
    EXPECT_EQ(told(), QStringList(3, "工程名称不能更改！"));
    EXPECT_EQ(world.messages.shown.back().title, "提示");
    EXPECT_EQ(world.messages.shown.back().icon, desktop::Icon::exclamation);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(TxtName().text(), "滨江");
}

TEST_F(DlgNewWindowTest, AChangeOfTheNameInTheInformationGivesTheSameMessage) {
    makePlan("滨江");
    show(ShowMode::information);
    QGuiApplication::clipboard()->setText("别名");
    QTest::keyClick(&TxtName(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(told(), QStringList{"工程名称不能更改！"});
    EXPECT_EQ(TxtName().text(), "滨江");
}

TEST_F(DlgNewWindowTest, OkInTheInformationWritesItBack) {
    makePlan("滨江");
    show(ShowMode::information);
    box("TxtBldOffice").setText("新业主");
    QTest::keyClick(&box("TxtBldOffice"), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(
        world.state.gDbUser->OpenRecordset("Select * from 滨江Org")->Get(u"建设单位").TextOrEmpty(),
        "新业主");
}

} // namespace
} // namespace qvnd::test
