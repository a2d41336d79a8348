#include "platform/word/formatting/PropertyValues.h"

#include "platform/word/docfile/format/SprmFacts.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

constexpr unsigned wholePattern = 1000;

// The part of a pattern (Ipat, [MS-DOC] 2.9.121) that has its first colour, in thousandths. The
// patterns of stripes are about half of it.
unsigned partOf(unsigned pattern) {
    constexpr unsigned firstPart = 1;
    constexpr std::array<unsigned, 13> parts{wholePattern, 50,  100, 200, 250, 300, 400,
                                             500,          600, 700, 750, 800, 900};
    constexpr unsigned firstFinePart = 35;
    constexpr std::array<unsigned, 28> fineParts{25,  75,  125, 150, 175, 225, 275, 325, 350, 375,
                                                 425, 450, 475, 525, 550, 575, 625, 650, 675, 725,
                                                 775, 825, 850, 875, 925, 950, 975, 970};
    if (pattern >= firstPart && pattern - firstPart < parts.size()) {
        return parts.at(pattern - firstPart);
    }
    if (pattern >= firstFinePart && pattern - firstFinePart < fineParts.size()) {
        return fineParts.at(pattern - firstFinePart);
    }
    return wholePattern / 2;
}

std::optional<std::uint32_t> patternColour(std::optional<std::uint32_t> fore,
                                           std::optional<std::uint32_t> back, unsigned pattern) {
    if (pattern == 0 || pattern == 0xFFFF) {
        return back;
    }
    const std::uint32_t under = back.value_or(0xFFFFFF);
    const std::uint32_t over = fore.value_or(0);
    const unsigned part = partOf(pattern);
    std::uint32_t mixed = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const std::uint32_t a = (over >> shift) & 0xFF;
        const std::uint32_t b = (under >> shift) & 0xFF;
        mixed |= ((a * part + b * (wholePattern - part)) / wholePattern) << shift;
    }
    return mixed;
}

// brcType of borders, [MS-DOC] 2.9.17.
enum BorderType : unsigned {
    doubled = 3,
    triple = 10,
    firstSmallGap = 11, // a thick and a thin stroke, three kinds of each gap
    firstMediumGap = 14,
    firstLargeGap = 17,
    wave = 20,
    doubleWave = 21,
    outset = 26,
    inset = 27,
};

// The thickness of a border of several strokes. Those of a thick and a thin stroke tell the width
// of the thick one; the gap and the thin stroke have their own.
int thicknessOf(unsigned type, int width) {
    constexpr int smallGap = 30; // twips of the gap and the thin stroke
    constexpr int largeGap = 45;
    constexpr int relief = 15;
    if (type == doubled || type == triple || type == doubleWave) {
        return 3 * width;
    }
    if (type >= firstLargeGap && type < wave) {
        return width + largeGap;
    }
    if (type >= firstMediumGap && type < firstLargeGap) {
        return 2 * width;
    }
    if (type >= firstSmallGap && type < firstMediumGap) {
        return width + smallGap;
    }
    return type == outset || type == inset ? 2 * width + relief : width;
}

using Strokes = std::array<BorderStroke, 3>;

// Their names tell them from the content outwards: the thin stroke of thinThick lies within the
// thick one ([MS-OI29500] 2.1.528). Three strokes take no more room than two.
Strokes thickAndThin(unsigned type, double width) {
    constexpr double thin = 15;
    struct Look {
        double thick, thin, gap;
    };
    const Look look = type < firstMediumGap  ? Look{width, thin, thin}
                      : type < firstLargeGap ? Look{width, width / 2, width / 2}
                                             : Look{2 * thin, thin, width};
    switch ((type - firstSmallGap) % 3) {
    case 0:
        return {{{look.thin, 0}, {look.thick, look.gap}, {}}};
    case 1:
        return {{{look.thick, 0}, {look.thin, look.gap}, {}}};
    default:
        return {{{look.thin / 2, 0}, {look.thick, look.gap / 2}, {look.thin / 2, look.gap / 2}}};
    }
}

Strokes strokesOf(unsigned type, double width) {
    if (type == doubled || type == doubleWave) {
        return {{{width, 0}, {width, width}, {}}};
    }
    if (type == triple) {
        const double part = 3 * width / 5;
        return {{{part, 0}, {part, part}, {part, part}}};
    }
    return type >= firstSmallGap && type < wave ? thickAndThin(type, width)
                                                : Strokes{{{width, 0}, {}, {}}};
}

// brcType: 0 no border, 0xFF none either, though one stood there else (Brc80MayBeNil, [MS-DOC]
// 2.9.18).
Border borderFrom(unsigned type, unsigned eighths, unsigned space,
                  std::optional<std::uint32_t> colour) {
    constexpr unsigned takenAway = 0xFF;
    Border border;
    border.isTakenAway = type == takenAway;
    border.visible = type != 0 && !border.isTakenAway;
    border.width = std::max(5, static_cast<int>(eighths) * twipsPerPoint / 8);
    border.strokes = strokesOf(type, border.width);
    border.thickness = thicknessOf(type, border.width);
    border.space = static_cast<int>(space & 0x1F) * twipsPerPoint;
    border.colour = colour;
    return border;
}

} // namespace

std::uint32_t numberOf(const SprmView& entry) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(entry.operand.size(), 4); ++i) {
        number |= std::uint32_t{entry.operand[i]} << (8 * i);
    }
    return number;
}

std::int16_t signedNumberOf(const SprmView& entry) {
    return static_cast<std::int16_t>(numberOf(entry));
}

std::optional<SprmView> settingOf(const ResolvedProperties& look, SprmOpcode property) {
    const Bytes* entries = look.find(property);
    if (entries == nullptr) {
        return std::nullopt;
    }
    const ParsedSprms parsed = parseSprms(*entries);
    return parsed.sprms.empty() ? std::nullopt : std::optional(parsed.sprms.back());
}

std::uint32_t numberOf(const ResolvedProperties& look, SprmOpcode property) {
    const auto entry = settingOf(look, property);
    return entry ? numberOf(*entry) : factsOf(property).plain;
}

int signedNumberOf(const ResolvedProperties& look, SprmOpcode property) {
    return static_cast<std::int16_t>(numberOf(look, property));
}

std::optional<std::uint32_t> colourOfIndex(unsigned ico) {
    constexpr std::array<std::uint32_t, 17> colours{
        0,        0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFF0000, 0xFFFF00, 0xFFFFFF,
        0x000080, 0x008080, 0x008000, 0x800080, 0x800000, 0x808000, 0x808080, 0xC0C0C0};
    return ico == 0 || ico >= colours.size() ? std::nullopt : std::optional(colours.at(ico));
}

std::optional<std::uint32_t> colourOfReference(std::uint32_t colorref) {
    if ((colorref >> 24) == 0xFF) {
        return std::nullopt;
    }
    return ((colorref & 0xFF) << 16) | (colorref & 0xFF00) | ((colorref >> 16) & 0xFF);
}

std::optional<std::uint32_t> colourOfShd(ByteView shd) {
    if (shd.size() < shdSize) {
        return std::nullopt;
    }
    LittleEndianReader reader(shd, "Shd");
    const auto fore = colourOfReference(reader.u32());
    const auto back = colourOfReference(reader.u32());
    return patternColour(fore, back, reader.u16());
}

std::optional<std::uint32_t> colourOfShd80(unsigned shd80) {
    constexpr unsigned none = 0xFFFF;
    if (shd80 == none) {
        return std::nullopt;
    }
    return patternColour(colourOfIndex(shd80 & 0x1F), colourOfIndex((shd80 >> 5) & 0x1F),
                         (shd80 >> 10) & 0x3F);
}

std::optional<std::uint32_t> colourOfShading(const SprmView& entry) {
    return entry.operand.size() > shdSize ? colourOfShd(entry.operand.subspan(1))
                                          : colourOfShd80(numberOf(entry) & 0xFFFF);
}

Border borderOf(ByteView brc) {
    if (brc.size() == brcSize) {
        LittleEndianReader reader(brc, "Brc");
        const auto colour = colourOfReference(reader.u32());
        const unsigned width = reader.u8();
        const unsigned type = reader.u8();
        return borderFrom(type, width, reader.u8(), colour);
    }
    if (brc.size() == brc80Size) {
        return borderFrom(brc[1], brc[0], brc[3], colourOfIndex(brc[2]));
    }
    return {};
}

Border borderOf(const SprmView& entry) {
    return borderOf(entry.operand.size() > brcSize ? entry.operand.subspan(1) : entry.operand);
}

Border sideOf(const ResolvedProperties& look, SprmOpcode property) {
    const auto entry = settingOf(look, property);
    return entry ? borderOf(*entry) : Border{};
}

} // namespace qvnd::word
