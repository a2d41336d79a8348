#include "tools/OutlineText.h"

#include "outline/OutlineKeys.h"
#include "store/Names.h"

#include <QJsonObject>

namespace qvnd::tools {

QJsonArray rowsAsJson(jet::Recordset& rs) {
    QJsonArray json;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString key = rs.Get(store::field::key).TextOrEmpty();
        json << QJsonObject{{"ID", rs.Get(store::field::id).ToLong()},
                            {"Key", key},
                            {"名称", rs.Get(store::field::name).TextOrEmpty()},
                            {"是否文档", rs.Get(store::field::isDocument).TextOrEmpty()},
                            {"depth", outline::depthOfKey(key)}};
    }
    return json;
}

QString treeAsText(const outline::OutlineTree& tree) {
    QStringList lines;
    std::vector<const outline::OutlineNode*> pending(tree.topLevel().rbegin(),
                                                     tree.topLevel().rend());
    while (!pending.empty()) {
        const outline::OutlineNode& node = *pending.back();
        pending.pop_back();
        lines << QString(2 * outline::depthOfKey(node.Key()), ' ') + node.Text() + "  [" +
                     node.Key() + (node.Image() == outline::image::document ? "]  文档" : "]");
        pending.insert(pending.end(), node.childList().rbegin(), node.childList().rend());
    }
    return lines.join('\n');
}

} // namespace qvnd::tools
