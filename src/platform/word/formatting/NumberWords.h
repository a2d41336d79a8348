#pragma once

#include <optional>
#include <string>

namespace qvnd::word {

// A number in English words: Twenty-one, Twenty-first. Nothing for one below 0 or from a million
// on.
std::optional<std::u16string> cardinalWords(int number);
std::optional<std::u16string> ordinalWords(int number);

} // namespace qvnd::word
