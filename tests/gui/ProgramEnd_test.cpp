#include "gui/support/DesktopWorld.h"
#include "gui/support/Renaming.h"

#include <gtest/gtest.h>

#include <QLineEdit>

namespace qvnd::test {
namespace {

// The whole program, with the name of a folder being typed in the tree.
class ProgramEnd : public testing::Test {
protected:
    ProgramEnd() {
        world.start();
        outline::OutlineTree& tree = world.run().program().workbench().TrvCurrent;
        tree.Select(&tree.Item(QString("甲.3")));
        auto& view = *world.mainForm().findChild<outline::OutlineView*>("TrvCurrent");
        world.run().program().workbench().clickedKey = "甲.3";
        editor = beginRenaming(view);
    }
    QString nameAfterNextStart() {
        world.drop();
        EXPECT_TRUE(world.start());
        return world.run().program().workbench().TrvCurrent.Item(QString("甲.3")).Text();
    }

    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};
    QLineEdit* editor = nullptr;
};

TEST_F(ProgramEnd, ClosingTheFrameTakesOverANameThatIsBeingTyped) {
    ASSERT_NE(editor, nullptr);
    editor->setText("文明施工");
    world.mainForm().close();
    EXPECT_TRUE(world.hasEnded());
    EXPECT_EQ(nameAfterNextStart(), "文明施工");
}

TEST_F(ProgramEnd, ExitOfTheMenuTakesOverANameThatIsBeingTyped) {
    ASSERT_NE(editor, nullptr);
    editor->setText("文明施工");
    world.mainForm().findChild<QAction*>("mnuExit")->trigger();
    EXPECT_TRUE(world.hasEnded());
    EXPECT_EQ(nameAfterNextStart(), "文明施工");
}

TEST_F(ProgramEnd, WhatAWindowTellsBehindTheEndIsLeftAlone) {
    world.mainForm().close();
    auto* model = world.mainForm().findChild<outline::OutlineModel*>();
    ASSERT_NE(model, nullptr);
    emit model->textEdited("太晚");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(nameAfterNextStart(), "质量保证");
}

} // namespace
} // namespace qvnd::test
