#pragma once

#include "gui/support/WorkbenchWindow.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace qvnd::test {

// The workbench with a history of its commands.
class WorkbenchHistory : public WorkbenchWindow {
protected:
    WorkbenchHistory() {
        OutlineWorld::makeTable(*world.state.gDbUser, "TOrg", {});
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history",
            history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
            *world.state.gFso, "测试");
    }
    void TearDown() override { form.reset(); }

    void deleteNode(const QString& key) {
        click(trvCurrent(), key);
        world.messages.otherwise = desktop::Answer::yes;
        item("mnuEditDelete").trigger();
    }
    bool isShown(const QString& key) { return world.workbench.TrvCurrent.find(key) != nullptr; }
    // Of T.2, whose text T.20 begins with.
    void deleteNodeThatTakesAnother() {
        OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"),
                          {"T.20", "二十", "否"});
        deleteNode("T.2");
    }
    // Whether the bar shows these of its buttons and no other.
    bool hasButtons(const QStringList& names) {
        QStringList shown;
        for (const char* name : {"noteUndo", "noteRedo", "noteDetails"}) {
            if (form->findChild<QPushButton*>(name)->isVisible()) {
                shown << name;
            }
        }
        return shown == names;
    }
    QWidget& bar() { return *form->findChild<QWidget*>("NoteBar"); }
    QString barText() { return form->findChild<QLabel*>("noteText")->text(); }
    QTreeWidget& list(const QString& name) { return *form->findChild<QTreeWidget*>(name); }
    QTreeWidget& steps() { return list("historySteps"); }
    QTreeWidget& changes() { return list("historyChanges"); }
    QStringList titles() {
        QStringList found;
        for (int i = 0; i < steps().topLevelItemCount(); ++i) {
            found << steps().topLevelItem(i)->text(2).section(u'　', 0, 0);
        }
        return found;
    }
    void chooseStep(int row) { steps().setCurrentItem(steps().topLevelItem(row)); }
    void chooseChange(const QString& text) {
        const auto found = changes().findItems(text, Qt::MatchContains);
        ASSERT_FALSE(found.isEmpty()) << text.toStdString();
        changes().setCurrentItem(found.first());
    }
    void pick(const QString& name, const QString& choice) {
        auto* box = form->findChild<QComboBox*>(name);
        box->setCurrentIndex(box->findText(choice));
        emit box->activated(box->currentIndex());
    }
    void press(const QString& name) { form->findChild<QPushButton*>(name)->click(); }
};

} // namespace qvnd::test
