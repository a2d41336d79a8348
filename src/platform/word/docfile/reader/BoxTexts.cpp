#include "platform/word/docfile/reader/BoxTexts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace qvnd::word {

BoxTexts::BoxTexts(std::vector<BoxText> texts, Bring bring)
    : texts_(std::move(texts)), bring_(std::move(bring)), known_(texts_.size()) {
    constexpr std::size_t mostRows = 0xFFFF; // a shape names its text with 16 bits
    for (std::size_t i = std::min(texts_.size(), mostRows); i-- > 0;) {
        if (texts_[i].length > 0) {
            rows_[texts_[i].shape] = static_cast<std::uint16_t>(i + 1);
        }
    }
}

std::optional<std::uint32_t> BoxTexts::index(std::uint16_t row) {
    if (row == 0 || row > texts_.size() || texts_[row - 1U].length == 0) {
        return std::nullopt;
    }
    std::optional<std::uint32_t>& known = known_[row - 1U];
    known = known ? known : bring_(texts_[row - 1U]);
    return known;
}

std::uint16_t BoxTexts::rowOf(std::uint32_t shape) const {
    const auto found = rows_.find(shape);
    return found != rows_.end() ? found->second : std::uint16_t{0};
}

} // namespace qvnd::word
