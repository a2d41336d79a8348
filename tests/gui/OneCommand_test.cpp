#include "gui/support/DesktopWorld.h"
#include "gui/support/Renaming.h"
#include "gui/support/WorkbenchWindow.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"

#include <gtest/gtest.h>

#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QUrl>

namespace qvnd::test {
namespace {

// What comes in past a box: from a screen reader, from a menu bar that the desktop shows, from a
// drop.
class OneCommand : public WorkbenchWindow {
protected:
    OneCommand() { world.messages.otherwise = desktop::Answer::yes; }

    // Once, at the first box.
    void whileAsked(const std::function<void()>& act) {
        world.messages.whileOpen = [this, act] {
            world.messages.whileOpen = nullptr;
            act();
        };
    }
    // Those of the menus, of the toolbar and of the tab.
    QList<QAction*> items() const {
        QList<QAction*> found = form->findChildren<QAction*>();
        found.removeIf([](const QAction* action) {
            return action->menu() || action->isSeparator() || action->objectName().isEmpty();
        });
        return found;
    }
    // Opened first, whatever the workbench makes of it, for what is closed cannot be triggered.
    static bool triggers(QAction& action) {
        for (QObject* owner : action.associatedObjects()) {
            if (auto* menu = qobject_cast<QMenu*>(owner)) {
                menu->menuAction()->setEnabled(true);
                menu->menuAction()->setVisible(true);
            }
        }
        action.setEnabled(true);
        action.setVisible(true);
        const QSignalSpy spy(&action, &QAction::triggered);
        action.trigger();
        return spy.count() == 1;
    }
    QStringList shownKeys() const { return OutlineWorld::shown(world.workbench.TrvCurrent); }
    void drag(QEvent::Type type, QMimeData& data, const QString& key) {
        QWidget* viewport = trvCurrent().viewport();
        const QPoint at = rowOf(trvCurrent(), key);
        const auto send = [&](QDropEvent&& event) {
            event.setAccepted(false);
            QCoreApplication::sendEvent(viewport, &event);
            accepted = event.isAccepted();
        };
        if (type == QEvent::DragEnter) {
            send(QDragEnterEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {}));
        } else if (type == QEvent::DragMove) {
            send(QDragMoveEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {}));
        } else {
            send(QDropEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {}));
        }
    }
    void putUrl(QMimeData& data, const QString& file) {
        writeDocument(world.folder.path(file));
        data.setUrls({QUrl::fromLocalFile(world.folder.path(file))});
    }

    bool accepted = false;
};

const QStringList allKeys{"T", "T.1", "T.1.1", "T.2", "T.2.1", "T.3"};

TEST_F(OneCommand, TheSameCommandIsRefusedWhileItsQuestionIsOpen) {
    open("T.1");
    whileAsked([this] { item("mnuEditDelete").trigger(); });
    item("mnuEditDelete").trigger();
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "真的要删除[名T.1]吗？");
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.2", "T.2.1", "T.3"}));
}

TEST_F(OneCommand, NoItemRunsWhileAQuestionIsOpen) {
    open("T.1");
    world.workbench.pasteArmed = true;
    // Behind every command the items are set anew, and this one would be closed.
    QAction& sentinel = item("mnuSaveTemplate");
    world.workbench.mnuSaveTemplate = false;
    int triggered = 0;
    whileAsked([&] {
        for (QAction* action : items()) {
            sentinel.setEnabled(true);
            // A dialog that came up all the same must not hold up the test.
            QTimer::singleShot(0, form.get(), [] {
                if (QWidget* dialog = QApplication::activeModalWidget()) {
                    ADD_FAILURE() << dialog->windowTitle().toStdString();
                    dialog->close();
                }
            });
            EXPECT_TRUE(triggers(*action)) << action->objectName().toStdString();
            EXPECT_TRUE(sentinel.isEnabled()) << action->objectName().toStdString();
            ++triggered;
        }
    });
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    EXPECT_EQ(triggered, 41) << "27 items of the menus, 13 of the toolbar, the plan's information";
    EXPECT_FALSE(sentinel.isEnabled()) << "behind the one that ran";
    EXPECT_EQ(world.messages.shown.size(), 1U);
    EXPECT_TRUE(frame.asked.isEmpty()) << frame.asked.join(", ").toStdString();
    EXPECT_TRUE(world.dialogs.asked.empty());
    EXPECT_EQ(shownKeys(), allKeys);
    EXPECT_EQ(world.keys("T"), allKeys);
    EXPECT_EQ(trvCurrent().findChild<QLineEdit*>(), nullptr);
}

TEST_F(OneCommand, NoTreeTakesMouseOrKeyboardWhileAQuestionIsOpen) {
    open("T.1");
    trvTemplate().expandAll();
    whileAsked([this] {
        click(trvCurrent(), "T.3");
        doubleClick(trvCurrent(), "T.2");
        click(trvCurrent(), "T.3", Qt::RightButton);
        QTest::keyClick(&trvCurrent(), Qt::Key_Down);
        QTest::keyClick(&trvCurrent(), Qt::Key_Delete);
        click(trvTemplate(), "M.1");
        click(trvTemplate(), "M.1", Qt::RightButton);
        click(trvUser(), "U");
    });
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    EXPECT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(world.workbench.TrvTemplate.SelectedItem(), nullptr);
    EXPECT_EQ(world.workbench.copySourceKey, "");
    EXPECT_EQ(shownKeys(), allKeys);
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(OneCommand, TheTreesTakeMouseAndKeyboardAgainBehindTheQuestion) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    click(trvCurrent(), "T.3");
    EXPECT_EQ(selected(), "T.3");
    QTest::keyClick(&trvCurrent(), Qt::Key_Up);
    EXPECT_EQ(selected(), "T.2");
}

TEST_F(OneCommand, FilesFromOutsideAreNotTakenWhileAQuestionIsOpen) {
    open("T.1");
    QMimeData data;
    putUrl(data, "外来.doc");
    whileAsked([&] {
        for (const auto type : {QEvent::DragEnter, QEvent::DragMove, QEvent::Drop}) {
            drag(type, data, "T.3");
            EXPECT_FALSE(accepted) << type;
            EXPECT_EQ(selected(), "T.1");
        }
        QTest::qWait(1);
    });
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    // Whatever had been taken would come in before what is dropped now.
    QMimeData later;
    putUrl(later, "后来.doc");
    drag(QEvent::DragEnter, later, "T.3");
    drag(QEvent::Drop, later, "T.3");
    EXPECT_TRUE(QTest::qWaitFor([&] { return world.keys("T") != allKeys; }));
    EXPECT_EQ(world.keys("T").size(), allKeys.size() + 1);
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Child()->Text(), "后来");
}

TEST_F(OneCommand, FilesDroppedBeforeACommandAreAddedBehindIt) {
    open("T.1");
    QMimeData data;
    putUrl(data, "外来.doc");
    drag(QEvent::DragEnter, data, "T.3");
    drag(QEvent::Drop, data, "T.3");
    EXPECT_TRUE(accepted);
    whileAsked([&] {
        QTest::qWait(1);
        EXPECT_EQ(world.keys("T"), allKeys);
    });
    item("mnuEditDelete").trigger(); // of T.1
    EXPECT_EQ(world.keys("T"), (QStringList{"T", "T.2", "T.2.1", "T.3"}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return world.keys("T").size() == 5; }));
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Child()->Text(), "外来");
}

TEST_F(OneCommand, NoOtherBeginsWhileTheFileDialogIsOpen) {
    open("T.1");
    world.dialogs.whileOpen = [this] {
        world.dialogs.whileOpen = nullptr;
        item("mnuEditDelete").trigger();
        item("mnuLTDoc").trigger();
    };
    item("mnuLTDoc").trigger();
    EXPECT_EQ(world.dialogs.asked.size(), 1U);
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_EQ(shownKeys(), allKeys);
}

TEST_F(OneCommand, NoOtherBeginsWhileEventsAreServed) {
    open("T.1");
    world.events.whileServed = [this] { item("mnuEditDelete").trigger(); };
    writeDocument(world.folder.path("外来.rtf"));
    world.dialogs.chosen = world.folder.path("外来.rtf");
    item("mnuLTDoc").trigger();
    EXPECT_GT(world.events.served, 0);
    EXPECT_TRUE(world.messages.shown.empty()) << lastMessage().toStdString();
    EXPECT_EQ(shownKeys().size(), allKeys.size() + 1);
}

TEST_F(OneCommand, NoneBeginsWhileTheWorkbenchIsLoading) {
    world.state.gDbUser->Execute("Drop Table T"); // which the load has to tell
    world.folder.makeFolder("用户模板/T");
    whileAsked([this] {
        EXPECT_FALSE(form->isHidden());
        item("mnuChongDie").trigger();
    });
    open();
    EXPECT_FALSE(world.messages.shown.empty());
    EXPECT_TRUE(frame.asked.isEmpty());
    item("mnuChongDie").trigger();
    EXPECT_EQ(frame.asked, QStringList{"arrangeCascade"});
}

TEST_F(OneCommand, ANameThatIsBeingTypedIsTakenOverBeforeTheQuestion) {
    open("T.1");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("基础");
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "真的要删除[基础]吗？");
    EXPECT_EQ(world.column(*world.state.gDbUser, "T", u"名称")[1], "基础");
}

TEST_F(OneCommand, AnEmptyNameThatIsBeingTypedIsToldBeforeTheQuestion) {
    open("T.1");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->clear();
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    ASSERT_EQ(world.messages.shown.size(), 2U);
    EXPECT_EQ(world.messages.shown[0].text, "对不起，名称不能为空");
    EXPECT_EQ(world.messages.shown[1].text, "真的要删除[名T.1]吗？");
}

// The whole program, its frame among it.
class OneCommandOfTheProgram : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.start());
        messages.otherwise = desktop::Answer::yes;
        tree().Select(&tree().Item(QString("甲.3")));
    }
    outline::OutlineTree& tree() { return world.run().program().workbench().TrvCurrent; }
    QAction& item(const char* name) { return *world.mainForm().findChild<QAction*>(name); }
    // Deletes 甲.3, and does that while the question is open.
    void deleteAnd(const std::function<void()>& act) {
        messages.whileOpen = [this, act] {
            messages.whileOpen = nullptr;
            act();
        };
        item("mnuEditDelete").trigger();
    }

    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};
};

TEST_F(OneCommandOfTheProgram, TheFrameDoesNotCloseWhileAQuestionIsOpen) {
    deleteAnd([this] { EXPECT_FALSE(world.mainForm().close()); });
    EXPECT_FALSE(world.hasEnded());
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(tree().find("甲.3"), nullptr);
    EXPECT_TRUE(world.mainForm().close());
    EXPECT_TRUE(world.hasEnded());
}

TEST_F(OneCommandOfTheProgram, NeitherEndRunsWhileAQuestionIsOpen) {
    deleteAnd([this] {
        item("MenuExit").trigger();
        item("mnuExit").trigger();
        world.mainForm().findChild<QPushButton*>("cmdExit")->click();
    });
    EXPECT_FALSE(world.hasEnded());
    EXPECT_EQ(tree().find("甲.3"), nullptr);
}

TEST_F(OneCommandOfTheProgram, TheExitButtonStillEndsIt) {
    world.mainForm().findChild<QPushButton*>("cmdExit")->click();
    EXPECT_TRUE(world.hasEnded());
}

TEST_F(OneCommandOfTheProgram, TheFramesOwnItemsAreRefusedWhileAQuestionIsOpen) {
    const QPointer<QWidget> workbench(world.mainForm().findChild<QWidget*>("frmBid"));
    deleteAnd([this] {
        for (const char* name : {"mnuBuild", "help1", "help2", "listWin", "winA", "sysAbout"}) {
            QTimer::singleShot(0, &world.mainForm(), [name] {
                if (QWidget* dialog = QApplication::activeModalWidget()) {
                    ADD_FAILURE() << name;
                    dialog->close();
                }
            });
            item(name).trigger();
        }
    });
    EXPECT_TRUE(workbench);
    EXPECT_TRUE(world.help.shown.isEmpty());
    EXPECT_EQ(tree().find("甲.3"), nullptr);
}

// A box takes the keyboard away from the name that it is about.
class NameTyped : public OneCommandOfTheProgram {
protected:
    class RealBoxes : public desktop::WidgetMessageBoxes {
    public:
        desktop::Answer show(const desktop::Message& message) override {
            texts << message.text;
            QTimer::singleShot(0, qApp, [] {
                if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    (void)QTest::qWaitForWindowActive(box);
                    QTest::keyClick(box, Qt::Key_Escape);
                }
            });
            return desktop::WidgetMessageBoxes::show(message);
        }
        QStringList texts;
    };

    RealBoxes boxes;
    DesktopWorld real{boxes, dialogs, word};
};

TEST_F(NameTyped, AnEmptyOneIsToldOnce) {
    ASSERT_TRUE(real.start());
    outline::OutlineTree& current = real.run().program().workbench().TrvCurrent;
    current.Select(&current.Item(QString("甲.3")));
    auto& view = *real.mainForm().findChild<outline::OutlineView*>("TrvCurrent");
    real.run().program().workbench().mnuRename = true;
    real.run().program().workbench().clickedKey = "甲.3";
    QLineEdit* editor = beginRenaming(view);
    ASSERT_NE(editor, nullptr);
    editor->clear();
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::qWait(1);
    EXPECT_EQ(boxes.texts, QStringList{"对不起，名称不能为空"});
    EXPECT_EQ(current.Item(QString("甲.3")).Text(), "质量保证");
    EXPECT_EQ(view.findChild<QLineEdit*>(), nullptr);
}

} // namespace
} // namespace qvnd::test
