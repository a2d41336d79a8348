#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/BuiltInStyles.h"

namespace qvnd::word {

// The place of a built-in style in the style sheet. One that is missing is entered as the normal
// template defines it: headings bold, with their outline level and kept with the next paragraph;
// contents indented by 420 twips a level; header and footer in 9 pt.
StyleIndex requireStyle(DocumentTables& tables, std::uint16_t number);

} // namespace qvnd::word
