#pragma once

#include "platform/jet/Database.h"
#include "platform/word/model/Format.h"

#include <QString>

#include <memory>
#include <optional>

namespace qvnd::generate {

// The first row of a settings table, read field by field. Each read may raise what a read of a
// recordset raises: 91 when the table could not be opened, 3021 when it has no row, 3265 for a
// field that it does not have, 94 for Null where a text or number is wanted, 13 for a text that
// is no number.
class SettingsRow {
public:
    SettingsRow() = default;
    // Opens a query; 3078 when there is no such table.
    SettingsRow(jet::Database& database, const QString& query);

    bool opened() const { return rows_ != nullptr; }
    bool hasRow() const { return opened() && !rows_->Eof(); }

    jet::Value value(QStringView field) const;
    QString text(QStringView field) const;
    float single(QStringView field) const { return value(field).ToSingle(); }
    double number(QStringView field) const { return value(field).ToDouble(); }
    int whole(QStringView field) const { return value(field).ToLong(); }
    // The size name or number in points.
    float fontSize(QStringView field) const;
    // False for Null, as a comparison with Null is.
    bool equals(QStringView field, QStringView text) const;

private:
    std::unique_ptr<jet::Recordset> rows_;
};

// What a 位置 field says: "左", "中" or "右"; nothing for any other text.
std::optional<word::Alignment> alignmentOf(QStringView position);

} // namespace qvnd::generate
