#include "outline/TreeDrag.h"

#include "outline/LibraryTree.h"
#include "outline/NodeMove.h"
#include "outline/TemplateCopy.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/files/Trim.h"

#include <limits>

namespace qvnd::outline {

namespace {

class Drop {
public:
    Drop(modMain& state, Workbench& workbench, const Services& services)
        : state_(state), workbench_(workbench), services_(services) {}

    Dropped copyInto(OutlineNode& node);
    Dropped move(const OutlineNode* node);

private:
    void refreshPlans();
    QString nameOfDragged() const;

    modMain& state_;
    Workbench& workbench_;
    Services services_;
};

void Drop::refreshPlans() {
    refreshUserPlans(state_, workbench_, services_.messages, services_.splash);
}

Dropped Drop::copyInto(OutlineNode& node) {
    OutlineTree& tree = workbench_.TrvCurrent;
    tree.Select(&node);
    const bool isRoot = node.Index() == 1;
    workbench_.dropTargetKey = node.Key();
    workbench_.dropTargetImage = static_cast<std::int16_t>(node.Image());
    TemplateCopy copy(state_, workbench_, services_);
    const Copied outcome = copy.DragDrop(workbench_.dropTargetKey, workbench_.copySourceKey);
    workbench_.dropTargetKey.clear();
    workbench_.dropTargetImage = 0;
    refreshPlans();
    if (isRoot && tree.Count() > 0) {
        tree.Select(&tree.Item(1));
        tree.Expand(tree.Item(1));
    }
    return {outcome == Copied::copied, copy.newKeys(), {}};
}

QString Drop::nameOfDragged() const {
    const OutlineNode* node = workbench_.TrvCurrent.find(workbench_.dragKey);
    return node == nullptr ? workbench_.dragKey : node->Text();
}

// Whoever drags something else now did not ask for the move of what an earlier drag has left.
Dropped Drop::move(const OutlineNode* node) {
    Dropped dropped;
    const bool wasLeft = workbench_.isDragLeft;
    const QString name = nameOfDragged();
    workbench_.isDragLeft = node == nullptr;
    if (node) {
        NodeMove move(state_, workbench_, services_);
        dropped.done = move.run(*node) == Moved::moved;
        if (dropped.done) {
            dropped.newKeys << move.newKey();
        }
        if (move.failure()) {
            dropped.failure = desktop::descriptionOf(*move.failure());
        }
        if (!dropped.done) {
            return dropped;
        }
        if (wasLeft) {
            state_.Remarks
                << QStringLiteral("移动的是上次拖到空白处的“%1”，没有复制模板的内容。").arg(name);
        }
    }
    refreshPlans();
    return dropped;
}

} // namespace

bool OLEStartDrag(Workbench& workbench) {
    const OutlineNode* selected = workbench.TrvCurrent.SelectedItem();
    if (!selected || selected->Index() > std::numeric_limits<std::int16_t>::max()) {
        return false;
    }
    workbench.isDragLeft = false;
    workbench.dragKey = selected->Key();
    workbench.dragIndex = static_cast<std::int16_t>(selected->Index());
    return true;
}

void OLEDragOver(Workbench& workbench, OutlineNode* node) {
    if (node) {
        workbench.TrvCurrent.Select(node);
    }
}

Dropped OLEDragDrop(modMain& state, Workbench& workbench, const Services& services,
                    OutlineNode* node) {
    Drop drop(state, workbench, services);
    if (!files::Trim(workbench.dragKey).isEmpty()) {
        return drop.move(node);
    }
    return node ? drop.copyInto(*node) : Dropped();
}

} // namespace qvnd::outline
