#include "outline/windows/WorkbenchCommands.h"

#include "outline/AddDocument.h"
#include "outline/BrowseDocument.h"
#include "outline/DeleteNode.h"
#include "outline/StoreTemplate.h"
#include "outline/TrvCurrentEvents.h"
#include "outline/windows/TemplateCommands.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/dlgAddDocWindow.h"
#include "plans/DeletePlan.h"
#include "plans/windows/DlgNewWindow.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

// Answers for the user who has chosen already.
class ChosenBefore : public desktop::FileDialogs {
public:
    explicit ChosenBefore(const QString& file)
        : chosen_{QDir::toNativeSeparators(file), QFileInfo(file).fileName()} {}

    desktop::ChosenFile open(const desktop::OpenFileQuestion&) override { return chosen_; }

private:
    desktop::ChosenFile chosen_;
};

} // namespace

WorkbenchCommands::WorkbenchCommands(const WorkbenchParts& parts, QWidget& window)
    : parts_(parts), window_(window) {}

void WorkbenchCommands::mnuNew() {
    plans::DlgNewWindow dialog(parts_.state, parts_.workbench, parts_.services.messages,
                               parts_.services.splash, plans::ShowMode::newPlan, &window_);
    dialog.exec();
    offerRoot();
}

void WorkbenchCommands::OpenPlanInfo() {
    if (parts_.workbench.TrvCurrent.Count() == 0) {
        return;
    }
    plans::DlgNewWindow dialog(parts_.state, parts_.workbench, parts_.services.messages,
                               parts_.services.splash, plans::ShowMode::information, &window_);
    dialog.exec();
}

void WorkbenchCommands::openSelected() {
    if (const OutlineNode* node = parts_.workbench.TrvCurrent.SelectedItem()) {
        TrvCurrentEvents(parts_.state, parts_.workbench, parts_.services, parts_.preview)
            .NodeClick(*node);
    }
}

void WorkbenchCommands::offerRoot() {
    OutlineTree& tree = parts_.workbench.TrvCurrent;
    if (tree.Count() == 0 || tree.SelectedItem()) {
        return;
    }
    tree.Select(&tree.Item(1));
    tree.Expand(tree.Item(1));
    openSelected();
}

void WorkbenchCommands::mnuDelete() {
    plans::mnuDelete(parts_.state, parts_.workbench, parts_.services.messages);
}

void WorkbenchCommands::addFolder(AddMode mode) {
    dlgAddDocWindow(parts_.state, parts_.workbench, parts_.services, mode, &window_).exec();
}

void WorkbenchCommands::mnuEQFolder() { addFolder(AddMode::beside); }
void WorkbenchCommands::mnuLTFolder() { addFolder(AddMode::below); }

void WorkbenchCommands::mnuEQDoc() {
    AddDocument(parts_.state, parts_.workbench, parts_.services).mnuEQDoc();
}

void WorkbenchCommands::mnuLTDoc() {
    AddDocument(parts_.state, parts_.workbench, parts_.services).mnuLTDoc();
}

void WorkbenchCommands::addFiles(const QString& key, const QStringList& files) {
    for (const QString& file : files) {
        OutlineNode* node = parts_.workbench.TrvCurrent.find(key);
        if (!node) {
            return;
        }
        if (!QFileInfo(file).isFile()) {
            continue;
        }
        parts_.workbench.TrvCurrent.Select(node);
        ChosenBefore chosen(file);
        const Services& given = parts_.services;
        const Services services{given.messages, given.splash, chosen, given.events, given.word};
        AddDocument(parts_.state, parts_.workbench, services).mnuLTDoc();
    }
}

void WorkbenchCommands::mnuBrowseDoc() {
    outline::mnuBrowseDoc(parts_.state, parts_.workbench, parts_.services.messages, parts_.preview);
}

void WorkbenchCommands::mnuEditDelete() {
    outline::mnuEditDelete(parts_.state, parts_.workbench, parts_.services);
}

void WorkbenchCommands::mnuSaveTemplate() {
    outline::mnuSaveTemplate(parts_.state, parts_.workbench, parts_.services);
}

void WorkbenchCommands::mnuDelTemplate() { deleteTemplate(parts_); }
void WorkbenchCommands::mnuBroTemplate() { browseTemplate(parts_); }

void WorkbenchCommands::mnuChongDie() { parts_.frame.arrangeCascade(); }
void WorkbenchCommands::mnuPingPu() { parts_.frame.arrangeTile(); }
void WorkbenchCommands::mnuAbout() { parts_.frame.showAbout(); }
void WorkbenchCommands::mnuExit() { parts_.frame.endAtOnce(); }
void WorkbenchCommands::cmdExit() { parts_.frame.exit(); }

bool WorkbenchCommands::hasHelp() {
    if (!parts_.state.HelpFile.isEmpty()) {
        return true;
    }
    parts_.services.messages.tell(u"无法显示帮助目录，该工程没有相关联的帮助。"_s,
                                  desktop::Icon::none, window_.windowTitle());
    return false;
}

void WorkbenchCommands::mnuContent() {
    if (hasHelp()) {
        parts_.frame.showHelpContents();
    }
}

void WorkbenchCommands::mnuIndex() {
    if (hasHelp()) {
        parts_.frame.showHelpIndex();
    }
}

void WorkbenchCommands::cmdEdit() {
    parts_.preview.hide();
    parts_.frame.showPlanEditor();
}

} // namespace qvnd::outline
