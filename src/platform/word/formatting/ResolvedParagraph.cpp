#include "platform/word/formatting/ResolvedParagraph.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace qvnd::word {

namespace {

constexpr int farthest = 31680; // twips; no distance is longer than the largest paper

int bounded(int twips) { return std::clamp(twips, -farthest, farthest); }

bool isSet(const ResolvedProperties& look, SprmOpcode property) {
    return numberOf(look, property) != 0;
}

Indent indentOf(const ResolvedProperties& look, SprmOpcode inTwips, SprmOpcode inCharacters) {
    return {bounded(signedNumberOf(look, inTwips)), signedNumberOf(look, inCharacters)};
}

LineAlignment alignmentOf(std::uint32_t jc) {
    constexpr std::array<LineAlignment, 5> alignments{
        LineAlignment::left, LineAlignment::centre, LineAlignment::right, LineAlignment::justified,
        LineAlignment::distributed};
    constexpr std::uint32_t lastOfJustified = 9; // 5 to 9 are ways to stretch Arabic and Thai
    return jc < alignments.size()  ? alignments.at(jc)
           : jc <= lastOfJustified ? LineAlignment::justified
                                   : LineAlignment::left;
}

// LSPD, [MS-DOC] 2.9.134.
void readLineSpacing(const ResolvedProperties& look, ResolvedParagraph& format) {
    constexpr int mostLines = 132 * 240;
    const std::uint32_t lspd = numberOf(look, sprm::PDyaLine);
    const auto line = static_cast<std::int16_t>(lspd & 0xFFFF);
    if (line == 0) {
        return;
    }
    if ((lspd >> 16) == 1) {
        format.line = std::clamp(std::abs(int{line}), 1, mostLines);
        return;
    }
    format.spacing =
        line < 0 ? ResolvedParagraph::Spacing::exact : ResolvedParagraph::Spacing::atLeast;
    format.line = std::min(std::abs(int{line}), farthest);
}

void readSpacing(const ResolvedProperties& look, ResolvedParagraph& format) {
    const auto distance = [&](SprmOpcode property) {
        return static_cast<int>(std::min<std::uint32_t>(numberOf(look, property), farthest));
    };
    format.before = distance(sprm::PDyaBefore);
    format.after = distance(sprm::PDyaAfter);
    format.linesBefore = std::clamp(signedNumberOf(look, sprm::PDylBefore), 0, 13200);
    format.linesAfter = std::clamp(signedNumberOf(look, sprm::PDylAfter), 0, 13200);
    format.automaticBefore = isSet(look, sprm::PFDyaBeforeAuto);
    format.automaticAfter = isSet(look, sprm::PFDyaAfterAuto);
    format.contextual = isSet(look, sprm::PFContextualSpacing);
    readLineSpacing(look, format);
}

// TBD, [MS-DOC] 2.9.301: three bits of alignment, three of leader.
void readTabStops(const ResolvedProperties& look, ResolvedParagraph& format) {
    constexpr std::array<char16_t, 6> leaders{0, u'.', u'-', u'_', u'_', u'·'};
    constexpr unsigned lastKind = 4;
    for (const auto& [position, tbd] : look.tabStops()) {
        const unsigned kind = tbd & 7U;
        const unsigned leader = (tbd >> 3) & 7U;
        if (kind <= lastKind) {
            format.tabStops.push_back({position, static_cast<TabStop::Kind>(kind),
                                       leader < leaders.size() ? leaders.at(leader) : u'\0'});
        }
    }
}

void readFlow(const ResolvedProperties& look, ResolvedParagraph& format) {
    format.keepsLines = isSet(look, sprm::PFKeep);
    format.keepsWithNext = isSet(look, sprm::PFKeepFollow);
    format.startsPage = isSet(look, sprm::PFPageBreakBefore);
    format.controlsWidows = isSet(look, sprm::PFWidowControl);
    format.snapsToGrid = isSet(look, sprm::PFUsePgsuSettings);
    format.forbidsLineEnds = isSet(look, sprm::PFKinsoku);
    format.breaksWords = !isSet(look, sprm::PFWordWrap);
    format.hangsPunctuation = isSet(look, sprm::PFOverflowPunct);
    format.spacesLatin = isSet(look, sprm::PFAutoSpaceDE);
    format.spacesDigits = isSet(look, sprm::PFAutoSpaceDN);
}

using Place = ParagraphFrame::Place;

// XAS_plusOne and YAS_plusOne, [MS-DOC] 2.9.356 and 2.9.357: some numbers name places.
Place placeOf(int stored, bool across) {
    constexpr int first = -4; // centred across; at the top
    constexpr int second = -8;
    constexpr int third = -12;
    switch (stored) {
    case 0:
        return across ? Place::start : Place::distance;
    case first:
        return across ? Place::centre : Place::start;
    case second:
        return across ? Place::end : Place::centre;
    case third:
        return across ? Place::start : Place::end;
    case third - 4:
        return across ? Place::end : Place::start;
    case third - 8:
        return across ? Place::distance : Place::end;
    default:
        return Place::distance;
    }
}

// PositionCodeOperand, [MS-DOC] 2.9.210.
void readOrigins(const ResolvedProperties& look, ParagraphFrame& frame) {
    const std::uint32_t code = numberOf(look, sprm::PPc);
    const std::uint32_t down = (code >> 4U) & 3U;
    const std::uint32_t across = (code >> 6U) & 3U;
    frame.down = down == 1   ? FrameSpot::Down::fromPage
                 : down == 2 ? FrameSpot::Down::fromParagraph
                             : FrameSpot::Down::fromMargin;
    frame.across = across == 1   ? FrameSpot::Across::fromMargin
                   : across == 2 ? FrameSpot::Across::fromPage
                                 : FrameSpot::Across::fromColumn;
}

std::optional<ParagraphFrame> frameOf(const ResolvedProperties& look) {
    constexpr std::uint32_t notBeside = 1; // sprmPWr
    constexpr std::uint32_t nowhere = 3;
    constexpr std::uint32_t leastHeight = 0x8000;
    constexpr std::uint32_t dropCapKind = 0x07; // of DCS: none, in the text or in the margin
    const int across = signedNumberOf(look, sprm::PDxaAbs);
    const int down = signedNumberOf(look, sprm::PDyaAbs);
    const int width = static_cast<int>(numberOf(look, sprm::PDxaWidth));
    const bool isDropCap = (numberOf(look, sprm::PDcs) & dropCapKind) != 0;
    if (across == 0 && down == 0 && width == 0 && !isDropCap) {
        return std::nullopt;
    }
    ParagraphFrame frame;
    readOrigins(look, frame);
    frame.placeAcross = placeOf(across, true);
    frame.placeDown = placeOf(down, false);
    frame.left = frame.placeAcross == Place::distance ? bounded(across - 1) : 0;
    frame.top = frame.placeDown == Place::distance && down != 0 ? bounded(down - 1) : 0;
    if (down == 0) {
        frame.down = FrameSpot::Down::fromParagraph; // where it stands in the text
    }
    frame.width = std::min(width, farthest);
    const std::uint32_t height = numberOf(look, sprm::PWHeightAbs);
    frame.height = static_cast<int>(height & ~leastHeight);
    frame.exactHeight = height != 0 && (height & leastHeight) == 0;
    const std::uint32_t wrap = numberOf(look, sprm::PWr);
    frame.textBeside = wrap != notBeside && wrap != nowhere;
    frame.apartAcross = bounded(signedNumberOf(look, sprm::PDxaFromText));
    frame.apartDown = bounded(signedNumberOf(look, sprm::PDyaFromText));
    return frame;
}

} // namespace

ResolvedParagraph resolvedParagraphOf(const ResolvedProperties& look) {
    constexpr std::uint32_t levels = 9;
    ResolvedParagraph format;
    format.alignment = alignmentOf(numberOf(look, sprm::PJc80));
    format.left = indentOf(look, sprm::PDxaLeft80, sprm::PDcxaLeft);
    format.right = indentOf(look, sprm::PDxaRight80, sprm::PDcxaRight);
    format.firstLine = indentOf(look, sprm::PDxaLeft180, sprm::PDcxaLeft1);
    readSpacing(look, format);
    readTabStops(look, format);
    readFlow(look, format);
    const std::uint32_t level = numberOf(look, sprm::POutLvl);
    format.outlineLevel = level < levels ? static_cast<int>(level) + 1 : 0;
    format.list = look.list();
    format.listLevel = look.listLevel();
    format.topSide = sideOf(look, sprm::PBrcTop80);
    format.leftSide = sideOf(look, sprm::PBrcLeft80);
    format.bottomSide = sideOf(look, sprm::PBrcBottom80);
    format.rightSide = sideOf(look, sprm::PBrcRight80);
    format.frame = frameOf(look);
    format.between = sideOf(look, sprm::PBrcBetween80);
    if (const auto shading = settingOf(look, sprm::PShd80)) {
        format.background = colourOfShading(*shading);
    }
    return format;
}

ParagraphIndents indentsOf(const ResolvedParagraph& format, double characterWidth,
                           IndentUnits units) {
    const auto inCharacters = [&](const Indent& indent) {
        return indent.characters != 0 && (units == IndentUnits::characters || indent.twips == 0);
    };
    const auto lengthOf = [&](const Indent& indent) {
        return inCharacters(indent) ? indent.characters * characterWidth / 100 : indent.twips;
    };
    ParagraphIndents indents{lengthOf(format.left), lengthOf(format.right),
                             lengthOf(format.firstLine)};
    if (units == IndentUnits::characters && indents.firstLine < 0) {
        const double stored =
            format.firstLine.twips != 0 ? format.firstLine.twips : indents.firstLine;
        const double hangsFrom = inCharacters(format.left) ? indents.left : indents.left + stored;
        indents.left = hangsFrom - indents.firstLine;
    }
    return indents;
}

} // namespace qvnd::word
