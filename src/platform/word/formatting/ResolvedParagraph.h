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

    int at = 0; // twips from the text margin
    Kind kind = Kind::left;
    char16_t leader = 0; // fills the gap before the stop; 0 for none
    bool operator==(const TabStop&) const = default;
};

// An indent in twips, or in hundredths of a character width. Programs that write character units
// also write the equivalent in twips, for readers that do not know the units.
struct Indent {
    int twips = 0;
    int characters = 0;
    bool operator==(const Indent&) const = default;
};

// A frame: it positions paragraphs outside the text flow. Lengths in twips.
struct ParagraphFrame {
    enum class Place : std::uint8_t { distance, start, centre, end };

    FrameSpot::Across across = FrameSpot::Across::fromColumn;
    FrameSpot::Down down = FrameSpot::Down::fromMargin;
    Place placeAcross = Place::distance;
    Place placeDown = Place::distance;
    int left = 0;
    int top = 0;
    int width = 0; // 0: fits the text
    int height = 0;
    bool exactHeight = false;
    bool textBeside = true; // text wraps around the frame
    int apartAcross = 0;    // horizontal distance of the text outside
    int apartDown = 0;      // its vertical distance
    bool operator==(const ParagraphFrame&) const = default;
};

// The formatting of a paragraph: styles, list level and direct formatting combined. Lengths in
// twips.
struct ResolvedParagraph {
    enum class Spacing : std::uint8_t { multiple, atLeast, exact };

    LineAlignment alignment = LineAlignment::left;
    Indent left;
    Indent right;
    Indent firstLine; // negative: hanging
    int before = 0;
    int after = 0;
    int linesBefore = 0; // in hundredths of a line; overrides `before` unless 0
    int linesAfter = 0;  // overrides `after` in the same way
    bool automaticBefore = false;
    bool automaticAfter = false;
    bool contextual = false; // no space between paragraphs of the same style
    Spacing spacing = Spacing::multiple;
    int line = 240;                // of a multiple: 240 is single spacing; else twips
    std::vector<TabStop> tabStops; // ascending

    bool keepsLines = false;
    bool keepsWithNext = false;
    bool startsPage = false;
    bool controlsWidows = true;
    bool snapsToGrid = true;
    bool forbidsLineEnds = true; // line breaking rules for punctuation apply (sprmPFKinsoku)
    bool breaksWords = false;    // a line may break within a Latin word
    bool hangsPunctuation = true;
    bool spacesLatin = true;  // adds space between Chinese and Latin letters
    bool spacesDigits = true; // adds space between Chinese letters and digits

    int outlineLevel = 0;   // 1 to 9; 0 for body text
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

// The indents of a paragraph, in twips.
struct ParagraphIndents {
    double left = 0;
    double right = 0;
    double firstLine = 0; // from `left`; negative: hanging
};

// Which spelling of an indent counts when both are given. Character units override twips in word
// processors (ISO 29500-1, 17.3.1.12); the office suite takes the twips.
enum class IndentUnits : std::uint8_t { characters, twips };

// `characterWidth`: width of a full-width character of the paragraph, in twips. A left indent in
// characters is that of the hanging first line; one in twips is that of the other lines.
ParagraphIndents indentsOf(const ResolvedParagraph& format, double characterWidth,
                           IndentUnits units);

} // namespace qvnd::word
