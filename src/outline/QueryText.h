#pragma once

#include <QString>

// How names and values stand in the statements of the outline commands. A name or value that would
// make a statement mean something else raises an error that tells it in plain words.
namespace qvnd::outline {

// A table's name without brackets. Error 3075 for a name that needs them: its first word could be
// taken for another table, with the second as that table's alias.
const QString& bareName(const QString& table);

// A table's name in brackets. Error 3125 for a name with a bracket in it.
QString bracketedName(const QString& table);

// A text between apostrophes, as a value. Error 3075 for a text with an apostrophe in it, as
// apostrophes are not doubled.
QString quoted(const QString& text);

// "Delete * from <list> where 名称='<name>'", for a list of names (store::table). Error 3075 as in
// quoted.
QString deletionFrom(QStringView list, const QString& name);

// " where Key like '<key>*'": the rows of a node and of all below it, by the characters that their
// keys begin with. A text that is no key of the table may be a pattern that takes others along: it
// stands for its own row alone, " where Key='<key>'". Error 3075 as in quoted.
QString subtreeCondition(const QString& table, const QString& key);

// "Select * from <table> Where Key='<key>'"; errors as in bareName and quoted.
QString rowQuery(const QString& table, const QString& key);

} // namespace qvnd::outline
