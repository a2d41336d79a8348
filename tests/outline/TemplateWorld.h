#pragma once

#include "outline/LibraryTree.h"
#include "store/OutlineFolders.h"
#include "support/FakePreview.h"
#include "support/OutlineWorld.h"

namespace qvnd::test {

// A program with templates: each a table in Db_Template.mdb, a row in 遍历表, a folder with a
// database of its own and a file for each document.
class TemplateWorld : public OutlineWorld {
public:
    // Rows as OutlineWorld::makePlan takes them: "T.2d" is a document.
    void makeTemplate(const QStringList& keys) {
        const QString& name = keys.front();
        const auto rows = rowsOf(keys);
        makeTable(*state.gDbTemplate, name, rows);
        folder.makeFolder("Sys/标书模板/" + name);
        makeTable(*create(store::templateDatabasePath(state, name)), name, rows);
        for (const auto& row : rows) {
            if (row.isDocument == u"是") {
                folder.write(templateFile(row.key), "template " + row.key.toUtf8());
            }
        }
        registerName(*state.gDbTemplate, name);
    }

    static std::vector<OutlineRowText> rowsOf(const QStringList& keys) {
        std::vector<OutlineRowText> rows;
        for (QString key : keys) {
            const bool isDocument = key.endsWith(u'd');
            key.chop(isDocument ? 1 : 0);
            const bool isRoot = !key.contains(u'.');
            rows.push_back({key, isRoot ? key : "名" + key, isDocument ? "是" : "否"});
        }
        return rows;
    }

    static QString templateFile(const QString& key) {
        return "Sys/标书模板/" + outline::tableOfKey(key) + "/" + key + ".doc";
    }

    void listTemplates() {
        outline::updateTreeTemplate(state, *state.gDbTemplate, workbench.TrvTemplate, false,
                                    messages, splash);
    }
    void selectTemplate(const QString& key) {
        workbench.TrvTemplate.Select(&workbench.TrvTemplate.Item(key));
    }

    QStringList templateKeys(const QString& name) {
        return column(*state.gDbTemplate, name, u"Key");
    }
    QStringList templateCopyKeys(const QString& name) {
        return column(*state.gWs->OpenDatabase(store::templateDatabasePath(state, name)), name,
                      u"Key");
    }
    bool hasTable(const QString& name) { return state.gDbTemplate->TableDefs().Contains(name); }

    FakePreview preview;
};

} // namespace qvnd::test
