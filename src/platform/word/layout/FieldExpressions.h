#pragma once

#include <optional>
#include <string>
#include <string_view>

// What fields show that reckon or ask, once the fields within their instructions have their
// results. Nothing for an instruction that is not understood.
namespace qvnd::layout {

// = 2 * (3 + 1) \# "00": the four operations, INT and MOD, a picture of digits, a number form.
std::optional<std::u16string> formulaShown(std::u16string_view instruction);

// IF 1 <> 2 "one text" "the other".
std::optional<std::u16string> conditionShown(std::u16string_view instruction);

} // namespace qvnd::layout
