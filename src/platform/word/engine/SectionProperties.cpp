#include "platform/word/engine/SectionProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

constexpr std::array numbering{sprm::SFTitlePage, sprm::SNfcPgn,   sprm::SFPgnRestart,
                               sprm::SPgnStart97, sprm::SPgnStart, sprm::SiHeadingPgn,
                               sprm::ScnsPgn};

// A property and what counts where nothing is said, [MS-DOC] 2.6.4.
struct Setting {
    SprmOpcode opcode = 0;
    std::uint32_t unsaid = 0;
};
constexpr std::array pageSettings{Setting{sprm::SVjc, 0}, Setting{sprm::STextFlow, 0}};
constexpr std::array lineSettings{
    Setting{sprm::SNLnnMod, 0},   Setting{sprm::SClm, 0},    Setting{sprm::SFpc, 1},
    Setting{sprm::SRncFtn, 0},    Setting{sprm::SRncEdn, 0}, Setting{sprm::SNfcFtnRef, 0},
    Setting{sprm::SNfcEdnRef, 2}, Setting{sprm::SNFtn, 1},   Setting{sprm::SNEdn, 1}};
// Where lines bear numbers.
constexpr std::array numberSettings{Setting{sprm::SLnc, 0}, Setting{sprm::SDxaLnn, 0},
                                    Setting{sprm::SLnnMin, 0}};
// Where there is a grid.
constexpr std::array gridSettings{Setting{sprm::SDyaLinePitch, 0}, Setting{sprm::SDxtCharSpace, 0}};
constexpr std::array oldBorders{sprm::SBrcTop80, sprm::SBrcLeft80, sprm::SBrcBottom80,
                                sprm::SBrcRight80};
constexpr std::array borders{sprm::SBrcTop, sprm::SBrcLeft, sprm::SBrcBottom, sprm::SBrcRight};

// Of a page of which nothing is said.
constexpr std::uint32_t letterWidth = 12240;
constexpr std::uint32_t letterHeight = 15840;
constexpr std::uint32_t portrait = 1;

template <typename Opcodes>
Bytes without(ByteView list, const Opcodes& opcodes) {
    Bytes result(list.begin(), list.end());
    for (const SprmOpcode opcode : opcodes) {
        result = withoutSprm(result, opcode);
    }
    return result;
}

// Two files hardly ever agree on a paper size to the twip.
bool nearlySame(std::uint32_t a, std::uint32_t b) {
    constexpr std::uint32_t tolerance = 20;
    return (a > b ? a - b : b - a) <= tolerance;
}

template <typename Settings>
bool agree(ByteView a, ByteView b, const Settings& settings) {
    return std::all_of(settings.begin(), settings.end(), [&](const Setting& setting) {
        return sprmValue(a, setting.opcode, setting.unsaid) ==
               sprmValue(b, setting.opcode, setting.unsaid);
    });
}

// The border (Brc80 or Brc) whose kind stands `kindAt` bytes behind its start; empty for none.
Bytes shownBorder(ByteView list, SprmOpcode opcode, std::size_t kindAt) {
    constexpr std::uint8_t nil = 0xFF;
    const auto entry = findSprm(list, opcode);
    const bool shows = entry && entry->operand.size() > kindAt && entry->operand[kindAt] != 0 &&
                       entry->operand[kindAt] != nil;
    return shows ? Bytes(entry->operand.begin(), entry->operand.end()) : Bytes();
}

bool sameBorders(ByteView a, ByteView b) {
    constexpr std::size_t kindOfOld = 1;
    constexpr std::size_t kind = 6; // behind the length, a colour and a width
    bool any = false;
    const auto same = [&](SprmOpcode opcode, std::size_t kindAt) {
        const Bytes here = shownBorder(a, opcode, kindAt);
        any = any || !here.empty();
        return here == shownBorder(b, opcode, kindAt);
    };
    const bool sides = std::all_of(oldBorders.begin(), oldBorders.end(),
                                   [&](SprmOpcode side) { return same(side, kindOfOld); }) &&
                       std::all_of(borders.begin(), borders.end(),
                                   [&](SprmOpcode side) { return same(side, kind); });
    return sides && (!any || sprmValue(a, sprm::SPgbProp, 0) == sprmValue(b, sprm::SPgbProp, 0));
}

bool samePaper(ByteView a, ByteView b) {
    const auto same = [&](SprmOpcode opcode, std::uint32_t otherwise) {
        return nearlySame(sprmValue(a, opcode, otherwise), sprmValue(b, opcode, otherwise));
    };
    const auto landscape = [](ByteView list) {
        return sprmValue(list, sprm::SBOrientation, portrait) == 2;
    };
    return same(sprm::SXaPage, letterWidth) && same(sprm::SYaPage, letterHeight) &&
           landscape(a) == landscape(b);
}

} // namespace

std::uint32_t sprmValue(ByteView list, SprmOpcode opcode, std::uint32_t otherwise) {
    const auto found = findSprm(list, opcode);
    if (!found) {
        return otherwise;
    }
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < found->operand.size() && i < sizeof value; ++i) {
        value |= std::uint32_t{found->operand[i]} << (8 * i);
    }
    return value;
}

bool samePage(ByteView a, ByteView b) {
    return samePaper(a, b) && agree(a, b, pageSettings) && sameBorders(a, b);
}

bool sameColumns(ByteView a, ByteView b) {
    return sprmValue(a, sprm::SCcolumns, 0) == sprmValue(b, sprm::SCcolumns, 0);
}

bool sameLinesAndNotes(ByteView a, ByteView b) {
    return agree(a, b, lineSettings) &&
           (sprmValue(a, sprm::SNLnnMod, 0) == 0 || agree(a, b, numberSettings)) &&
           (sprmValue(a, sprm::SClm, 0) == 0 || agree(a, b, gridSettings));
}

Bytes withBreakOf(ByteView list, ByteView other) {
    const auto kind = findSprm(other, sprm::SBkc);
    return kind ? withSprm(list, sprm::SBkc, kind->operand) : withoutSprm(list, sprm::SBkc);
}

Bytes withBreak(ByteView list, SectionBreak kind) {
    return withSprm8(list, sprm::SBkc, static_cast<unsigned>(kind));
}

Bytes withoutOwnNumbering(ByteView list) { return without(list, numbering); }

Bytes withNumberingOf(ByteView list, ByteView other) {
    Bytes result = without(list, numbering);
    for (const SprmOpcode opcode : numbering) {
        if (const auto entry = findSprm(other, opcode)) {
            result.insert(result.end(), entry->whole.begin(), entry->whole.end());
        }
    }
    return result;
}

} // namespace qvnd::word
