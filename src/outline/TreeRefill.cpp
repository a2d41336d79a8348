#include "outline/TreeRefill.h"

#include "outline/OutlineKeys.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/error/IgnoringErrors.h"

namespace qvnd::outline {

void TreeRefill::refill(const QString& table, const OutlineRow* added, const QString& selectKey) {
    if (table.isEmpty() || table != shown_) {
        read(table, selectKey);
        return;
    }
    if (added) {
        append(*added);
    }
    select(selectKey);
    splash_.unload();
}

void TreeRefill::read(const QString& table, const QString& selectKey) {
    const auto rs = db_.OpenRecordset("Select * From " + table + " Order By [id]");
    tree_.Clear();
    updateTree(*rs, tree_, selectKey, splash_);
    shown_ = rs->Eof() ? table : QString();
}

// As in a fill, a row that cannot hang in the tree ends it in silence.
void TreeRefill::append(const OutlineRow& row) {
    const int kind = row.isDocument ? image::document : image::folder;
    const int kindSelected = row.isDocument ? image::documentSelected : image::folderSelected;
    const bool hangs = ignoringErrors(
        [&] { tree_.AddChild(parentKeyOf(row.key), row.key, row.name, kind, kindSelected); });
    if (!hangs) {
        shown_.clear();
    }
}

void TreeRefill::select(const QString& selectKey) {
    tree_.CollapseAll();
    OutlineNode* node = tree_.find(selectKey);
    if (!node || node->Index() == 1) {
        tree_.Select(nullptr);
        return;
    }
    tree_.Select(node);
    tree_.Expand(*node);
}

} // namespace qvnd::outline
