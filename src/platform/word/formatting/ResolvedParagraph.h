#pragma once

#include "platform/word/docfile/document/FrameSpot.h"
#include "platform/word/formatting/PropertyValues.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qvnd::word {

enum class LineAlignment : std::uint8_t { left, centre, right, justified, distributed };

struct TabStop {
    enum class Kind : std::uint8_t { left, centre, right, decimal, bar };

    int at = 0; // twips from the margin of the text
    Kind kind = Kind::left;
    char16_t leader = 0; // the character that fills the gap; 0 for none
    bool operator==(const TabStop&) const = default;
};

// An indent in twips, or in hundredths of a character. Programs that know characters save what they
// come to in twips as well, by their own measures.
struct Indent {
    int twips = 0;
    int characters = 0;

    // `characterWidth`: twips of one full-width character of the paragraph.
    double in(double characterWidth) const {
        return twips != 0 ? twips : characters * characterWidth / 100;
    }
};

// The frame that a paragraph stands in, out of the flow. Lengths in twips.
struct ParagraphFrame {
    enum class Place : std::uint8_t { distance, start, centre, end };

    FrameSpot::Across across = FrameSpot::Across::fromColumn;
    FrameSpot::Down down = FrameSpot::Down::fromMargin;
    Place placeAcross = Place::distance;
    Place placeDown = Place::distance;
    int left = 0;
    int top = 0;
    int width = 0; // 0: as wide as the text
    int height = 0;
    bool exactHeight = false;
    bool textBeside = true; // text flows on beside it
    int apartAcross = 0;
    int apartDown = 0;
    bool operator==(const ParagraphFrame&) const = default;
};

// How a paragraph stands: its own formatting, its list's level and its styles taken together.
// Lengths in twips.
struct ResolvedParagraph {
    enum class Spacing : std::uint8_t { multiple, atLeast, exact };

    LineAlignment alignment = LineAlignment::left;
    Indent left;
    Indent right;
    Indent firstLine; // negative: hanging
    int before = 0;
    int after = 0;
    int linesBefore = 0; // hundredths of a line, which count where they are given
    int linesAfter = 0;
    bool automaticBefore = false;
    bool automaticAfter = false;
    bool contextual = false; // no space between paragraphs of one style
    Spacing spacing = Spacing::multiple;
    int line = 240;                // 240 is one line where it is a multiple
    std::vector<TabStop> tabStops; // ascending

    bool keepsLines = false;
    bool keepsWithNext = false;
    bool startsPage = false;
    bool controlsWidows = true;
    bool snapsToGrid = true;
    bool forbidsLineEnds = true; // certain characters begin or end no line (sprmPFKinsoku)
    bool breaksWords = false;    // a line may end within a Latin word
    bool hangsPunctuation = true;
    bool spacesLatin = true;  // room between Chinese and Latin letters
    bool spacesDigits = true; // and digits

    int outlineLevel = 0;   // 1 to 9; 0 for text
    std::uint16_t list = 0; // operand of sprmPIlfo
    std::uint8_t listLevel = 0;

    Border topSide;
    Border leftSide;
    Border bottomSide;
    Border rightSide;
    Border between;
    std::optional<std::uint32_t> background;
    std::optional<ParagraphFrame> frame;
};

ResolvedParagraph resolvedParagraphOf(const ResolvedProperties& look);

} // namespace qvnd::word
