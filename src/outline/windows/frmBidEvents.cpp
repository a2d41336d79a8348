#include "outline/windows/frmBid.h"

#include "outline/CommandCaptions.h"
#include "outline/CurrentPlan.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/RenameNode.h"
#include "outline/TreeDrag.h"
#include "outline/TrvCurrentEvents.h"
#include "outline/TrvTemplateEvents.h"
#include "outline/TrvTemplate_UsEvents.h"
#include "outline/windows/NoteBar.h"
#include "outline/windows/PreviewFrame.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/WorkbenchToolbar.h"
#include "plans/ConvertOldData.h"
#include "platform/files/Paths.h"

#include <QHash>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

// The wiring of frmBid: each event of a control, and the call it makes.
namespace qvnd::outline {

namespace {

void onKey(QWidget& tree, const QKeySequence& key, const std::function<void()>& command) {
    auto* shortcut = new QShortcut(key, &tree);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &tree, command);
}

// QWidget's own menu of a widget's actions shows no tool tips.
void popUpItsActions(QWidget& widget) {
    widget.setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(&widget, &QWidget::customContextMenuRequested, &widget,
                     [&widget](const QPoint& place) {
                         auto* menu = new QMenu(&widget);
                         menu->setAttribute(Qt::WA_DeleteOnClose);
                         menu->setToolTipsVisible(true);
                         menu->addActions(widget.actions());
                         menu->popup(widget.mapToGlobal(place));
                     });
}

QAction* offer(const QTabWidget& tabs, const QString& name, const QString& caption) {
    QTabBar* bar = tabs.tabBar();
    auto* action = new QAction(caption, bar);
    action->setObjectName(name);
    bar->addAction(action);
    return action;
}

} // namespace

void frmBid::bind(QAction* action, CommandOfMenu command) { bind(action, command, action->text()); }

void frmBid::bind(QAction* action, CommandOfMenu command, const QString& caption) {
    connect(action, &QAction::triggered, this, [this, command, caption] {
        run([this, command] { (commands_.*command)(); }, caption);
    });
}

void frmBid::bindAtOnce(QAction* action, CommandOfMenu command) {
    connect(action, &QAction::triggered, this,
            [this, command] { read([this, command] { (commands_.*command)(); }); });
}

void frmBid::connectMenus() {
    bind(menus_.mnuNew, &WorkbenchCommands::mnuNew);
    bind(menus_.mnuDelete, &WorkbenchCommands::mnuDelete);
    bind(menus_.mnuEdit, &WorkbenchCommands::cmdEdit);
    bindAtOnce(menus_.mnuExit, &WorkbenchCommands::mnuExit);
    bind(menus_.mnuEQFolder, &WorkbenchCommands::mnuEQFolder);
    bind(menus_.mnuLTFolder, &WorkbenchCommands::mnuLTFolder);
    bind(menus_.mnuEQDoc, &WorkbenchCommands::mnuEQDoc, captions::documentBeside);
    bind(menus_.mnuLTDoc, &WorkbenchCommands::mnuLTDoc, captions::documentBelow);
    bind(menus_.mnuPaste, &WorkbenchCommands::mnuPaste);
    bind(menus_.mnuBrowseDoc, &WorkbenchCommands::mnuBrowseDoc);
    connect(menus_.mnuRename, &QAction::triggered, this, &frmBid::rename);
    bind(menus_.mnuEditDelete, &WorkbenchCommands::mnuEditDelete);
    bind(menus_.mnuSaveTemplate, &WorkbenchCommands::mnuSaveTemplate);
    bindAtOnce(menus_.mnuChongDie, &WorkbenchCommands::mnuChongDie);
    bindAtOnce(menus_.mnuPingPu, &WorkbenchCommands::mnuPingPu);
    bindAtOnce(menus_.mnuContent, &WorkbenchCommands::mnuContent);
    bindAtOnce(menus_.mnuIndex, &WorkbenchCommands::mnuIndex);
    bindAtOnce(menus_.mnuAbout, &WorkbenchCommands::mnuAbout);
    bindAtOnce(menus_.mnuCopy, &WorkbenchCommands::mnuCopy);
    bind(menus_.mnuDelTemplate, &WorkbenchCommands::mnuDelTemplate, captions::templateDeletion);
    bind(menus_.mnuBroTemplate, &WorkbenchCommands::mnuBroTemplate);
    onKey(*TrvTemplate_, QKeySequence::Copy, [this] { menus_.mnuCopy->trigger(); });
    onKey(*TrvCurrent_, QKeySequence::Paste, [this] { menus_.mnuPaste->trigger(); });
}

// Commands without an item in the menus stand where a user asks for the properties of what a tab
// shows: in the context menu of the tabs.
void frmBid::connectTabs() {
    for (QTabWidget* tabs : {TabCurrent_, TabTemplate_}) {
        popUpItsActions(*tabs->tabBar());
    }
    QAction* information = offer(*TabCurrent_, u"OpenPlanInfo"_s, u"工程信息(&I)..."_s);
    connect(information, &QAction::triggered, this, &frmBid::OpenPlanInfo);
    onKey(*TrvCurrent_, QKeySequence(u"Alt+Return"_s), [this] { OpenPlanInfo(); });

    QAction* templates = offer(*TabTemplate_, u"updateTemplates"_s, u"更新施工方案模板(&T)"_s);
    bind(templates, &WorkbenchCommands::updateTemplates);
    onKey(*TrvTemplate_, QKeySequence::Refresh, [templates] { templates->trigger(); });
    QAction* plans = offer(*TabTemplate_, u"updatePlans"_s, u"更新用户方案(&P)"_s);
    bind(plans, &WorkbenchCommands::updatePlans);
    onKey(*TrvTemplate_Us_, QKeySequence::Refresh, [plans] { plans->trigger(); });
    QAction* conversion = offer(*TabTemplate_, u"convertOldData"_s, u"转换标书(&C)..."_s);
    conversion->setToolTip(plans::conversionNotice().join(u'\n'));
    bind(conversion, &WorkbenchCommands::convertOldData);
}

void frmBid::connectHistory() {
    inTurn_.areAbout(workbench_.TrvCurrent);
    inTurn_.onStep([this](const history::Step& step) { tellStep(step); });
    inTurn_.onRemarks([this](const QString& remarks) { note_->tellAlone(remarks); });
    inTurn_.onRefusal([this](const QString& selected) { showAnew(selected); });
    for (const QAction* undo : {menus_.mnuUndo, TbarBid_->undo()}) {
        connect(undo, &QAction::triggered, this, [this] { takeBack(namedUndo_); });
    }
    for (const QAction* redo : {menus_.mnuRedo, TbarBid_->redo()}) {
        connect(redo, &QAction::triggered, this, [this] { doAgain(namedRedo_); });
    }
    connect(menus_.mnuHistory, &QAction::triggered, this, &frmBid::showHistory);
    connect(note_, &NoteBar::changed, this, &frmBid::place);
    connect(note_, &NoteBar::undo, this, &frmBid::takeOffer);
    connect(note_, &NoteBar::redo, this, &frmBid::takeOffer);
    connect(note_, &NoteBar::details, this, &frmBid::showDetails);
}

void frmBid::connectToolbar() {
    static const QHash<QString, CommandOfMenu> atOnce{
        {u"复制"_s, &WorkbenchCommands::mnuCopy},
        {u"退出"_s, &WorkbenchCommands::cmdExit},
    };
    static const QHash<QString, CommandOfMenu> commands{
        {u"同夹"_s, &WorkbenchCommands::mnuEQFolder},
        {u"下夹"_s, &WorkbenchCommands::mnuLTFolder},
        {u"同档"_s, &WorkbenchCommands::mnuEQDoc},
        {u"下档"_s, &WorkbenchCommands::mnuLTDoc},
        {u"删除"_s, &WorkbenchCommands::mnuEditDelete},
        {u"浏览"_s, &WorkbenchCommands::mnuBrowseDoc},
        {u"粘贴"_s, &WorkbenchCommands::toolbarPaste},
        {u"编辑"_s, &WorkbenchCommands::cmdEdit},
    };
    connect(TbarBid_, &WorkbenchToolbar::buttonClick, this, [this](const QString& key) {
        if (!isOpen(key)) {
            frame_.showStatus(
                u"现在不能用“%1”：它在菜单中也是关闭的。"_s.arg(TbarBid_->tipOf(key)));
        } else if (const CommandOfMenu command = commands.value(key)) {
            run([this, command] { (commands_.*command)(); }, TbarBid_->tipOf(key));
        } else if (const CommandOfMenu shown = atOnce.value(key)) {
            read([this, shown] { (commands_.*shown)(); });
        } else {
            rename();
        }
    });
}

// A button opens by its own number; whether its command can run is for the item in the menus.
bool frmBid::isOpen(const QString& key) const {
    static const QHash<QString, bool Workbench::*> items{
        {u"同夹"_s, &Workbench::mnuEQFolder},   {u"下夹"_s, &Workbench::mnuLTFolder},
        {u"同档"_s, &Workbench::mnuEQDoc},      {u"下档"_s, &Workbench::mnuLTDoc},
        {u"删除"_s, &Workbench::mnuEditDelete}, {u"重命名"_s, &Workbench::mnuRename},
        {u"浏览"_s, &Workbench::mnuBrowseDoc},  {u"粘贴"_s, &Workbench::pasteArmed},
    };
    bool Workbench::*const item = items.value(key, nullptr);
    return item == nullptr || workbench_.*item;
}

void frmBid::trvCurrentMouseDown(Qt::MouseButton button, OutlineNode* node, const QPoint& place) {
    const bool right = button == Qt::RightButton;
    PopUp popUp = PopUp::none;
    read([&] {
        popUp = TrvCurrentEvents(state_, workbench_, services_, preview_)
                    .MouseDown(right ? MouseButton::right : MouseButton::left, node);
    });
    if (popUp == PopUp::mnuSysEdit) {
        menus_.mnuSysEdit->popup(place);
    } else if (popUp == PopUp::onlyMnuNew) {
        menus_.popUpOnlyMnuNew(place);
    }
}

void frmBid::trvCurrentKeyDown(int code) {
    TrvCurrentEvents events(state_, workbench_, services_, preview_);
    switch (code) {
    case OutlineView::keyF2:
        if (workbench_.mnuRename) {
            rename();
        }
        break;
    case OutlineView::keyEnter:
        run([&] { events.DblClick(); }, u"浏览"_s);
        break;
    default:
        run([&] { events.KeyDown(code); }, menus_.mnuEditDelete->text());
    }
}

void frmBid::connectTrvCurrent() {
    connect(TrvCurrent_, &OutlineView::mouseDown, this, &frmBid::trvCurrentMouseDown);
    connect(TrvCurrent_, &OutlineView::keyDown, this, &frmBid::trvCurrentKeyDown);
    // It ends a movement, so the tree may be filled anew behind it.
    connect(TrvCurrent_, &OutlineView::nodeClick, this, [this](const OutlineNode* node) {
        read([&] { TrvCurrentEvents(state_, workbench_, services_, preview_).NodeClick(*node); });
        seeOtherPrograms();
    });
    connect(TrvCurrent_, &OutlineView::click, this, [this] {
        read([&] { TrvCurrentEvents(state_, workbench_, services_, preview_).Click(); });
    });
    connect(TrvCurrent_, &OutlineView::dblClick, this, [this] {
        run([&] { TrvCurrentEvents(state_, workbench_, services_, preview_).DblClick(); },
            u"浏览"_s);
    });
}

// Nothing is changed before the name has been typed.
void frmBid::rename() {
    TrvCurrent_->FinishLabelEdit();
    seeOtherPrograms();
    read([this] {
        if (mnuRename(workbench_, services_.messages)) {
            TrvCurrent_->StartLabelEdit();
        }
    });
}

// A box that came up while a name was taken over has taken the keyboard from the editor, and the
// toolkit gives it to nobody when the editor goes. A label that is edited by now keeps it.
void frmBid::takeKeyboardBack() {
    if (!TrvCurrent_->indexWidget(TrvCurrent_->currentIndex())) {
        TrvCurrent_->setFocus();
    }
}

void frmBid::connectRenaming() {
    connect(TrvCurrent_, &OutlineView::beforeLabelEdit, this, [this] {
        if (const OutlineNode* node = workbench_.TrvCurrent.SelectedItem()) {
            BeforeLabelEdit(workbench_, *node);
        }
    });
    connect(currentModel_, &OutlineModel::textEdited, this, &frmBid::takeName);
}

void frmBid::takeName(const QString& name) {
    const bool hadKeyboard = TrvCurrent_->isAncestorOf(window()->focusWidget());
    bool isHandled = false;
    const bool hasRun =
        inTurn_.run(thenFollow([&] {
                        isHandled = true;
                        AfterLabelEdit(state_, workbench_, services_.messages, name);
                    }),
                    menus_.mnuRename->text());
    if (hasRun) {
        applyCommands();
    }
    if (!isHandled) {
        frame_.showStatus(u"名称“%1”没有改成。"_s.arg(name));
    }
    if (hadKeyboard) {
        QTimer::singleShot(0, this, &frmBid::takeKeyboardBack);
    }
}

// A document goes to the word processor by a double click on its preview, and by Ctrl+Enter on its
// node.
void frmBid::connectOpening() {
    connect(fraSee_, &PreviewFrame::openRequested, this,
            [this](const QString& path) { read([&] { frame_.openDocument(path); }); });
    const std::pair<QWidget*, OutlineTree*> trees[] = {
        {TrvCurrent_, &workbench_.TrvCurrent}, {TrvTemplate_Us_, &workbench_.TrvTemplate_Us}};
    for (const auto& [view, tree] : trees) {
        for (const char* key : {"Ctrl+Return", "Ctrl+Enter"}) {
            onKey(*view, QKeySequence(QLatin1String(key)), [this, tree = tree] {
                run([&] { openSelectedDocument(*tree); }, u"打开文档"_s);
            });
        }
    }
}

void frmBid::openSelectedDocument(const OutlineTree& tree) {
    const OutlineNode* node = tree.SelectedItem();
    if (node && node->Image() == image::document) {
        frame_.openDocument(
            files::resolved(documentPath(state_, tableOfKey(node->Key()), node->Key())));
    }
}

void frmBid::connectTrvTemplate() {
    const auto events = [this] {
        return TrvTemplateEvents(state_, workbench_, services_.messages, preview_);
    };
    connect(TrvTemplate_, &OutlineView::nodeClick, this,
            [this, events](OutlineNode* node) { read([&] { events().NodeClick(*node); }); });
    connect(TrvTemplate_, &OutlineView::click, this,
            [this, events] { read([&] { events().Click(); }); });
    connect(TrvTemplate_, &OutlineView::dblClick, this,
            [this, events] { run([&] { events().DblClick(); }, u"浏览模板"_s); });
    connect(TrvTemplate_, &OutlineView::keyDown, this, [this, events](int code) {
        if (code == OutlineView::keyEnter) {
            run([&] { events().DblClick(); }, u"浏览模板"_s);
        }
    });
    connect(TrvTemplate_, &OutlineView::mouseUp, this,
            [this, events] { read([&] { events().MouseUp(); }); });
    connect(TrvTemplate_, &OutlineView::mouseDown, this,
            [this, events](Qt::MouseButton button, OutlineNode* node, const QPoint& place) {
                bool popUp = false;
                read([&] {
                    popUp = events().MouseDown(
                        button == Qt::RightButton ? MouseButton::right : MouseButton::left, node);
                });
                if (popUp) {
                    menus_.mnuDelBrowse->popup(place);
                }
            });
}

void frmBid::connectTrvTemplate_Us() {
    const auto events = [this] {
        return TrvTemplate_UsEvents(state_, workbench_, services_.messages, preview_);
    };
    connect(TrvTemplate_Us_, &OutlineView::nodeClick, this, &frmBid::trvTemplate_UsNodeClick);
    connect(TrvTemplate_Us_, &OutlineView::dblClick, this,
            [this, events] { run([&] { events().DblClick(); }, u"浏览"_s); });
    connect(TrvTemplate_Us_, &OutlineView::keyDown, this, [this, events](int code) {
        if (code == OutlineView::keyEnter) {
            run([&] { events().DblClick(); }, u"浏览"_s);
        }
    });
    connect(TrvTemplate_Us_, &OutlineView::mouseDown, this,
            [this, events](Qt::MouseButton, OutlineNode* node) {
                read([&] { events().MouseDown(node); });
            });
}

// A root opens its plan, which saves the one that was open.
void frmBid::trvTemplate_UsNodeClick(OutlineNode* node) {
    const auto click = [&] {
        clickUserPlan(state_, workbench_, services_.splash, *node);
        commands_.selectRoot();
    };
    const CommandsInTurn::Gesture gesture(inTurn_);
    bool writes = true;
    read([&] { writes = opensPlan(state_, *node); });
    if (writes) {
        run(click, captions::planOpening);
    } else {
        read(click);
    }
}

void frmBid::connectDragging() {
    connect(TrvCurrent_, &OutlineView::oleStartDrag, this,
            [this] { read([this] { OLEStartDrag(workbench_); }); });
    connect(TrvCurrent_, &OutlineView::oleDragOver, this, [this](OutlineNode* node) {
        if (node != workbench_.TrvCurrent.SelectedItem()) {
            read([&] { OLEDragOver(workbench_, node); });
        }
    });
    connect(TrvCurrent_, &OutlineView::oleDragDrop, this,
            [this](OutlineNode* node) { run([&] { commands_.drop(node); }, captions::drop); });
    connect(TrvCurrent_, &OutlineView::dropTargetGone, this, [this] {
        read([this] {
            workbench_.dragKey.clear(); // or the next drop would count as the end of this drag
            services_.messages.tell(QStringLiteral("拖放到的节点已不存在，请重新拖放。"),
                                    desktop::Icon::information, QStringLiteral("提示"));
        });
    });
    connect(TrvCurrent_, &OutlineView::filesDropped, this,
            [this](const OutlineNode* node, const QStringList& files) {
                run([&] { commands_.addFiles(node, files); }, u"添加文档"_s);
            });
}

} // namespace qvnd::outline
