#pragma once

#include "platform/jet/dialect/Syntax.h"
#include "platform/jet/file/StoreFile.h"

namespace qvnd::jet {

// The definition that SELECT INTO gives the table it makes: the fields asked for with type, size,
// attributes, permission of empty text and default, and no index. Error 3061 for an unknown field.
TableDef definitionOf(const Query& query, const StoredTable& source, const QString& name);

// Appends the rows of the query to a table, of the same file or another, field by field of the
// same name; numbers of an auto-increment field are copied, and the field goes on behind the
// highest. Fields that the query lacks take their defaults.
//
// The caller holds a WriteScope on `targetFile`. Errors: 3061, 3127 a field that the target lacks,
// 3022, 3421, 3315, 3163.
void copyRows(StoreFile& sourceFile, const Query& query, StoreFile& targetFile,
              std::int64_t targetTable);

} // namespace qvnd::jet
