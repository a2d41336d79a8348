#include "format/SettingsRows.h"

#include "platform/files/Trim.h"
#include "store/Names.h"

namespace qvnd::format {

QString yesNo(const CheckBox& box) { return (box.checked() ? store::yes : store::no).toString(); }

QString stored(const TextBox& box) { return files::Trim(box.text()); }

QString stored(const ComboBox& box) { return files::Trim(box.text()); }

void showPosition(const QString& word, const PositionOptions& options) {
    if (word == u"中") {
        options.middle.select();
    } else if (word == u"左") {
        options.left.select();
    } else if (word == u"右") {
        options.right.select();
    }
}

void setPosition(jet::Recordset& row, QStringView field, const PositionOptions& options) {
    if (options.left.value()) {
        row.Set(field, u"左");
    } else if (options.middle.value()) {
        row.Set(field, u"中");
    } else if (options.right.value()) {
        row.Set(field, u"右");
    }
}

bool isYes(const jet::Recordset& row, QStringView field) {
    return textOf(row, field) == store::yes;
}

QString textOf(const jet::Recordset& row, QStringView field) {
    return row.Get(field).TextOrEmpty();
}

bool holdsText(const jet::Recordset& row, QStringView field) {
    return !files::Trim(textOf(row, field)).isEmpty();
}

void loadRow(jet::Database& database, const QString& query, const UseRow& show,
             const std::function<void()>& fallBack) {
    std::unique_ptr<jet::Recordset> row;
    ignoringErrors([&] { row = database.OpenRecordset(query); });
    if (row && row->Eof()) {
        fallBack();
    } else if (row) {
        show(*row);
    }
}

void writeRow(jet::Database& database, const QString& query, const UseRow& edit,
              const UseRow& create) {
    const auto rows = database.OpenRecordset(query);
    if (rows->Eof()) {
        rows->AddNew();
        create(*rows);
    } else {
        rows->Edit();
        edit(*rows);
    }
    rows->Update();
}

} // namespace qvnd::format
