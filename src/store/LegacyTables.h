#pragma once

#include "platform/jet/Database.h"
#include "platform/jet/legacy/LegacyDatabase.h"

namespace qvnd::store {

// Makes the table `definition` in `database` with the rows of a table of an older installation.
// Fields meet by their names; one that the old table lacks gets its default, one that only the old
// table has stays behind.
//
// The definition is changed where the rows do not fit it: a text field is made as wide as its
// longest text, and a unique index that the rows do not allow is left out. A value that the field's
// type cannot take, such as a date kept as some text, becomes Null.
//
// An automatic number keeps the old numbers and the rows come in their order; if one is missing or
// given twice, all are made anew, 1 and up, in the order of the file.
//
// Errors are those of the store.
void bringIn(jet::Database& database, const jet::TableDef& definition,
             const jet::legacy::LegacyTable& old);

} // namespace qvnd::store
