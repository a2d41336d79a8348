#pragma once

#include "platform/jet/Database.h"

#include <QString>

namespace qvnd::format {

// The checks of the dialog's controls, by the field that a control sets: a flag is "是" or "否", a
// position one of its words, a length within its range, a size, level, leader or sample an entry of
// its list. A field that no control sets takes what its type takes.

// Why the value is refused; empty when it is taken.
QString problemOf(const QString& table, const QString& field, const QString& value);

// Sets a field of the row in hand, which AddNew or Edit has opened, to a value that was found
// sound, without the blanks at its ends. 中缀 takes 序号标志 along. Errors of the store pass: 3265
// for an unknown field, 3421 for a value of another type.
void setField(jet::Recordset& row, const QString& table, const QString& field,
              const QString& value);

} // namespace qvnd::format
