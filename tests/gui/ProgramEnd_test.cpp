#include "gui/support/DesktopWorld.h"
#include "gui/support/Renaming.h"
#include "startup/windows/ProgramApplication.h"

#include <gtest/gtest.h>

#include <QEvent>
#include <QLineEdit>
#include <QPaintEvent>
#include <QScopedValueRollback>
#include <QTest>

#include <cstddef>
#include <stdexcept>
#include <thread>

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

// Fails at every event of the kinds that a test names.
class FailingWidget : public QWidget {
public:
    bool event(QEvent* event) override {
        if (!kinds.contains(event->type())) {
            return QWidget::event(event);
        }
        const QScopedValueRollback failing(isFailing, true);
        throw std::logic_error("odd");
    }

    QList<QEvent::Type> kinds;
    bool isFailing = false;
};

class LastNet : public testing::Test {
protected:
    LastNet() { application.tellFailures(&messages); }
    void TearDown() override { application.tellFailures(nullptr); }

    void pressKey() { QTest::keyPress(&widget, Qt::Key_A); }
    void paint() {
        QPaintEvent event(widget.rect());
        QCoreApplication::sendEvent(&widget, &event);
    }
    std::size_t told() {
        QCoreApplication::processEvents();
        return messages.shown.size();
    }

    startup::ProgramApplication& application = *dynamic_cast<startup::ProgramApplication*>(qApp);
    FakeMessageBoxes messages;
    FailingWidget widget;
};

TEST_F(LastNet, AnActOfTheUserThatFailsIsToldEachTimeAndTheProgramGoesOn) {
    widget.kinds = {QEvent::KeyPress};
    for (std::size_t i = 1; i <= 3; ++i) {
        pressKey();
        EXPECT_EQ(told(), i);
    }
    EXPECT_EQ(messages.shown[0].text, "程序内部出错，这一步没有完成。（odd）");
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
}

TEST_F(LastNet, APaintingThatFailsEachTimeIsToldOnceAndAnActOfTheUserStill) {
    widget.kinds = {QEvent::Paint, QEvent::KeyPress};
    for (int i = 0; i < 3; ++i) {
        paint();
        EXPECT_EQ(told(), 1U);
    }
    pressKey();
    EXPECT_EQ(told(), 2U);
}

TEST_F(LastNet, TheBoxComesBehindTheEventAndOnceForWhatFailsMeanwhile) {
    widget.kinds = {QEvent::Paint, QEvent::KeyPress};
    messages.whileOpen = [this] {
        EXPECT_FALSE(widget.isFailing);
        paint();
        pressKey();
        QCoreApplication::processEvents();
    };
    pressKey();
    EXPECT_TRUE(messages.shown.empty()) << "not within the event";
    EXPECT_EQ(told(), 1U) << "one box with these words at a time";
}

TEST_F(LastNet, WhatFailsInAnotherThreadIsNotItsOwn) {
    bool hasPassed = false;
    std::thread([&hasPassed] {
        struct Failing : QObject {
            bool event(QEvent* event) override {
                return event->type() == QEvent::User ? throw std::logic_error("odd")
                                                     : QObject::event(event);
            }
        } object;
        QEvent event(QEvent::User);
        try {
            QCoreApplication::sendEvent(&object, &event);
        } catch (const std::logic_error&) {
            hasPassed = true;
        }
    }).join();
    EXPECT_TRUE(hasPassed);
    EXPECT_EQ(told(), 0U);
}

} // namespace
} // namespace qvnd::test
