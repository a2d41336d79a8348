#pragma once

#include "format/frmBidSet.h"
#include "platform/files/DiskFileSystem.h"
#include "store/DatabaseCreation.h"
#include "store/PlanTables.h"
#include "support/FakeFileDialogs.h"
#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"
#include "support/FakeMessageBoxes.h"
#include "support/FakeShell.h"
#include "support/Files.h"
#include "support/RecordingWord.h"
#include "support/Text.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace qvnd::test {

// A started program without windows whose settings are those of a first installation, in real
// databases of a temporary folder, and its format dialog.
class FormatWorld {
public:
    FormatWorld() {
        for (const char* below : {"Sys/Database", "Sys/图片库", "Sys/自定义", "用户模板"}) {
            folder.makeFolder(below);
        }
        log.base = folder.path().toStdString();
        state.AppPath = folder.path();
        state.gAppPath = folder.root();
        state.gSysPath = files::withSeparator(folder.path("Sys"));
        state.gWorkPath = folder.root();
        state.gUserTplPath = files::withSeparator(folder.path("用户模板"));
        state.gFso = std::make_unique<files::DiskFileSystem>();
        state.gWs = &state.DBEngine.Workspaces(0);
        store::CreateUserDb(state, state.gUserTplPath + "Db_UsTemplate.mdb");
        store::CreateBidSetDb(state, folder.path("Sys/Database/Db_BidSet.mdb"), QDate(2026, 5, 1));
    }

    jet::Database& settings() { return *state.gDbBidSet; }
    // The dialog's controls; loads it at the first call.
    format::BidSetForm& form() { return dialog.form(); }

    // The row number `row`, counted from 0, of a table; the field's text, "Null" for Null.
    QString value(const QString& table, QStringView field, int row = 0) {
        const auto rows = settings().OpenRecordset("Select * from [" + table + "]");
        for (; row > 0; --row) {
            rows->MoveNext();
        }
        const jet::Value held = rows->Get(field);
        return held.IsNull() ? QStringLiteral("Null") : held.ToText();
    }
    int rowCount(const QString& table) {
        const auto rows = settings().OpenRecordset("Select * from [" + table + "]");
        if (!rows->Eof()) {
            rows->MoveLast();
        }
        return rows->RecordCount();
    }
    // Every field of every row but ID, as "field=text" joined by blanks, a line to a row.
    QString dump(const QString& table) {
        QStringList lines;
        const auto rows = settings().OpenRecordset("Select * from [" + table + "]");
        for (; !rows->Eof(); rows->MoveNext()) {
            QStringList fields;
            for (const jet::Field& field : rows->Fields()) {
                if (field.Name != QLatin1String("ID")) {
                    const jet::Value held = rows->Get(field.Name);
                    fields << field.Name + '=' + (held.IsNull() ? "Null" : held.ToText());
                }
            }
            lines << fields.join(' ');
        }
        return lines.join('\n');
    }
    // The four tables that the dialog writes, for comparing before and after.
    QString dumpWorkingTables() {
        return dump("章节设置表") + '\n' + dump("页眉页脚表") + '\n' + dump("页面设置表") + '\n' +
               dump("封面表");
    }
    void change(const QString& table, QStringView field, const jet::Value& value,
                const QString& where = {}) {
        const auto rows = settings().OpenRecordset("Select * from [" + table + "]" +
                                                   (where.isEmpty() ? "" : " where " + where));
        rows->Edit();
        rows->Set(field, value);
        rows->Update();
    }
    void empty(const QString& table) { settings().Execute("Delete * from [" + table + "]"); }
    void drop(const QString& table) { settings().TableDefs().Delete(table); }

    // Makes it the open plan, with its information.
    void openPlan(const QString& name, const QString& contractor) {
        add(*state.gDbUser, "当前表", {{"名称", name}});
        state.gDbUser->TableDefs().Append(store::informationTable(name));
        add(*state.gDbUser, name + "Org", {{"施工单位", contractor}});
    }
    static void add(jet::Database& database, const QString& table,
                    const std::vector<std::pair<QString, QString>>& fields) {
        const auto rows = database.OpenRecordset("Select * from [" + table + "]");
        rows->AddNew();
        for (const auto& [field, text] : fields) {
            rows->Set(field, text);
        }
        rows->Update();
    }

    QString lastMessage() const {
        return messages.shown.empty() ? QString() : messages.shown.back().text;
    }

    TemporaryFolder folder;
    modMain state;
    FakeMessageBoxes messages;
    FakeInputBoxes inputs;
    FakeFileDialogs dialogs;
    FakeFonts fonts;
    FakeShell shell;
    CallLog log;
    RecordingApplicationFactory word{log};
    format::frmBidSet dialog{state, {messages, inputs, dialogs, fonts, shell, word}};
};

} // namespace qvnd::test
