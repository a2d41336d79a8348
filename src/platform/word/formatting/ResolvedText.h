#pragma once

#include "platform/word/formatting/ResolvedProperties.h"

#include <cstdint>
#include <optional>

namespace qvnd::word {

// A character that another font shows in place of the one in the text (sprmCSymbol).
struct SymbolCharacter {
    std::uint16_t font = 0; // index into DocumentTables::fonts
    char16_t code = 0;
};

// How a character looks and what it stands for, everything taken together.
struct ResolvedText {
    enum class Script : std::uint8_t { normal, raised, lowered };

    // Indexes into DocumentTables::fonts: of Latin letters, of Chinese, of all others.
    std::uint16_t latinFont = 0;
    std::uint16_t eastAsianFont = 0;
    std::uint16_t otherFont = 0;
    bool eastAsianHint = false; // signs that both fonts have are Chinese (sprmCIdctHint)
    bool hasNoLanguage = false; // its Chinese text is said to be in none
    int halfPoints = 20;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckOut = false;
    bool capitals = false;
    bool smallCapitals = false;
    bool hidden = false;
    bool deleted = false; // by a tracked change
    bool snapsToGrid = true;
    Script script = Script::normal;
    int spacing = 0;        // twips added behind each character; negative: condensed
    int scalePercent = 100; // of a character's width
    int raisedBy = 0;       // half-points above the line's foot
    std::optional<std::uint32_t> colour;
    std::optional<std::uint32_t> background;

    bool special = false;                // stands for something else (sprmCFSpec)
    bool isData = false;                 // the blob holds data of a field, and no picture
    std::optional<std::uint32_t> blob{}; // index into DocumentTables::blobs
    std::optional<SymbolCharacter> symbol{};
};

// `own`: the list of the characters themselves, which says what they stand for.
ResolvedText resolvedTextOf(const ResolvedProperties& look, ByteView own);

} // namespace qvnd::word
