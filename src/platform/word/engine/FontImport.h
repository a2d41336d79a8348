#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qvnd::word {

// Finds the fonts of one document in the font table of another. A font is its name (without
// regard to case) and whether it is a symbol font; one that the target lacks comes along when it
// is first asked for.
class FontImport {
public:
    FontImport(std::vector<FontEntry>& target, const std::vector<FontEntry>& source)
        : target_(target), source_(source), known_(source.size()) {}

    // Nothing when the source has no such font.
    std::optional<std::uint16_t> font(std::uint16_t ftc);

private:
    std::vector<FontEntry>& target_;
    const std::vector<FontEntry>& source_;
    std::vector<std::optional<std::uint16_t>> known_;
};

} // namespace qvnd::word
