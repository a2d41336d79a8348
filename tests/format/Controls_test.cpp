#include "format/controls/ChoiceControls.h"
#include "format/controls/PreviewControls.h"
#include "format/controls/TextControls.h"

#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

// Controls of every kind that write down what they raise, and what their window is told.
class ControlsTest : public testing::Test {
protected:
    std::function<void()> logging(const QString& word) {
        return [this, word] { log << word; };
    }
    [[noreturn]] static void fail() { throw RunTimeError(3021, u"没有当前记录。"); }

    test::FakeMessageBoxes messages;
    Controls dialog{messages};
    QStringList log;
};

TEST_F(ControlsTest, ATextRaisesChangeOnlyWhenItReallyChangesAndTellsTheWindowFirst) {
    TextBox box(dialog, u"Txtformer");
    box.changed = logging(u"changed"_s);
    box.Change = logging(u"Change"_s);
    box.setText(u"第"_s);
    box.setText(u"第"_s);
    box.type(u"第"_s);
    EXPECT_EQ(log, QStringList({u"changed"_s, u"Change"_s}));
}

TEST_F(ControlsTest, RefusedKeysAreLeftOutHoweverTheyComeAndTheWindowIsToldAgain) {
    TextBox box(dialog, u"txtInde");
    box.KeyPress = [](QChar key) { return key.isDigit(); };
    box.setText(u"2"_s);
    box.changed = logging(u"changed"_s);
    box.type(u"2x"_s);
    EXPECT_EQ(box.text(), u"2"_s);
    EXPECT_EQ(log, QStringList(u"changed"_s));
    box.type(u"a3b4"_s);
    EXPECT_EQ(box.text(), u"34"_s);
}

TEST_F(ControlsTest, AssigningTheTextOfAComboBoxRaisesChangeAndNeverClick) {
    ComboBox box(dialog, u"cmbPic");
    box.Change = logging(u"Change"_s);
    box.Click = logging(u"Click"_s);
    box.setEntries({u"a"_s, u"b"_s});
    EXPECT_EQ(box.text(), QString());
    box.setText(u"b"_s);
    EXPECT_EQ(log, QStringList(u"Change"_s));
}

TEST_F(ControlsTest, APickRaisesClickAndNeverChangeAlsoOfTheEntryThatIsShown) {
    ComboBox box(dialog, u"cmbPic");
    box.setEntries({u"a"_s, u"b"_s});
    box.Change = logging(u"Change"_s);
    box.Click = logging(u"Click"_s);
    box.pick(1);
    box.pick(1);
    EXPECT_EQ(box.text(), u"b"_s);
    EXPECT_EQ(log, QStringList({u"Click"_s, u"Click"_s}));
}

TEST_F(ControlsTest, AssigningTheValueOfACheckBoxRaisesClickWhenItReallyChanges) {
    CheckBox box(dialog, u"chkHead");
    box.Click = logging(u"Click"_s);
    box.setChecked(false);
    EXPECT_TRUE(log.isEmpty());
    box.setChecked(true);
    box.setChecked(true);
    EXPECT_EQ(log.size(), 1);
    box.click();
    EXPECT_FALSE(box.checked());
    EXPECT_EQ(log.size(), 2);
}

TEST_F(ControlsTest, SelectingAnOptionRaisesItsClickAloneAndUnselectsTheOthersOfItsFrame) {
    OptionFrame frame;
    OptionFrame otherFrame;
    OptionButton left(dialog, frame, u"optLeft");
    OptionButton right(dialog, frame, u"optRight");
    OptionButton elsewhere(dialog, otherFrame, u"optTop");
    elsewhere.select();
    left.select();
    left.Click = logging(u"left"_s);
    left.changed = logging(u"left changed"_s);
    right.Click = [&] {
        EXPECT_FALSE(left.value());
        log << u"right"_s;
    };
    right.select();
    right.click();
    EXPECT_EQ(log, QStringList({u"left changed"_s, u"right"_s}));
    EXPECT_TRUE(right.value());
    EXPECT_TRUE(elsewhere.value());
}

TEST_F(ControlsTest, SelectingAListItemRaisesClickWhenTheSelectionReallyChanges) {
    ListBox list(dialog, u"lstSet");
    list.Click = logging(u"Click"_s);
    list.add(u"a"_s);
    list.add(u"b"_s);
    EXPECT_EQ(list.text(), QString());
    list.select(0);
    list.select(0);
    EXPECT_EQ(log.size(), 1);
    list.click(0);
    EXPECT_EQ(log.size(), 2);
    EXPECT_EQ(list.text(), u"a"_s);
}

TEST_F(ControlsTest, RemovingTheSelectedEntryLeavesNothingSelectedAndRaisesNothing) {
    ListBox list(dialog, u"lstSet");
    for (const auto& entry : {u"a"_s, u"b"_s, u"c"_s}) {
        list.add(entry);
    }
    list.select(1);
    list.Click = logging(u"Click"_s);
    list.remove(0);
    EXPECT_EQ(list.text(), u"b"_s);
    list.remove(0);
    EXPECT_EQ(list.selected(), -1);
    EXPECT_TRUE(log.isEmpty());
    EXPECT_THROW(list.remove(-1), RunTimeError);
}

TEST_F(ControlsTest, ADateRaisesChangeByCodeAndClickByTheUser) {
    DatePicker picker(dialog, u"cmbDate");
    picker.Change = logging(u"Change"_s);
    picker.Click = logging(u"Click"_s);
    picker.setDate(QDate(2026, 1, 2));
    picker.pick(QDate(2026, 1, 2));
    picker.pick(QDate(2026, 1, 3));
    EXPECT_EQ(log, QStringList({u"Change"_s, u"Click"_s, u"Change"_s, u"Click"_s}));
}

TEST_F(ControlsTest, AnErrorPassesFromASetterAndIsToldOnceByTheUsersEvent) {
    CheckBox box(dialog, u"chkHead");
    box.Click = [] { fail(); };
    EXPECT_THROW(box.setChecked(true), RunTimeError);
    EXPECT_TRUE(messages.shown.empty());
    box.click();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, u"没有当前记录。"_s);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
    EXPECT_EQ(messages.shown[0].title, QString());
    EXPECT_FALSE(box.checked());
}

TEST_F(ControlsTest, AControlIsFoundByItsNameAndKind) {
    TextBox box(dialog, u"TxtBind");
    CheckBox check(dialog, u"chkSet");
    EXPECT_EQ(dialog.find<TextBox>(u"TxtBind"), &box);
    EXPECT_EQ(dialog.find<CheckBox>(u"TxtBind"), nullptr);
    EXPECT_EQ(dialog.find<CheckBox>(u"chkSelf"), nullptr);
    EXPECT_EQ(dialog.all().size(), 2U);
}

TEST_F(ControlsTest, APictureThatIsMissingLeavesTheEarlierOne) {
    test::TemporaryFolder folder;
    folder.write(u"楼.bmp"_s, "BM");
    Image image(dialog, u"Image1");
    image.load(folder.path(u"楼.BMP"_s));
    EXPECT_EQ(image.picture(), folder.path(u"楼.bmp"_s));
    EXPECT_THROW(image.load(folder.path(u"路.bmp"_s)), RunTimeError);
    EXPECT_EQ(image.picture(), folder.path(u"楼.bmp"_s));
    image.clear();
    EXPECT_EQ(image.picture(), QString());
}

} // namespace
} // namespace qvnd::format
