#include "outline/windows/OutlineView.h"

#include "outline/OutlineTree.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace qvnd::outline {

namespace {

constexpr int expandAfter = 600; // milliseconds over a folder during a drag
constexpr int scrollMargin = 24;
constexpr int emptyMargin = 16;    // beside the text of an empty tree
constexpr int lookAgainAfter = 50; // milliseconds

QStringList localFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            files << url.toLocalFile();
        }
    }
    return files;
}

bool isInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

OutlineView::OutlineView(OutlineModel& model, QWidget* parent) : QTreeView(parent), model_(model) {
    setModel(&model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize({20, 20});
    setEditTriggers(NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setDropIndicatorShown(false);
    setDefaultDropAction(Qt::CopyAction);
    setAutoExpandDelay(expandAfter);
    setAutoScrollMargin(scrollMargin);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    greyInactiveSelection();

    connect(&model_, &OutlineModel::nodeSelected, this, &OutlineView::showSelected);
    connect(&model_, &OutlineModel::nodeExpanded, this, &QTreeView::setExpanded);
    connect(&model_, &QAbstractItemModel::modelAboutToBeReset, this, &OutlineView::rememberShape);
    connect(this, &QTreeView::expanded, this, [this](const auto& at) { noteExpansion(at, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const auto& at) { noteExpansion(at, false); });
}

OutlineNode* OutlineView::nodeAt(const QPoint& position) const {
    return model_.nodeOf(indexAt(position));
}

// The tree's expansion follows the view's; while the tree tells of a change, it has to wait.
void OutlineView::noteExpansion(const QModelIndex& index, bool expanded) {
    OutlineNode* node = model_.nodeOf(index);
    if (node && !restorePending_ && expanded) {
        everExpanded_.insert(node->Key());
    } else if (node && !restorePending_) {
        everExpanded_.remove(node->Key());
    }
    if (!node || node->Expanded() == expanded) {
        return;
    }
    if (!model_.isFollowing()) {
        model_.tree().Expand(*node, expanded);
        return;
    }
    QTimer::singleShot(0, this, [this, key = node->Key(), expanded] {
        if (OutlineNode* later = model_.tree().find(key)) {
            model_.tree().Expand(*later, expanded);
        }
    });
}

void OutlineView::showSelected(const QModelIndex& index) {
    if (index == currentIndex()) {
        return;
    }
    if (index.isValid()) {
        setCurrentIndex(index);
    } else {
        selectionModel()->clear();
    }
}

void OutlineView::takeOverSelection() {
    OutlineNode* current = model_.nodeOf(currentIndex());
    if (current && current != model_.tree().SelectedItem()) {
        model_.tree().Select(current);
    }
}

void OutlineView::rememberShape() {
    if (!restorePending_) {
        rememberedPlace_ = verticalScrollBar()->value();
        restorePending_ = true;
        QTimer::singleShot(0, this, &OutlineView::restoreShape);
    }
    const OutlineTree& tree = model_.tree();
    for (int i = 1; i <= tree.Count(); ++i) {
        if (const OutlineNode& node = tree.Item(i); node.Expanded()) {
            rememberedExpansion_.insert(node.Key());
        }
    }
}

// A node that came back under its key is expanded as it was, also one that an undo brings back.
void OutlineView::restoreShape() {
    restorePending_ = false;
    OutlineTree& tree = model_.tree();
    scheduleDelayedItemsLayout();
    for (const QString& key : rememberedExpansion_ | everExpanded_) {
        if (OutlineNode* node = tree.find(key)) {
            tree.Expand(*node);
        }
    }
    rememberedExpansion_.clear();
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(rememberedPlace_);
    if (currentIndex().isValid()) {
        scrollTo(currentIndex());
    }
}

void OutlineView::StartLabelEdit() {
    if (const OutlineNode* node = model_.tree().SelectedItem()) {
        edit(model_.indexOf(node), AllEditTriggers, nullptr);
    }
}

// What the name is taken for may show a box, and the editor loses the keyboard to it.
void OutlineView::FinishLabelEdit() {
    const QPointer<QWidget> editor(indexWidget(currentIndex()));
    if (!editor) {
        return;
    }
    // What the input method has not handed over yet belongs to the name, too.
    QGuiApplication::inputMethod()->commit();
    if (editor) {
        commitData(editor);
    }
    if (editor) {
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

// The toolkit's palette has one colour for the selection with the keyboard and without it.
void OutlineView::greyInactiveSelection() {
    QPalette colours = palette();
    const QColor paper = colours.color(QPalette::Active, QPalette::Base);
    const QColor ink = colours.color(QPalette::Active, QPalette::Text);
    const auto mixed = [](int one, int other) { return (4 * one + other) / 5; };
    const QColor grey(mixed(paper.red(), ink.red()), mixed(paper.green(), ink.green()),
                      mixed(paper.blue(), ink.blue()));
    if (colours.color(QPalette::Inactive, QPalette::Highlight) != grey) {
        colours.setColor(QPalette::Inactive, QPalette::Highlight, grey);
        colours.setColor(QPalette::Inactive, QPalette::HighlightedText, ink);
        setPalette(colours);
    }
}

void OutlineView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        greyInactiveSelection();
    }
}

void OutlineView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (!emptyText_.isEmpty() && model_.rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(emptyMargin, 0, -emptyMargin, 0),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
    }
}

bool OutlineView::viewportEvent(QEvent* event) {
    if (isInput(*event) && isBusy_()) {
        if (event->type() == QEvent::Drop) {
            endHover();
        }
        event->ignore();
        return true;
    }
    return QTreeView::viewportEvent(event);
}

bool OutlineView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (trigger == AllEditTriggers && model_.flags(index).testFlag(Qt::ItemIsEditable)) {
        emit beforeLabelEdit();
    }
    return QTreeView::edit(index, trigger, event);
}

// Left of a row's own rectangle lies its arrow, which opens and closes and selects nothing.
bool OutlineView::isOnBranch(const QPoint& position) const {
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || !model_.hasChildren(index)) {
        return false;
    }
    const int left = visualRect(index).left();
    return position.x() < left && position.x() >= left - indentation();
}

void OutlineView::mousePressEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    pressedKey_.clear();
    pressedBeside_ = false;
    if (isOnBranch(position) && event->button() == Qt::LeftButton) {
        QTreeView::mousePressEvent(event);
        return;
    }
    OutlineNode* node = nodeAt(position);
    if (event->button() == Qt::LeftButton) {
        pressedKey_ = node ? node->Key() : QString();
        pressedBeside_ = !node;
    }
    emit mouseDown(event->button(), node, event->globalPosition().toPoint());
    if (event->button() == Qt::LeftButton) {
        QTreeView::mousePressEvent(event);
        takeOverSelection();
    }
    event->accept();
}

void OutlineView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    emit mouseUp();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint position = event->position().toPoint();
    const QString pressed = std::exchange(pressedKey_, QString());
    const OutlineNode* node = nodeAt(position);
    if (node ? node->Key() != pressed : !std::exchange(pressedBeside_, false)) {
        return;
    }
    emit click();
    if (OutlineNode* clicked = nodeAt(position)) {
        emit nodeClick(clicked);
    }
}

void OutlineView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    const bool counts =
        event->button() == Qt::LeftButton && nodeAt(position) && !isOnBranch(position);
    QTreeView::mouseDoubleClickEvent(event);
    takeOverSelection();
    if (counts) {
        emit dblClick();
    }
}

bool OutlineView::answersKey(int key) {
    switch (key) {
    case Qt::Key_Delete:
        emit keyDown(keyDelete);
        return true;
    case Qt::Key_F2:
        emit keyDown(keyF2);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit keyDown(keyEnter);
        return true;
    default:
        return false;
    }
}

void OutlineView::keyPressEvent(QKeyEvent* event) {
    if (isBusy_()) {
        event->ignore();
        return;
    }
    // An Enter that ends an in-place editing comes up here from the editor.
    const bool inEditor = state() == EditingState && !hasFocus();
    if (inEditor || event->modifiers().testFlag(Qt::ControlModifier) || !answersKey(event->key())) {
        const QModelIndex before = currentIndex();
        QTreeView::keyPressEvent(event);
        if (currentIndex().isValid() && currentIndex() != before) {
            takeOverSelection();
            emit nodeClick(model_.nodeOf(currentIndex()));
        }
        return;
    }
    event->accept();
}

// The mouse's own menu comes with its press.
void OutlineView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard) {
        return;
    }
    const QRect row = visualRect(currentIndex());
    const QPoint place = row.isEmpty() ? QPoint() : QPoint(row.left(), row.bottom());
    emit mouseDown(Qt::RightButton, model_.nodeOf(currentIndex()), viewport()->mapToGlobal(place));
}

// Icon and name of a row, without the blank behind them.
QRect OutlineView::nameRect(const QModelIndex& index) const {
    QRect row = visualRect(index);
    row.setWidth(std::min(row.width(), sizeHintForIndex(index).width()));
    return row;
}

void OutlineView::startDrag(Qt::DropActions) {
    const QModelIndex index = currentIndex();
    if (!index.isValid()) {
        return;
    }
    pressedKey_.clear();
    emit oleStartDrag();
    QMimeData* dragged = model_.mimeData({index});
    const QPixmap picture = viewport()->grab(nameRect(index));
    if (runDrag_) {
        runDrag_(dragged, picture);
        return;
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(dragged);
    drag->setPixmap(picture);
    drag->exec(Qt::CopyAction);
}

// The name that is being typed is another node's than the one that the drag will point at.
void OutlineView::dragEnterEvent(QDragEnterEvent* event) {
    FinishLabelEdit();
    QTreeView::dragEnterEvent(event);
    if (model_.canDropMimeData(event->mimeData(), event->dropAction(), -1, -1, {})) {
        event->acceptProposedAction();
    }
}

void OutlineView::dragMoveEvent(QDragMoveEvent* event) {
    QTreeView::dragMoveEvent(event);
    if (model_.canDropMimeData(event->mimeData(), event->dropAction(), -1, -1, {})) {
        event->acceptProposedAction();
        emit oleDragOver(nodeAt(event->position().toPoint()));
    }
}

void OutlineView::endHover() {
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
}

void OutlineView::dropEvent(QDropEvent* event) {
    endHover();
    const QMimeData& dropped = *event->mimeData();
    const bool isNode = dropped.hasFormat(OutlineModel::nodeMimeType);
    const QStringList files = isNode ? QStringList() : localFiles(dropped);
    if (!isNode && files.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    const OutlineNode* node = nodeAt(event->position().toPoint());
    // Whoever drags must not wait for the command, which may ask the user something.
    QTimer::singleShot(0, this, [this, isNode, files, key = node ? node->Key() : QString()] {
        tellDrop(key, files, isNode);
    });
}

void OutlineView::tellDrop(const QString& key, const QStringList& files, bool isNode) {
    if (isBusy_()) {
        QTimer::singleShot(lookAgainAfter, this, [=, this] { tellDrop(key, files, isNode); });
        return;
    }
    OutlineNode* node = model_.tree().find(key);
    if (!node && !key.isEmpty()) {
        emit dropTargetGone();
    } else if (isNode) {
        emit oleDragDrop(node);
    } else {
        emit filesDropped(node, files);
    }
}

} // namespace qvnd::outline
