#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/jet/DBEngine.h"
#include "support/Text.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace qvnd::test {

// The number of the run-time error that the action raises; 0 when it raises none.
template <typename Action>
long errorOf(Action&& action) {
    try {
        action();
    } catch (const RunTimeError& failure) {
        return failure.number();
    }
    return 0;
}

// A store in a folder of its own, gone when the test is over.
class JetStore : public ::testing::Test {
protected:
    QString pathOf(const QString& name) const { return QDir(folder_.path()).filePath(name); }

    std::unique_ptr<jet::Database> create(const QString& name) {
        return workspace_->CreateDatabase(pathOf(name), QString::fromUtf16(jet::dbLangGeneral));
    }
    std::unique_ptr<jet::Database> open(const QString& name) {
        return workspace_->OpenDatabase(pathOf(name));
    }

    // Rows of a query, fields joined by "|", Null as "Null".
    static QStringList rowsOf(jet::Database& database, const QString& query) {
        QStringList rows;
        const auto recordset = database.OpenRecordset(query);
        for (; !recordset->Eof(); recordset->MoveNext()) {
            QStringList row;
            for (const jet::Field& field : recordset->Fields()) {
                const jet::Value value = recordset->Get(field.Name);
                row << (value.IsNull() ? QStringLiteral("Null") : value.ToText());
            }
            rows << row.join(u'|');
        }
        return rows;
    }

    // An outline table: 名称, Key, ID, 是否文档 with its two indexes.
    static jet::TableDef outlineTable(const QString& name) {
        using namespace jet;
        TableDef table(name);
        table.Fields = {TableDef::CreateField(u"名称"_qs, FieldType::Memo),
                        TableDef::CreateField(u"Key"_qs, FieldType::Text, 255),
                        TableDef::CreateField(u"ID"_qs, FieldType::Long),
                        TableDef::CreateField(u"是否文档"_qs, FieldType::Text)};
        for (Field& field : table.Fields) {
            if (field.IsText()) {
                field.AllowZeroLength = true;
                field.DefaultValue = QString();
            } else {
                field.Attributes = dbAutoIncrField;
            }
        }
        table.Indexes = {TableDef::CreateIndex(u"PrimaryKey"_qs, false, true, {u"Key"_qs}),
                         TableDef::CreateIndex(u"ID"_qs, true, true, {u"ID"_qs})};
        return table;
    }

    // A folder row for each key, in order.
    static void addRows(jet::Database& database, const QString& table, const QStringList& keys) {
        const auto rows = database.OpenRecordset(u"Select * from ["_qs + table + u"]"_qs);
        for (const QString& key : keys) {
            rows->AddNew();
            rows->Set(u"Key", key);
            rows->Set(u"名称", key);
            rows->Set(u"是否文档", u"否"_qs);
            rows->Update();
        }
    }

    QTemporaryDir folder_;
    jet::DBEngine engine_;
    jet::Workspace* workspace_ = &engine_.Workspaces(0);
};

} // namespace qvnd::test
