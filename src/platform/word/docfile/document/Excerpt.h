#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qvnd::word {

// The first words at or behind `at`, for a remark to say where something is: at most twelve
// characters of one paragraph or cell, with an ellipsis where it goes on. Empty when there are
// none.
std::u16string wordsFrom(std::u16string_view text, std::size_t at);

// The first words of the paragraph or cell that holds `at`.
std::u16string wordsOfParagraph(std::u16string_view text, std::size_t at);

// "，第一处在“...”", or nothing where there are no words to name.
std::u16string firstPlace(const std::u16string& words);

} // namespace qvnd::word
