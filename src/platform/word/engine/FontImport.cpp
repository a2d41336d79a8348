#include "platform/word/engine/FontImport.h"

#include "platform/word/engine/Fonts.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool same(const FontEntry& one, const FontEntry& other) {
    return foldedName(one.name) == foldedName(other.name) &&
           isSymbolFont(one) == isSymbolFont(other);
}

} // namespace

std::optional<std::uint16_t> FontImport::font(std::uint16_t ftc) {
    if (ftc >= source_.size()) {
        return std::nullopt;
    }
    if (!known_[ftc]) {
        const FontEntry& wanted = source_[ftc];
        const auto found = std::find_if(target_.begin(), target_.end(),
                                        [&](const FontEntry& font) { return same(font, wanted); });
        known_[ftc] = static_cast<std::uint16_t>(found - target_.begin());
        if (found == target_.end()) {
            target_.push_back(wanted);
        }
    }
    return known_[ftc];
}

} // namespace qvnd::word
