#pragma once

#include "outline/OutlineTree.h"
#include "platform/jet/Recordset.h"

#include <QString>

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

// The same; a node other than the root whose key is `selectKey` is selected and expanded. Takes
// the splash down at its end.
void updateTree(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey,
                desktop::SplashScreen& splash);

// Clears the tree and fills it from the table of `key` in Db_UsTemplate.mdb.
// Errors of the store pass through.
void updateTreeView(modMain& state, const QString& key, OutlineTree& tree,
                    desktop::SplashScreen& splash);

} // namespace qvnd::outline
