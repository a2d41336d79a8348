#include "outline/TreeLoading.h"

#include "outline/OutlineKeys.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"
#include "store/modMain.h"

namespace qvnd::outline {

namespace {

void addRows(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey) {
    if (rs.Eof()) {
        return;
    }
    tree.Add(rs.Get(store::field::key).ToText(), rs.Get(store::field::name).ToText(), image::root,
             image::rootSelected);
    for (rs.MoveNext(); !rs.Eof(); rs.MoveNext()) {
        const QString name = rs.Get(store::field::name).ToText();
        const QString key = rs.Get(store::field::key).ToText();
        const bool isDocument = rs.Get(store::field::isDocument).TextOrEmpty() == u"是";
        OutlineNode& node =
            tree.AddChild(parentKeyOf(key), key, name, isDocument ? image::document : image::folder,
                          isDocument ? image::documentSelected : image::folderSelected);
        if (key == selectKey) {
            tree.Select(&node);
            tree.Expand(node);
        }
    }
}

void fill(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey) {
    try {
        addRows(rs, tree, selectKey);
    } catch (const RunTimeError&) { // NOLINT(bugprone-empty-catch): the fill ends here in silence
    }
}

} // namespace

void FillOutlineTree(jet::Recordset& rs, OutlineTree& tree) { fill(rs, tree, {}); }

void updateTree(jet::Recordset& rs, OutlineTree& tree, const QString& selectKey,
                desktop::SplashScreen& splash) {
    fill(rs, tree, selectKey);
    splash.unload();
}

void updateTreeView(modMain& state, const QString& key, OutlineTree& tree,
                    desktop::SplashScreen& splash) {
    tree.Clear();
    const auto rs =
        state.gDbUser->OpenRecordset("Select * from " + tableOfKey(key) + " ORDER BY ID ASC");
    updateTree(*rs, tree, {}, splash);
}

} // namespace qvnd::outline
