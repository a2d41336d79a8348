#pragma once

#include "platform/word/formatting/LetterEffects.h"
#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/formatting/Underline.h"

#include <cstdint>
#include <optional>

namespace qvnd::word {

// A symbol: its font and code replace the character in the text (sprmCSymbol).
struct SymbolCharacter {
    std::uint16_t font = 0; // index into DocumentTables::fonts
    char16_t code = 0;
};

// The formatting of a character: styles and direct formatting combined.
struct ResolvedText {
    enum class Script : std::uint8_t { normal, raised, lowered };
    // A mark at each character (KCD).
    enum class Emphasis : std::uint8_t { none, dotAbove, commaAbove, circleAbove, dotBelow };

    // Indexes into DocumentTables::fonts: for Latin, East Asian and all other characters.
    std::uint16_t latinFont = 0;
    std::uint16_t eastAsianFont = 0;
    std::uint16_t otherFont = 0;
    bool eastAsianHint = false; // ambiguous characters use the East Asian font (sprmCIdctHint)
    bool hasNoLanguage = false; // the language of East Asian text is "none"
    int halfPoints = 20;
    bool bold = false;
    bool italic = false;
    Underline underline;
    bool struckOut = false;
    LetterEffects effects;
    Emphasis emphasis = Emphasis::none;
    bool capitals = false;
    bool smallCapitals = false;
    bool hidden = false;
    bool deleted = false; // by a tracked revision
    bool snapsToGrid = true;
    Script script = Script::normal;
    int spacing = 0;        // added after each character, in twips; negative: condensed
    int kernedFrom = 0;     // half-points from which on pairs of letters are kerned; 0: never
    int scalePercent = 100; // horizontal scaling
    int raisedBy = 0;       // above the baseline, in half-points
    std::optional<std::uint32_t> colour;
    std::optional<std::uint32_t> background;
    Border border; // around text that has the same

    bool special = false;                  // a special character (sprmCFSpec)
    bool isData = false;                   // the blob holds field data instead of a picture
    std::optional<std::uint32_t> blob{};   // index into DocumentTables::blobs
    std::optional<std::uint32_t> object{}; // index into DocumentTables::objects
    std::optional<SymbolCharacter> symbol{};

    bool isKerned() const { return kernedFrom > 0 && halfPoints >= kernedFrom; }
    // Whether the character is left out: it is hidden, or deleted by a tracked revision.
    // `showsDeleted`: deleted text is shown.
    bool isUnseen(bool showsDeleted = false) const { return hidden || (deleted && !showsDeleted); }
};

// `own`: the direct formatting, which holds the properties of special characters.
ResolvedText resolvedTextOf(const ResolvedProperties& look, ByteView own);

} // namespace qvnd::word
