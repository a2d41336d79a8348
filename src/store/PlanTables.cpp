#include "store/PlanTables.h"

#include "store/Names.h"

namespace qvnd::store {

using jet::Field;
using jet::FieldType;
using jet::TableDef;

namespace {

Field plain(QStringView name, FieldType type, int size = 0) {
    return TableDef::CreateField(name.toString(), type, size);
}

// A text that may be empty, and is when nothing is set.
Field emptyText(QStringView name, FieldType type, int size = 0) {
    Field text = plain(name, type, size);
    text.AllowZeroLength = true;
    text.DefaultValue = QStringLiteral("");
    return text;
}

Field rowNumber() {
    Field number = plain(field::id, FieldType::Long);
    number.Attributes = jet::dbAutoIncrField;
    return number;
}

TableDef singleMemo(QStringView name, QStringView memo) {
    TableDef table(name.toString());
    table.Fields = {plain(memo, FieldType::Memo)};
    return table;
}

} // namespace

TableDef nameTable(QStringView name) { return singleMemo(name, field::name); }

TableDef bidDocumentsTable() { return singleMemo(table::bidDocuments, field::location); }

TableDef outlineTable(const QString& name) {
    TableDef outline(name);
    outline.Fields = {
        emptyText(field::name, FieldType::Memo),
        emptyText(field::key, FieldType::Text, 255),
        rowNumber(),
        emptyText(field::isDocument, FieldType::Text),
    };
    outline.Indexes = {
        TableDef::CreateIndex(QStringLiteral("PrimaryKey"), false, true, {field::key.toString()}),
        TableDef::CreateIndex(QStringLiteral("ID"), true, true, {field::id.toString()}),
    };
    return outline;
}

TableDef informationTable(const QString& plan) {
    TableDef information(informationTableOf(plan));
    information.Fields = {
        emptyText(field::client, FieldType::Text, 100),
        emptyText(field::contractor, FieldType::Text, 100),
        emptyText(field::author, FieldType::Text, 100),
        emptyText(field::approver, FieldType::Text, 100),
        plain(field::planDate, FieldType::Date),
        emptyText(field::note, FieldType::Memo),
    };
    return information;
}

} // namespace qvnd::store
