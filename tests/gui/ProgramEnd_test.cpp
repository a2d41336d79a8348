#include "gui/support/DesktopWorld.h"
#include "gui/support/Renaming.h"
#include "startup/windows/ProgramApplication.h"

#include <gtest/gtest.h>

#include <QEvent>
#include <QLineEdit>

#include <stdexcept>

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

// Fails at every event of one kind.
class FailingObject : public QObject {
public:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User) {
            throw std::logic_error("odd");
        }
        return QObject::event(event);
    }
};

TEST(LastNet, AnEventThatFailsUnexpectedlyIsToldOnceAndTheProgramGoesOn) {
    auto& application = *dynamic_cast<startup::ProgramApplication*>(qApp);
    FakeMessageBoxes messages;
    FailingObject object;
    application.tellFailures(&messages);
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::postEvent(&object, new QEvent(QEvent::User));
        QCoreApplication::processEvents();
    }
    application.tellFailures(nullptr);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "程序内部出错，这一步没有完成。（odd）");
}

} // namespace
} // namespace qvnd::test
