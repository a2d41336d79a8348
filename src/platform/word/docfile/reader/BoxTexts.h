#pragma once

#include "platform/word/docfile/pictures/TextBoxes.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// The texts of a table of text boxes. A shape that shows one brings it into the document.
class BoxTexts {
public:
    // Answers the place of the text among those of the document.
    using Bring = std::function<std::uint32_t(const BoxText&)>;

    BoxTexts(std::vector<BoxText> texts, Bring bring);

    // The place of the text in that row, counted from 1; nothing where there is none.
    std::optional<std::uint32_t> index(std::uint16_t row);
    // The first row that belongs to the shape; 0 where there is none.
    std::uint16_t rowOf(std::uint32_t shape) const;

private:
    std::vector<BoxText> texts_;
    Bring bring_;
    std::vector<std::optional<std::uint32_t>> known_;       // by row
    std::unordered_map<std::uint32_t, std::uint16_t> rows_; // by shape
};

} // namespace qvnd::word
