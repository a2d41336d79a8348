#include "outline/windows/WorkbenchCommands.h"

#include "outline/AddDocument.h"
#include "outline/AddFiles.h"
#include "outline/BrowseDocument.h"
#include "outline/BrowseTemplate.h"
#include "outline/CopyPaste.h"
#include "outline/DeleteNode.h"
#include "outline/DeleteTemplate.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeDrag.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/dlgAddDocWindow.h"
#include "plans/ConvertOldData.h"
#include "plans/DeletePlan.h"
#include "plans/UpdateLibraries.h"
#include "plans/windows/DlgNewWindow.h"

#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

class WindowPointer : public desktop::MousePointer {
public:
    explicit WindowPointer(QWidget& window) : window_(window) {}
    void showHourglass() override { window_.setCursor(Qt::WaitCursor); }
    void showUsual() override { window_.unsetCursor(); }

private:
    QWidget& window_;
};

} // namespace

WorkbenchCommands::WorkbenchCommands(const WorkbenchParts& parts, QWidget& window)
    : parts_(parts), window_(window) {}

void WorkbenchCommands::mnuNew() {
    plans::DlgNewWindow dialog(parts_.state, parts_.workbench, parts_.services.messages,
                               parts_.services.splash, plans::ShowMode::newPlan, &window_);
    dialog.exec();
    selectRoot();
}

void WorkbenchCommands::OpenPlanInfo() {
    if (parts_.workbench.TrvCurrent.Count() == 0) {
        return;
    }
    plans::DlgNewWindow dialog(parts_.state, parts_.workbench, parts_.services.messages,
                               parts_.services.splash, plans::ShowMode::information, &window_);
    dialog.exec();
}

void WorkbenchCommands::selectRoot() {
    OutlineTree& tree = parts_.workbench.TrvCurrent;
    if (tree.Count() == 0 || tree.SelectedItem()) {
        return;
    }
    tree.Select(&tree.Item(1));
    tree.Expand(tree.Item(1));
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

void WorkbenchCommands::addFiles(const OutlineNode* node, const QStringList& files) {
    if (node) {
        outline::addFiles(parts_.state, parts_.workbench, parts_.services, node->Key(), files);
    } else {
        parts_.frame.showStatus(u"请把文件拖放到一个节点上。"_s);
    }
}

void WorkbenchCommands::drop(OutlineNode* node) {
    const Dropped dropped = OLEDragDrop(parts_.state, parts_.workbench, parts_.services, node);
    if (!dropped.failure.isEmpty()) {
        parts_.frame.showStatus(u"移动没有全部完成："_s + dropped.failure);
    } else if (dropped.done && dropped.newKeys.isEmpty()) {
        tellOverwritten();
    }
}

void WorkbenchCommands::tellOverwritten() {
    parts_.frame.showStatus(u"已用模板的内容覆盖同名文档。"_s);
}

void WorkbenchCommands::mnuBrowseDoc() {
    outline::mnuBrowseDoc(parts_.state, parts_.workbench, parts_.services.messages, parts_.preview);
}

void WorkbenchCommands::mnuEditDelete() {
    outline::mnuEditDelete(parts_.state, parts_.workbench, parts_.services);
}

void WorkbenchCommands::mnuSaveTemplate() {
    const StoreOutcome outcome =
        outline::mnuSaveTemplate(parts_.state, parts_.workbench, parts_.services);
    if (outcome.result == Stored::stored) {
        parts_.frame.showStatus(u"方案“%1”已存入方案模板。"_s.arg(outcome.plan));
    } else if (outcome.result == Stored::failed) {
        parts_.frame.showStatus(u"方案“%1”没有存入方案模板："_s.arg(outcome.plan) + outcome.reason);
    }
}

void WorkbenchCommands::mnuDelTemplate() {
    const DeleteOutcome outcome =
        outline::mnuDelTemplate(parts_.state, parts_.workbench, parts_.services);
    if (outcome.result == TemplateDeleted::failed) {
        parts_.frame.showStatus(u"没有全部删除："_s + outcome.reason);
    }
}

void WorkbenchCommands::mnuBroTemplate() {
    outline::mnuBroTemplate(parts_.state, parts_.workbench, parts_.services.messages,
                            parts_.preview);
}

void WorkbenchCommands::mnuCopy() {
    outline::mnuCopy(parts_.workbench);
    if (const OutlineNode* copied = parts_.workbench.TrvTemplate.SelectedItem()) {
        parts_.frame.showStatus(u"已复制“%1”，可以粘贴到当前方案中。"_s.arg(copied->Text()));
    }
}

void WorkbenchCommands::mnuPaste() {
    tellPasted(outline::mnuPaste(parts_.state, parts_.workbench, parts_.services));
}

void WorkbenchCommands::toolbarPaste() {
    tellPasted(outline::toolbarPaste(parts_.state, parts_.workbench, parts_.services));
}

void WorkbenchCommands::tellPasted(const Pasted& pasted) {
    if (pasted.outcome == Copied::copied && pasted.newKeys.isEmpty()) {
        tellOverwritten();
    }
}

void WorkbenchCommands::updateTemplates() {
    WindowPointer pointer(window_);
    plans::UpdateLibraries(parts_.state, parts_.workbench, parts_.services.messages,
                           parts_.services.splash, pointer)
        .templates();
}

void WorkbenchCommands::updatePlans() {
    WindowPointer pointer(window_);
    plans::UpdateLibraries(parts_.state, parts_.workbench, parts_.services.messages,
                           parts_.services.splash, pointer)
        .plans();
}

void WorkbenchCommands::convertOldData() {
    const auto& taken = parts_.state.LegacyTakeovers;
    const auto before = static_cast<std::ptrdiff_t>(taken.size());
    plans::LegacyConversion dialog(parts_.state, parts_.services.messages, [this](int bType) {
        bType == 1 ? updatePlans() : updateTemplates();
    });
    plans::convertOldData(parts_.state, parts_.inputBoxes, dialog);
    if (dialog.bType == 0) {
        return;
    }
    const auto converted = std::count_if(taken.begin() + before, taken.end(),
                                         [](const auto& one) { return one.Failure.isEmpty(); });
    parts_.frame.showStatus(
        dialog.ListBox.isEmpty()
            ? u"没有旧版本的方案或模板需要转换。"_s
            : u"已转换 %1 个，共 %2 个。"_s.arg(converted).arg(dialog.ListBox.size()));
}

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
