#pragma once

#include "outline/OutlineRows.h"
#include "outline/OutlineTree.h"

namespace qvnd::desktop {
class SplashScreen;
}

namespace qvnd::outline {

// Refills a tree from an outline table again and again within one command that adds rows to the
// table's end. The first refill reads the table; a later one leaves the tree as a reading would,
// at the cost of the rows that came: it is not read again while the tree shows all of it.
//
// After each refill every node is collapsed and none selected, but the one of `selectKey`, which
// is selected and expanded unless it is the root.
class TreeRefill {
public:
    TreeRefill(jet::Database& db, OutlineTree& tree, desktop::SplashScreen& splash)
        : db_(db), tree_(tree), splash_(splash) {}

    // `added` is the one row that came since the last refill, null when none did. Errors of the
    // store pass through, before the tree is touched.
    void refill(const QString& table, const OutlineRow* added, const QString& selectKey);
    // Rows may have come that no refill was told of: the next one reads the table.
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
