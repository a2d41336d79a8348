#pragma once

#include <QString>

namespace qvnd::outline {

// The text between apostrophes, as a value of a statement. Apostrophes in values are not doubled
// anywhere, so a text that holds one does not make a statement, or makes one that means other rows:
// error 3075 in both cases.
QString quoted(const QString& text);

// "Select * from <table> Where Key='<key>'", the table's name bare; error 3075 as in
// bareName and quoted.
QString rowQuery(const QString& table, const QString& key);

} // namespace qvnd::outline
