#include "platform/word/docfile/writer/OverlongRuns.h"

#include <algorithm>
#include <iterator>

namespace qvnd::word {

std::uint16_t OverlongRuns::modifierOf(ByteView rest) {
    constexpr std::size_t most = 0x8000; // Prm1 has 15 bits
    const auto [known, isNew] = known_.try_emplace(Bytes(rest.begin(), rest.end()));
    if (isNew && modifiers_.size() < most) {
        known->second = static_cast<std::uint16_t>((modifiers_.size() << 1) | 1);
        modifiers_.push_back(known->first);
    }
    return known->second;
}

void OverlongRuns::add(std::uint32_t fc, std::uint32_t limitFc, std::uint16_t modifier) {
    runs_[fc] = {limitFc, modifier};
}

std::vector<Piece> OverlongRuns::modified(const std::vector<Piece>& pieces) const {
    if (runs_.empty()) {
        return pieces;
    }
    std::vector<Piece> result;
    for (Piece left : pieces) {
        while (left.length > 0) {
            const auto next = runs_.upper_bound(left.fc);
            const auto run = next == runs_.begin() ? runs_.end() : std::prev(next);
            const bool inside = run != runs_.end() && run->second.limitFc > left.fc;
            std::uint64_t limit = left.limitFc();
            if (inside) {
                limit = std::min<std::uint64_t>(limit, run->second.limitFc);
            } else if (next != runs_.end()) {
                limit = std::min<std::uint64_t>(limit, next->first);
            }
            Piece part = left;
            part.length = static_cast<Cp>((limit - left.fc) / 2);
            part.modifier = inside ? run->second.modifier : std::uint16_t{0};
            result.push_back(part);
            left.fc = static_cast<std::uint32_t>(limit);
            left.length -= part.length;
        }
    }
    return result;
}

} // namespace qvnd::word
