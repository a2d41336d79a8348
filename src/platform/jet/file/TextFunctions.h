#pragma once

struct sqlite3;

namespace qvnd::jet {

// Gives a connection the collation JET (text without case) and the functions jet_like(text,
// pattern) and jet_instr(text, part), which answer Null when an argument is Null.
void registerTextFunctions(sqlite3* connection);

} // namespace qvnd::jet
