#pragma once

#include "platform/jet/file/Catalogue.h"

namespace qvnd::jet {

// Refuses what no table can be: errors 3125, 3191, 3264 and 3409, see TableDefs::Append.
void checkDefinition(const TableDef& definition);

// Makes the SQLite table, or its indexes. Its text columns keep SQLite's own order; unique indexes
// on texts ignore the case of ASCII letters, and refuseSameTexts sees to the others.
void makeRows(Connection& connection, const StoredTable& table);
void makeIndexes(Connection& connection, const StoredTable& table);

// Makes the table with its columns and indexes and enters it in the catalogue's tables of the
// file. Gives it its Id.
void createTable(Connection& connection, StoredTable& table);

} // namespace qvnd::jet
