#include "outline/TreeDrag.h"
#include "outline/windows/frmBid.h"

// The wiring of the drags that end in TrvCurrent.
namespace qvnd::outline {

void frmBid::connectDragging() {
    connect(TrvCurrent_, &OutlineView::oleStartDrag, this,
            [this] { run([this] { OLEStartDrag(workbench_); }); });
    connect(TrvCurrent_, &OutlineView::oleDragOver, this,
            [this](OutlineNode* node) { OLEDragOver(workbench_, node); });
    connect(TrvCurrent_, &OutlineView::oleDragDrop, this, [this](OutlineNode* node) {
        run([&] { OLEDragDrop(state_, workbench_, services_, node); });
    });
    connect(TrvCurrent_, &OutlineView::dropTargetGone, this, [this] {
        run([this] {
            workbench_.dragKey.clear(); // or the next drop would count as the end of this drag
            services_.messages.tell(QStringLiteral("拖放到的节点已不存在，请重新拖放。"),
                                    desktop::Icon::information, QStringLiteral("提示"));
        });
    });
    connect(TrvCurrent_, &OutlineView::filesDropped, this,
            [this](const OutlineNode* node, const QStringList& files) {
                if (node) {
                    run([&, key = node->Key()] { commands_.addFiles(key, files); });
                }
            });
}

} // namespace qvnd::outline
