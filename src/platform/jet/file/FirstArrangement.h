#pragma once

#include "platform/jet/file/Connection.h"

namespace qvnd::jet {

// Brings a file of the first arrangement (user_version 1) over to the present one; any other file
// is left alone. In the first arrangement the table with the number 7 in jet_tables was "t7", its
// columns "f0", "f1" and so on by position with the collation JET, "rid" the row's number, and
// "t7_0" its first index. The catalogue's tables were as they are now.
//
// A row may have lacked its automatic number there. All rows of such a table get new numbers, in
// the order in which "ORDER BY" that number gave them.
//
// One transaction: a killed process leaves the file as it was, and the next opening does it again.
// Errors of the store.
void bringOverFirstArrangement(Connection& connection);

} // namespace qvnd::jet
