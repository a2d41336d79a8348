#pragma once

#include "outline/AddDocument.h"
#include "outline/BrowseDocument.h"
#include "outline/BrowseTemplate.h"
#include "outline/CopyPaste.h"
#include "outline/CurrentPlan.h"
#include "outline/DeleteNode.h"
#include "outline/DeleteTemplate.h"
#include "outline/RenameNode.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeDrag.h"
#include "outline/TrvCurrentEvents.h"
#include "outline/TrvTemplateEvents.h"
#include "outline/TrvTemplate_UsEvents.h"
#include "outline/dlgAddDoc.h"
#include "plans/DeletePlan.h"
#include "plans/DlgNew.h"
#include "platform/registry/RegistryFile.h"
#include "startup/Program.h"
#include "support/FakeFileDialogs.h"
#include "support/FakeLongRun.h"
#include "support/FakeMessageBoxes.h"
#include "support/FakePreview.h"
#include "support/Files.h"
#include "support/OutlineWorld.h"
#include "support/RecordingWord.h"

#include <memory>

namespace qvnd::test {

// The whole program without windows in a folder of its own, and a planner who uses it: a gesture
// raises the events that a window raises for it, in their order, whatever the enabled commands say.
// The program can be left and started again.
//
// Folders: "Sys/用户模板" for the plans, "Sys/标书模板" for the templates, "Word" with the template
// of new documents, whose text is "normal".
class Planner {
public:
    Planner() : folder(inMemory()) {
        folder.makeFolder("Sys/标书模板");
        folder.write("Word/Templates/Normal.dot", "normal");
        registry = registry::RegistryFile::parse(
            "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Office\\8.0\\Word\\"
            "InstallRootSR2]\r\n\"Path\"=\"" +
            folder.path("Word").toUtf8() + "\"\r\n");
        log.base = folder.path().toStdString();
    }

    bool start() {
        program = std::make_unique<startup::Program>(registry, services());
        return program->start(folder.path());
    }
    void exit() {
        program->exit();
        program.reset();
    }
    void restart() {
        exit();
        start();
    }

    modMain& state() { return program->state(); }
    outline::Workbench& workbench() { return program->workbench(); }
    outline::Services services() { return {messages, splash, dialogs, events, word, longRun}; }
    outline::OutlineTree& current() { return workbench().TrvCurrent; }
    outline::OutlineTree& templates() { return workbench().TrvTemplate; }
    outline::OutlineTree& plans() { return workbench().TrvTemplate_Us; }

    bool newPlan(const QString& name, bool overwrite = false) {
        messages.otherwise = answer(overwrite);
        plans::DlgNew dialog(state(), workbench(), messages, splash, plans::ShowMode::newPlan);
        dialog.form.TxtName = name;
        dialog.form.TxtEdit = "编制";
        return dialog.BtnOk();
    }
    bool deletePlan(bool yes = true) {
        messages.otherwise = answer(yes);
        return plans::mnuDelete(state(), workbench(), messages);
    }

    // A click in TrvCurrent; false when there is no such node on the screen.
    bool click(const QString& key) {
        outline::OutlineNode* node = current().find(key);
        if (node) {
            outline::TrvCurrentEvents tree(state(), workbench(), services(), preview);
            tree.MouseDown(outline::MouseButton::left, node);
            tree.Click();
            tree.NodeClick(*node);
        }
        return node != nullptr;
    }
    outline::Added addFolder(outline::AddMode mode, const QString& name) {
        return outline::dlgAddDoc(state(), workbench(), services(), mode).OK(name);
    }
    // Without a path the dialog is cancelled.
    outline::Added addDocument(outline::AddMode mode, const std::optional<QString>& path,
                               bool yes = true) {
        messages.otherwise = answer(yes);
        dialogs.chosen = path;
        outline::AddDocument command(state(), workbench(), services());
        return mode == outline::AddMode::beside ? command.mnuEQDoc() : command.mnuLTDoc();
    }
    outline::Deleted deleteNode(bool yes = true) {
        messages.otherwise = answer(yes);
        return outline::mnuEditDelete(state(), workbench(), services());
    }
    bool rename(const QString& text) {
        outline::OutlineNode* node = outline::mnuRename(workbench(), messages);
        if (!node) {
            return false;
        }
        outline::BeforeLabelEdit(workbench(), *node);
        return outline::AfterLabelEdit(state(), workbench(), messages, text);
    }
    void doubleClick() {
        outline::TrvCurrentEvents(state(), workbench(), services(), preview).DblClick();
    }

    // Dragging within TrvCurrent; without a target it ends outside every node.
    outline::Dropped drag(const QString& key, const std::optional<QString>& target) {
        if (!click(key)) {
            return {};
        }
        outline::OLEStartDrag(workbench());
        return drop(target);
    }
    outline::Dropped drop(const std::optional<QString>& target, bool yes = true) {
        messages.otherwise = answer(yes);
        outline::OutlineNode* node = target ? current().find(*target) : nullptr;
        outline::OLEDragOver(workbench(), node);
        return outline::OLEDragDrop(state(), workbench(), services(), node);
    }

    // The mouse goes down on a node of TrvTemplate, which a click and a drag begin with.
    bool pressTemplate(const QString& key) {
        outline::OutlineNode* node = templates().find(key);
        if (node) {
            templateEvents().MouseDown(outline::MouseButton::left, node);
        }
        return node != nullptr;
    }
    bool clickTemplate(const QString& key) {
        if (!pressTemplate(key)) {
            return false;
        }
        templateEvents().Click();
        templateEvents().NodeClick(*templates().find(key));
        return true;
    }
    outline::Dropped dragTemplate(const QString& key, const QString& target, bool yes = true) {
        return pressTemplate(key) ? drop(target, yes) : outline::Dropped();
    }
    void copy() { outline::mnuCopy(workbench()); }
    outline::Pasted paste(bool yes = true) {
        messages.otherwise = answer(yes);
        return outline::mnuPaste(state(), workbench(), services());
    }
    outline::StoreOutcome storeTemplate() {
        return outline::mnuSaveTemplate(state(), workbench(), services());
    }
    outline::DeleteOutcome deleteTemplate(bool yes = true) {
        messages.otherwise = yes ? desktop::Answer::ok : desktop::Answer::cancel;
        return outline::mnuDelTemplate(state(), workbench(), services());
    }
    void browseTemplate() { templateEvents().DblClick(); }

    bool clickPlan(const QString& key) {
        outline::OutlineNode* node = plans().find(key);
        if (node) {
            outline::TrvTemplate_UsEvents(state(), workbench(), messages, preview).MouseDown(node);
            outline::clickUserPlan(state(), workbench(), splash, *node);
        }
        return node != nullptr;
    }

    TemporaryFolder folder;
    registry::RegistryFile registry;
    FakeMessageBoxes messages;
    CountingSplash splash;
    FakeFileDialogs dialogs;
    CountingEvents events;
    FakePreview preview;
    CallLog log;
    RecordingApplicationFactory word{log};
    FakeLongRun longRun;
    std::unique_ptr<startup::Program> program;

private:
    static desktop::Answer answer(bool yes) {
        return yes ? desktop::Answer::yes : desktop::Answer::no;
    }
    outline::TrvTemplateEvents templateEvents() {
        return {state(), workbench(), messages, preview};
    }
};

} // namespace qvnd::test
