#pragma once

#include "outline/OutlineRows.h"
#include "outline/OutlineTree.h"
#include "platform/jet/Recordset.h"

#include <QString>

#include <vector>

namespace qvnd {

struct modMain;

namespace desktop {
class SplashScreen;
}

} // namespace qvnd

namespace qvnd::outline {

// The routines that turn an outline table into a tree. The first row is the root, whatever its
// kind; every further row becomes the last child of its parent key, a document when 是否文档 is
// exactly "是". An error (a row whose parent is missing, a key twice) ends the fill silently at
// that row: the rows before it stay in the tree, and the table is not changed.

// Adds every row from the current one on. The tree is not cleared and nothing is selected.
void FillOutlineTree(jet::Recordset& rs, OutlineTree& tree);

// The rows of the table as such a fill reads them, in the order of their IDs: up to the first one
// that is no outline's, none when there is no such table. `table` is the name as it stands in a
// statement, bare or in brackets. Errors that say that the store could not
// be read (busy, closed, damaged, no access) pass, so that what is missing is never taken for gone.
std::vector<OutlineRow> readOutline(jet::Database& db, const QString& table);
// Adds rows that have been read already, as FillOutlineTree does.
void addOutline(const std::vector<OutlineRow>& rows, OutlineTree& tree);

// The same; a node other than the root whose key is `selectKey` is selected and expanded. Takes
// the splash down at its end.
void updateTree(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey,
                desktop::SplashScreen& splash);

// Clears the tree and fills it from the table of `key` in Db_UsTemplate.mdb.
// Errors of the store pass through.
void updateTreeView(modMain& state, const QString& key, OutlineTree& tree,
                    desktop::SplashScreen& splash);

// updateTree again and again, within one command that adds rows to the table's end. The first
// refill reads the table. A later one costs only the rows that were added since, as long as the
// tree shows the whole table, and leaves the tree as reading the table would.
//
// After each refill every node is collapsed and none selected, but the one of `selectKey`, which
// is selected and expanded unless it is the root.
class TreeRefill {
public:
    TreeRefill(jet::Database& db, OutlineTree& tree, desktop::SplashScreen& splash)
        : db_(db), tree_(tree), splash_(splash) {}

    // `added` is the one row that was added since the last refill, null when none was. Errors of
    // the store pass through, before the tree is touched.
    void refill(const QString& table, const OutlineRow* added, const QString& selectKey);
    // Makes the next refill read the table: for when rows may have been added that no refill was
    // told of.
    void forget() { shown_.clear(); }

private:
    void read(const QString& table, const QString& selectKey);
    void append(const OutlineRow& row);
    void select(const QString& selectKey);

    jet::Database& db_;
    OutlineTree& tree_;
    desktop::SplashScreen& splash_;
    // The table that the tree shows to its last row; empty when there is none.
    QString shown_;
};

} // namespace qvnd::outline
