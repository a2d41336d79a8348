#include "outline/TreeLoading.h"

#include "outline/OutlineKeys.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"
#include "store/modMain.h"

namespace qvnd::outline {

namespace {

// Error 35601 when its parent is not in the tree, 35602 when its key is.
OutlineNode& addNode(OutlineTree& tree, const OutlineRow& row) {
    return tree.AddChild(parentKeyOf(row.key), row.key, row.name,
                         row.isDocument ? image::document : image::folder,
                         row.isDocument ? image::documentSelected : image::folderSelected);
}

OutlineNode& addRoot(OutlineTree& tree, const OutlineRow& row) {
    return tree.Add(row.key, row.name, image::root, image::rootSelected);
}

OutlineRow rowAt(jet::Recordset& rs) {
    return {rs.Get(store::field::key).ToText(), rs.Get(store::field::name).ToText(),
            rs.Get(store::field::isDocument).TextOrEmpty() == u"是"};
}

// Not a fault of the table that is read.
bool isOfTheStore(const RunTimeError& failure) {
    switch (failure.number()) {
    case error::storeFailed:
    case error::storeDiskFull:
    case error::cannotOpenFile:
    case error::folderInvalid:
    case error::cannotAccessFile:
    case error::storeBusy:
    case error::unrecognizedFormat:
    case error::objectClosed:
        return true;
    default:
        return false;
    }
}

void addNodes(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey) {
    if (rs.Eof()) {
        return;
    }
    addRoot(tree, {rs.Get(store::field::key).ToText(), rs.Get(store::field::name).ToText(), false});
    for (rs.MoveNext(); !rs.Eof(); rs.MoveNext()) {
        OutlineNode& node = addNode(tree, rowAt(rs));
        if (node.Key() == selectKey) {
            tree.Select(&node);
            tree.Expand(node);
        }
    }
}

} // namespace

void FillOutlineTree(jet::Recordset& rs, OutlineTree& tree) {
    ignoringErrors([&] { addNodes(rs, tree, {}); });
}

std::vector<OutlineRow> readOutline(jet::Database& db, const QString& table) {
    std::vector<OutlineRow> rows;
    try {
        const auto rs = db.OpenRecordset("Select * from " + table + " order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            rows.push_back(rowAt(*rs));
        }
    } catch (const RunTimeError& failure) {
        if (isOfTheStore(failure)) {
            throw;
        }
    }
    return rows;
}

void addOutline(const std::vector<OutlineRow>& rows, OutlineTree& tree) {
    ignoringErrors([&] {
        for (const OutlineRow& row : rows) {
            if (&row == &rows.front()) {
                addRoot(tree, row);
            } else {
                addNode(tree, row);
            }
        }
    });
}

void updateTree(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey,
                desktop::SplashScreen& splash) {
    ignoringErrors([&] { addNodes(rs, tree, selectKey); });
    splash.unload();
}

void updateTreeView(modMain& state, const QString& key, OutlineTree& tree,
                    desktop::SplashScreen& splash) {
    tree.Clear();
    const auto rs =
        state.gDbUser->OpenRecordset("Select * from " + tableOfKey(key) + " ORDER BY ID ASC");
    updateTree(*rs, tree, {}, splash);
}

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

// As in a fill, a row without its parent in the tree is left out in silence.
void TreeRefill::append(const OutlineRow& row) {
    if (!ignoringErrors([&] { addNode(tree_, row); })) {
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
