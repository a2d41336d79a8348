#pragma once

#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "outline/Services.h"
#include "outline/TreeLoading.h"
#include "outline/Workbench.h"
#include "platform/files/DiskFileSystem.h"
#include "store/OutlineFolders.h"
#include "store/modMain.h"
#include "support/FakeFileDialogs.h"
#include "support/FakeLongRun.h"
#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/RecordingWord.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace qvnd::test {

class CountingSplash : public desktop::SplashScreen {
public:
    void show() override { up = true; }
    void tell(const QString& text) override { told << text; }
    void unload() override { up = false; }
    bool up = false;
    QStringList told;
};

class CountingEvents : public desktop::Events {
public:
    void doEvents() override {
        ++served;
        if (const auto act = whileServed) {
            act();
        }
    }
    void keepPainted() override { ++painted; }
    std::function<void()> whileServed;
    int served = 0;
    int painted = 0;
};

struct OutlineRowText {
    QString key;
    QString name;
    QString isDocument = QStringLiteral("否");
};

// A started program without windows in a temporary folder: "Sys", the user's plans in "用户模板",
// a real Db_UsTemplate.mdb and Db_Template.mdb.
class OutlineWorld {
public:
    OutlineWorld() {
        folder.makeFolder("Sys/标书模板");
        folder.makeFolder("Sys/Database");
        folder.makeFolder("用户模板");
        log.base = folder.path().toStdString();
        state.AppPath = folder.path();
        state.gAppPath = folder.root();
        state.gSysPath = files::withSeparator(folder.path("Sys"));
        state.gWorkPath = folder.root();
        state.gUserTplPath = files::withSeparator(folder.path("用户模板"));
        state.gWordRoot = files::withSeparator(folder.path("Word"));
        state.gFso = std::make_unique<files::DiskFileSystem>();
        state.gWs = &state.DBEngine.Workspaces(0);
        state.gDbUser = create(state.gUserTplPath + "Db_UsTemplate.mdb");
        for (const char* table : {"遍历表", "当前表"}) {
            state.gDbUser->TableDefs().Append(nameTable(table));
        }
        state.gDbUser->TableDefs().Append(outlineTable("temp"));
        state.gDbTemplate = create(folder.path("Sys/Database/Db_Template.mdb"));
        state.gDbTemplate->TableDefs().Append(nameTable("遍历表"));
    }

    std::unique_ptr<jet::Database> create(const QString& path) {
        return state.gWs->CreateDatabase(path, QString::fromUtf16(jet::dbLangGeneral));
    }

    static jet::TableDef nameTable(const QString& name) {
        jet::TableDef table(name);
        table.Fields = {jet::TableDef::CreateField("名称", jet::FieldType::Memo)};
        return table;
    }

    static jet::TableDef outlineTable(const QString& name) {
        using namespace jet;
        TableDef table(name);
        table.Fields = {TableDef::CreateField("名称", FieldType::Memo),
                        TableDef::CreateField("Key", FieldType::Text, 255),
                        TableDef::CreateField("ID", FieldType::Long),
                        TableDef::CreateField("是否文档", FieldType::Text)};
        for (Field& field : table.Fields) {
            if (field.Type == FieldType::Long) {
                field.Attributes = dbAutoIncrField;
            } else {
                field.AllowZeroLength = true;
                field.DefaultValue = QString("");
            }
        }
        table.Indexes = {TableDef::CreateIndex("PrimaryKey", false, true, {"Key"}),
                         TableDef::CreateIndex("ID", true, true, {"ID"})};
        return table;
    }

    void registerName(jet::Database& db, const QString& name) {
        const auto list = db.OpenRecordset("Select * from 遍历表");
        list->AddNew();
        list->Set(u"名称", name);
        list->Update();
    }

    static void add(jet::Recordset& rs, const OutlineRowText& row) {
        rs.AddNew();
        rs.Set(u"名称", row.name);
        rs.Set(u"key", row.key);
        rs.Set(u"是否文档", row.isDocument);
        rs.Update();
    }

    static void makeTable(jet::Database& db, const QString& name,
                          const std::vector<OutlineRowText>& rows) {
        db.TableDefs().Append(outlineTable(name));
        const auto table = db.OpenRecordset("Select * from [" + name + "]");
        for (const auto& row : rows) {
            add(*table, row);
        }
    }

    // A plan with its folder, its registration and its table in both databases. The rows come as
    // given, the first is the root.
    void makePlan(const QString& plan, const std::vector<OutlineRowText>& rows) {
        makeTable(*state.gDbUser, plan, rows);
        folder.makeFolder("用户模板/" + plan);
        makeTable(*create(store::planDatabasePath(state, plan)), plan, rows);
        registerName(*state.gDbUser, plan);
    }

    // Folder rows with these keys; one with "d" behind it is a document's ("T.2d"). A row's name
    // is 名 with its key.
    void makePlan(const QStringList& keys) {
        std::vector<OutlineRowText> rows;
        for (QString key : keys) {
            const bool isDocument = key.endsWith(u'd');
            key.chop(isDocument ? 1 : 0);
            rows.push_back({key, "名" + key, isDocument ? "是" : "否"});
        }
        makePlan(keys.front(), rows);
    }

    // Fills TrvCurrent from the plan's table and selects the node.
    void openPlan(const QString& plan, const QString& selectedKey = {}) {
        const auto rs =
            state.gDbUser->OpenRecordset("Select * from [" + plan + "] order by ID asc");
        workbench.TrvCurrent.Clear();
        outline::FillOutlineTree(*rs, workbench.TrvCurrent);
        if (!selectedKey.isEmpty()) {
            workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(selectedKey));
        }
    }

    // One field of every row of a table, in ID order.
    static QStringList column(jet::Database& db, const QString& table, QStringView field) {
        QStringList values;
        const auto rs = db.OpenRecordset("Select * from [" + table + "] order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            values << rs->Get(field).TextOrEmpty();
        }
        return values;
    }
    QStringList keys(const QString& table) { return column(*state.gDbUser, table, u"Key"); }
    QStringList ids(const QString& table) { return column(*state.gDbUser, table, u"ID"); }
    // Of the plan's own database.
    QStringList copiedKeys(const QString& plan, QStringView field = u"Key") {
        return column(*state.gWs->OpenDatabase(store::planDatabasePath(state, plan)), plan, field);
    }
    // The names that a table without an ID holds.
    QStringList registered(jet::Database& db, const QString& table = "遍历表") {
        QStringList names;
        for (const auto rs = db.OpenRecordset("Select * from " + table); !rs->Eof();
             rs->MoveNext()) {
            names << rs->Get(u"名称").TextOrEmpty();
        }
        return names;
    }

    // Uses up numbers, so that the next row of the table gets `next`.
    void setNextId(const QString& table, int next) {
        const auto rs = state.gDbUser->OpenRecordset("Select * from [" + table + "]");
        for (int id = ids(table).back().toInt() + 1; id < next; ++id) {
            add(*rs, {"used" + QString::number(id), "", "否"});
        }
        state.gDbUser->Execute("Delete * from [" + table + "] where Key like 'used*'");
    }

    // The keys of a tree from top to bottom.
    static QStringList shown(const outline::OutlineTree& tree) {
        QStringList found;
        std::vector<const outline::OutlineNode*> pending(tree.topLevel().rbegin(),
                                                         tree.topLevel().rend());
        while (!pending.empty()) {
            const outline::OutlineNode* node = pending.back();
            pending.pop_back();
            found << node->Key();
            pending.insert(pending.end(), node->childList().rbegin(), node->childList().rend());
        }
        return found;
    }

    QString selectedKey() const {
        const auto* node = workbench.TrvCurrent.SelectedItem();
        return node ? node->Key() : QString();
    }

    outline::Services services() { return {messages, splash, dialogs, events, word, longRun}; }

    TemporaryFolder folder;
    modMain state;
    outline::Workbench workbench;
    FakeMessageBoxes messages;
    CountingSplash splash;
    FakeFileDialogs dialogs;
    CountingEvents events;
    CallLog log;
    RecordingApplicationFactory word{log};
    FakeLongRun longRun;
};

} // namespace qvnd::test
