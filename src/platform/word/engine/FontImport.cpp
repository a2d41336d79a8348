#include "platform/word/engine/FontImport.h"

#include "platform/word/engine/Fonts.h"
#include "platform/word/formatting/NameFolding.h"

namespace qvnd::word {

namespace {

constexpr std::size_t mostFonts = 0x7FFF; // an index of a font has no sign to spare

} // namespace

FontImport::Key FontImport::keyOf(const FontEntry& font) {
    return {foldedName(font.name), isSymbolFont(font)};
}

std::optional<std::uint16_t> FontImport::font(std::uint16_t ftc) {
    if (ftc >= source_.size() || withoutRoom_.contains(ftc)) {
        return std::nullopt;
    }
    if (!known_[ftc]) {
        known_[ftc] = placeOf(source_[ftc]);
        if (!known_[ftc]) {
            withoutRoom_.insert(ftc);
        }
    }
    return known_[ftc];
}

// Of equal fonts of the target the first counts.
std::optional<std::uint16_t> FontImport::placeOf(const FontEntry& font) {
    for (; indexed_ < target_.size(); ++indexed_) {
        places_.try_emplace(keyOf(target_[indexed_]), static_cast<std::uint16_t>(indexed_));
    }
    const Key key = keyOf(font);
    if (const auto found = places_.find(key); found != places_.end()) {
        return found->second;
    }
    if (target_.size() >= mostFonts) {
        return std::nullopt;
    }
    target_.push_back(font);
    return static_cast<std::uint16_t>(target_.size() - 1);
}

} // namespace qvnd::word
