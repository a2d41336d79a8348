#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"

#include <functional>
#include <string>
#include <string_view>

namespace qvnd::word {

// Makes a style sheet as other programs write it one that the format allows: every style has a
// name of its own, bases are of the style's kind and run in no circle, next and linked styles
// exist, and no alias is the name or an alias of another style. A paragraph style based on one of
// characters gets the standard style as its base, as word processors have it. A base given up is
// named in `remarks`, since the look may change.
void repairStyleSheet(StyleSheet& sheet, Remarks& remarks);

// Gives the styles of fixed places their numbers, and leaves every other number to the first style
// that has it; the others count as the user's own. Only a sheet that is written as it came needs
// it: an imported style goes by its number first.
void repairStyleNumbers(StyleSheet& sheet);

// Of aliases, joined by ",", those that `isFree` says may stand; asked in their order.
std::u16string aliasesThat(std::u16string_view aliases,
                           const std::function<bool(const std::u16string&)>& isFree);

} // namespace qvnd::word
