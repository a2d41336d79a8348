#pragma once

#include "platform/jet/Value.h"
#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

// Equality of texts without case, where the file itself knows the case of ASCII letters alone: its
// columns have SQLite's own collation and its indexes NOCASE, so that every SQLite tool can use it.
namespace qvnd::jet {

// The condition that the column holds `text`, whatever the case of its letters, with its parameters
// added to `parameters`. An index answers it, except for a text with very many spellings.
QByteArray sameTextSql(const QByteArray& column, const QString& text,
                       std::vector<Value>& parameters);

// Error 3022 when another row has the texts of `row` in a unique index of the table, but in letters
// beyond ASCII of another case. SQLite takes such texts for different; those that it takes for the
// same, it refuses itself. `row` has a value for each field, of which those of unique indexes are
// read; `self` is the row that it is about to replace, if any.
void refuseSameTexts(Connection& connection, const StoredTable& table,
                     const std::vector<Value>& row,
                     std::optional<std::int64_t> self = std::nullopt);

} // namespace qvnd::jet
