#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/Value.h"

namespace qvnd::jet {

// The value as the field keeps it. Null stays Null; numbers are rounded and narrowed, texts become
// numbers and dates. Errors 3421, 3315 and 3163, see Recordset::Set.
Value convertedFor(const Field& field, const Value& value);

// What a new row has in the field before anything is set: its default, else Null.
Value defaultOf(const Field& field);

} // namespace qvnd::jet
