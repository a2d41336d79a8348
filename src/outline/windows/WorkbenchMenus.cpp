#include "outline/windows/WorkbenchMenus.h"

#include "outline/CommandCaptions.h"
#include "outline/Workbench.h"
#include "outline/windows/OutlineIcons.h"

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

template <typename Control>
Control* named(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}

QMenu* menu(QWidget& window, const QString& name, const QString& caption) {
    QMenu* made = named(new QMenu(caption, &window), name);
    made->setAccessibleName(QString(caption).remove(u'&').section(u'(', 0, 0));
    return made;
}

QAction* item(QMenu& menu, const QString& name, const QString& caption,
              const QString& icon = QString()) {
    QAction* made = named(menu.addAction(caption), name);
    if (!icon.isEmpty()) {
        made->setIcon(commandIcon(icon));
    }
    return made;
}

// A menu is as wide as its longest text, and a node may bear any name.
QString shortened(const QString& title) {
    constexpr qsizetype most = 40;
    constexpr qsizetype end = 10;
    if (title.size() <= most) {
        return title;
    }
    QString front = title.left(most - end);
    QString back = title.right(end);
    if (front.back().isHighSurrogate()) {
        front.chop(1);
    }
    if (back.front().isLowSurrogate()) {
        back.remove(0, 1);
    }
    return front + u'…' + back;
}

QAction* space(QMenu& menu, const QString& name) { return named(menu.addSeparator(), name); }

} // namespace

WorkbenchMenus::WorkbenchMenus(QWidget& window) {
    mnuSys = menu(window, u"mnuSys"_s, u"方案管理(&S)"_s);
    mnuNew = item(*mnuSys, u"mnuNew"_s, u"新建方案"_s);
    mnuSpace1 = space(*mnuSys, u"mnuSpace1"_s);
    mnuDelete = item(*mnuSys, u"mnuDelete"_s, u"删除当前方案"_s);
    mnuEdit = item(*mnuSys, u"mnuEdit"_s, u"方案编辑  (&E)"_s, u"edit"_s);
    mnuSpace2 = space(*mnuSys, u"mnuSpace2"_s);
    mnuExit = item(*mnuSys, u"mnuExit"_s, u"退出(&X)"_s, u"exit"_s);

    mnuSysEdit = menu(window, u"mnuSysEdit"_s, u"方案编辑(&E)"_s);
    mnuEQFolder = item(*mnuSysEdit, u"mnuEQFolder"_s, captions::folderBeside, u"folder-beside"_s);
    mnuLTFolder = item(*mnuSysEdit, u"mnuLTFolder"_s, captions::folderBelow, u"folder-below"_s);
    mnuAddDoc = menu(window, u"mnuAddDoc"_s, u"添加文档"_s);
    mnuSysEdit->addMenu(mnuAddDoc);
    mnuEQDoc = item(*mnuAddDoc, u"mnuEQDoc"_s, u"同级"_s, u"document-beside"_s);
    mnuLTDoc = item(*mnuAddDoc, u"mnuLTDoc"_s, u"下级"_s, u"document-below"_s);
    mnuPaste = item(*mnuSysEdit, u"mnuPaste"_s, u"粘贴"_s, u"paste"_s);
    mnuBrowseDoc = item(*mnuSysEdit, u"mnuBrowseDoc"_s, u"浏览文档"_s, u"browse"_s);
    mnuRename = item(*mnuSysEdit, u"mnuRename"_s, captions::renaming, u"rename"_s);
    mnuEditDelete = item(*mnuSysEdit, u"mnuEditDelete"_s, captions::deletion, u"delete"_s);
    mnuSaveTemplate = item(*mnuSysEdit, u"mnuSaveTemplate"_s, captions::templateStoring);
    mnuSysEdit->addSeparator();
    mnuUndo = item(*mnuSysEdit, u"mnuUndo"_s, u"撤消"_s);
    mnuRedo = item(*mnuSysEdit, u"mnuRedo"_s, u"恢复"_s);
    mnuHistory = item(*mnuSysEdit, u"mnuHistory"_s, u"操作历史(&H)..."_s);

    mnuWin = menu(window, u"mnuWin"_s, u"窗口(&W)"_s);
    mnuChongDie = item(*mnuWin, u"mnuChongDie"_s, u"重叠"_s);
    mnuPingPu = item(*mnuWin, u"mnuPingPu"_s, u"平铺"_s);

    mnuHelp = menu(window, u"mnuHelp"_s, u"帮助(&H)"_s);
    mnuContent = item(*mnuHelp, u"mnuContent"_s, u"内容   (&C)..."_s);
    mnuIndex = item(*mnuHelp, u"mnuIndex"_s, u"索引   (&I)..."_s);
    mnuAbout = item(*mnuHelp, u"mnuAbout"_s, u"关于(&A)"_s);

    mnuDelBrowse = menu(window, u"mnuDelBrowse"_s, QString());
    mnuDelBrowse->setAccessibleName(u"模板"_s);
    mnuCopy = item(*mnuDelBrowse, u"mnuCopy"_s, u"复制"_s, u"copy"_s);
    mnuDelTemplate = item(*mnuDelBrowse, u"mnuDelTemplate"_s, u"删除"_s, u"delete"_s);
    mnuBroTemplate = item(*mnuDelBrowse, u"mnuBroTemplate"_s, u"浏览"_s, u"browse"_s);
    showKeys();
}

// The trees answer these keys themselves; the menus only show them, which the context of the menu
// widget alone makes sure of.
void WorkbenchMenus::showKeys() {
    const auto shows = [](QAction* item, const QKeySequence& key) {
        item->setShortcut(key);
        item->setShortcutContext(Qt::WidgetShortcut);
    };
    shows(mnuRename, Qt::Key_F2);
    shows(mnuEditDelete, Qt::Key_Delete);
    shows(mnuCopy, QKeySequence::Copy);
    shows(mnuPaste, QKeySequence::Paste);
    mnuNew->setShortcut(QKeySequence::New);
    mnuUndo->setShortcut(u"Ctrl+Z"_s);
    mnuRedo->setShortcuts({u"Ctrl+Shift+Z"_s, u"Ctrl+Y"_s});
}

void WorkbenchMenus::apply(const Workbench& workbench) {
    mnuDelete->setEnabled(workbench.mnuDelete);
    mnuEdit->setEnabled(workbench.mnuEdit);
    mnuEQFolder->setEnabled(workbench.mnuEQFolder);
    mnuLTFolder->setEnabled(workbench.mnuLTFolder);
    mnuAddDoc->setEnabled(workbench.mnuAddDoc);
    mnuEQDoc->setEnabled(workbench.mnuEQDoc);
    mnuLTDoc->setEnabled(workbench.mnuLTDoc);
    mnuPaste->setEnabled(workbench.mnuPaste);
    mnuBrowseDoc->setEnabled(workbench.mnuBrowseDoc);
    mnuRename->setEnabled(workbench.mnuRename);
    mnuEditDelete->setEnabled(workbench.mnuEditDelete);
    mnuSaveTemplate->setEnabled(workbench.mnuSaveTemplate);
    mnuBroTemplate->setVisible(workbench.mnuBroTemplate);
}

void WorkbenchMenus::applyHistory(const QString& undo, const QString& redo) {
    // A name may have an ampersand, which a menu takes for a mnemonic.
    const auto show = [](QAction* item, const QString& caption, const QString& title) {
        item->setEnabled(!title.isEmpty());
        item->setText((caption + u' ' + shortened(title).replace(u'&', u"&&"_s)).trimmed());
    };
    show(mnuUndo, u"撤消"_s, undo);
    show(mnuRedo, u"恢复"_s, redo);
}

void WorkbenchMenus::popUpOnlyMnuNew(const QPoint& place) {
    const QList<QAction*> others{mnuEdit, mnuDelete, mnuSpace1, mnuSpace2, mnuExit};
    for (QAction* other : others) {
        other->setVisible(false);
    }
    QObject::connect(
        mnuSys, &QMenu::aboutToHide, mnuSys,
        [others] {
            for (QAction* other : others) {
                other->setVisible(true);
            }
        },
        Qt::SingleShotConnection);
    mnuSys->popup(place);
}

} // namespace qvnd::outline
