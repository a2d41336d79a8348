#pragma once

#include "outline/OutlineNode.h"
#include "outline/windows/OutlineModel.h"

#include <QSet>
#include <QStringList>
#include <QTreeView>

#include <functional>

namespace qvnd::outline {

// A tree of the workbench. It raises the events that the window's rules speak of and shows what
// the OutlineTree holds. A selection by code is shown without an event. One by mouse or keyboard is
// first made in the OutlineTree and then signalled.
//
// Expanded nodes and the place scrolled to outlast a refill of the tree, by key.
class OutlineView : public QTreeView {
    Q_OBJECT

public:
    // Key codes of keyDown.
    static constexpr int keyEnter = 13;
    static constexpr int keyDelete = 46;
    static constexpr int keyF2 = 113;

    // Runs a drag to its end; tests put their own here.
    using DragRunner = std::function<void(QMimeData* data, const QPixmap& picture)>;

    explicit OutlineView(OutlineModel& model, QWidget* parent = nullptr);

    OutlineModel& outline() const { return model_; }
    // The node whose row lies there, in coordinates of the viewport; null beside all rows.
    OutlineNode* nodeAt(const QPoint& position) const;

    // What stands in the tree while it is empty.
    void setEmptyText(const QString& text) { emptyText_ = text; }

    // Begins the in-place editing of the selected node, if there is one.
    void StartLabelEdit();
    // Ends it as Enter does; nothing happens without one.
    void FinishLabelEdit();

    // While isBusy() is true, mouse, keyboard and drags from outside are ignored. A drop that came
    // before is signalled when it has become false.
    void setBusy(std::function<bool()> isBusy) { isBusy_ = std::move(isBusy); }

    void setDragRunner(DragRunner runner) { runDrag_ = std::move(runner); }
    // A drag of the selected node from the press of the mouse on.
    void startDrag(Qt::DropActions supported) override;

signals:
    // Every press on the tree; null beside all nodes. `place` is where a pop-up belongs, in
    // coordinates of the screen. The context key is a press of the right button.
    void mouseDown(Qt::MouseButton button, qvnd::outline::OutlineNode* node, const QPoint& place);
    void mouseUp();
    // A click anywhere, but on an arrow.
    void click();
    // A click on a node, behind its `click`, or a selection by the keyboard.
    void nodeClick(qvnd::outline::OutlineNode* node);
    void dblClick();
    // Delete, F2 and Enter, outside of an in-place editing.
    void keyDown(int code);
    void beforeLabelEdit();

    // The events of a drag, in their order. The node is null beside all nodes; a drop is told
    // when the drag itself has ended.
    void oleStartDrag();
    void oleDragOver(qvnd::outline::OutlineNode* node);
    void oleDragDrop(qvnd::outline::OutlineNode* node);
    // Instead of a drop, when its node went in the meantime.
    void dropTargetGone();
    // Files from outside; only the local ones, in their order.
    void filesDropped(qvnd::outline::OutlineNode* node, const QStringList& files);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    bool isOnBranch(const QPoint& position) const;
    QRect nameRect(const QModelIndex& index) const;
    void showSelected(const QModelIndex& index);
    void noteExpansion(const QModelIndex& index, bool expanded);
    void takeOverSelection();
    void rememberShape();
    void restoreShape();
    void endHover();
    void tellDrop(const QString& key, const QStringList& files, bool isNode);
    bool answersKey(int key);

    void greyInactiveSelection();

    OutlineModel& model_;
    QString emptyText_;
    DragRunner runDrag_;
    std::function<bool()> isBusy_ = [] { return false; };
    QString pressedKey_;
    bool pressedBeside_ = false;
    QSet<QString> everExpanded_; // by the user, also of nodes that are gone
    QSet<QString> rememberedExpansion_;
    int rememberedPlace_ = 0;
    bool restorePending_ = false;
};

} // namespace qvnd::outline
