#include "platform/word/engine/StyleProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qvnd::word {

namespace {

// Newer spellings and what they are newer spellings of.
constexpr std::array<std::pair<SprmOpcode, SprmOpcode>, 19> spellings{{
    {sprm::PJc, sprm::PJc80},
    {sprm::PDxaLeft, sprm::PDxaLeft80},
    {sprm::PDxaLeft1, sprm::PDxaLeft180},
    {sprm::PDxaRight, sprm::PDxaRight80},
    {0x465F, 0x4610}, // sprmPNest
    {0xC64D, 0x442D}, // sprmPShd
    {0xC64E, 0x6424}, // sprmPBrcTop
    {0xC64F, 0x6425}, // sprmPBrcLeft
    {0xC650, 0x6426}, // sprmPBrcBottom
    {0xC651, 0x6427}, // sprmPBrcRight
    {0xC652, 0x6428}, // sprmPBrcBetween
    {0xC653, 0x6629}, // sprmPBrcBar
    {sprm::CCv, sprm::CIco},
    {0xCA71, 0x4866}, // sprmCShd
    {0xCA72, 0x6865}, // sprmCBrc
    {0x4873, sprm::CRgLid0},
    {0x4874, sprm::CRgLid1},
    {sprm::CFtc, sprm::CRgFtc0},
    {sprm::PChgTabs, sprm::PChgTabsPapx},
}};

constexpr std::array<SprmOpcode, 12> toggles{
    sprm::CFBold, sprm::CFItalic, 0x0837, 0x0838, 0x0839,         0x083A,
    0x083B,       sprm::CFVanish, 0x0854, 0x0858, sprm::CFBoldBi, 0x085D,
};

// Of paragraphs and characters, and no matter of looks: places in tables, revisions, pictures,
// identifiers of editing sessions, names of styles.
constexpr std::array<SprmOpcode, 46> noLook{
    sprm::PIstd,
    sprm::PIstdPermute,
    0x2602, // sprmPIncLvl
    sprm::PFInTable,
    sprm::PFTtp,
    0x2443, // sprmPFNumRMIns
    sprm::PNumRM,
    sprm::PHugePapx,
    0x6645, // sprmPHugePapx of older writers
    sprm::PItap,
    0x664A, // sprmPDtap
    sprm::PFInnerTableCell,
    sprm::PFInnerTtp,
    0x2664, // sprmPWall
    0x6465, // sprmPIpgp
    0xC666, // sprmPCnf
    0x6467, // sprmPRsid
    0xC669, // sprmPIstdListPermute
    sprm::PTableProps,
    0xC66C, // sprmPTIstdInfo
    sprm::PPropRMark,
    sprm::PPropRMark90,
    sprm::CFRMarkDel,
    sprm::CFRMarkIns,
    sprm::CFFldVanish,
    sprm::CPicLocation,
    sprm::CIbstRMark,
    0x6805, // sprmCDttmRMark
    sprm::CFData,
    0x4807, // sprmCIdslRMark
    sprm::CSymbol,
    sprm::CFOle2,
    sprm::CObjLocation,
    sprm::CIstd,
    sprm::CIstdPermute,
    sprm::CPlain,
    sprm::CFSpec,
    sprm::CFObj,
    sprm::CPropRMark90,
    sprm::CPropRMark,
    sprm::CDispFldRMark,
    sprm::CIbstRMarkDel,
    0x6864, // sprmCDttmRMarkDel
    0x2A83, // sprmCWall
    0xCA85, // sprmCCnf
    0x6815, // sprmCRsidProp
};

constexpr std::array<SprmOpcode, 7> indents{
    sprm::PDxaLeft80,
    sprm::PDxaLeft180,
    sprm::PDcxaLeft,
    sprm::PDcxaLeft1,
    0x4610, // sprmPNest80
    sprm::PDxaRight80,
    sprm::PDcxaRight,
};

// Defaults other than zeros.
constexpr std::array<std::pair<SprmOpcode, std::uint32_t>, 22> defaults{{
    {sprm::PDyaLine, 0x000100F0}, // one line
    {0x2431, 1},                  // sprmPFWidowControl
    {0x2433, 1},                  // sprmPFKinsoku
    {0x2434, 1},                  // sprmPFWordWrap
    {0x2435, 1},                  // sprmPFOverflowPunct
    {0x2437, 1},                  // sprmPFAutoSpaceDE
    {0x2438, 1},                  // sprmPFAutoSpaceDN
    {0x4439, 4},                  // sprmPWAlignFont
    {sprm::POutLvl, 9},
    {0x2447, 1}, // sprmPFUsePgsuSettings
    {0x2448, 1}, // sprmPFAdjustRight
    {sprm::CHps, 20},
    {sprm::CHpsBi, 20},
    {0x4852, 100}, // sprmCCharScale
    {0x0868, 1},   // sprmCFUsePgsuSettings
    {sprm::CCv, 0xFF000000},
    {0x6877, 0xFF000000}, // sprmCCvUl
    {sprm::CRgLid0, 0x0400},
    {0x4873, 0x0400}, // sprmCRgLid0
    {sprm::CRgLid1, 0x0400},
    {0x4874, 0x0400}, // sprmCRgLid1
    {0x485F, 0x0400}, // sprmCLidBi
}};

bool isShading(SprmOpcode opcode) { return opcode == 0xC64D || opcode == 0xCA71; }

bool isBorder(SprmOpcode opcode) {
    return (opcode >= 0xC64E && opcode <= 0xC653) || opcode == 0xCA72;
}

Bytes opcodeBytes(SprmOpcode opcode) {
    return {static_cast<std::uint8_t>(opcode), static_cast<std::uint8_t>(opcode >> 8)};
}

Bytes entryOf(SprmOpcode opcode, std::uint32_t operand, std::size_t size) {
    Bytes entry = opcodeBytes(opcode);
    for (std::size_t i = 0; i < size; ++i) {
        entry.push_back(static_cast<std::uint8_t>(operand >> (8 * i)));
    }
    return entry;
}

// Ico of [MS-DOC] 2.9.119 as COLORREF.
constexpr std::array<std::uint32_t, 17> colours{
    0xFF000000, 0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0xFF00FF, 0x0000FF, 0x00FFFF, 0xFFFFFF,
    0x800000,   0x808000, 0x008000, 0x800080, 0x000080, 0x008080, 0x808080, 0xC0C0C0};

// The operand of the entry that has the last word; of a colour its parts.
Bytes effectOf(ByteView entries) {
    const ParsedSprms parsed = parseSprms(entries);
    if (parsed.sprms.empty()) {
        return {};
    }
    const SprmView& last = parsed.sprms.back();
    if (last.opcode == sprm::CIco && last.operand[0] < colours.size()) {
        return entryOf(sprm::CCv, colours.at(last.operand[0]), 4);
    }
    if (last.opcode == sprm::CCv || last.operand.size() > 2) {
        return {last.whole.begin(), last.whole.end()};
    }
    return {last.operand.begin(), last.operand.end()};
}

// SHDOperand with automatic colours and no pattern; BrcOperand without a border.
std::optional<Bytes> defaultOfVariableSize(SprmOpcode opcode) {
    Bytes entry = opcodeBytes(opcode);
    if (isShading(opcode)) {
        entry.insert(entry.end(), {10, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0});
        return entry;
    }
    if (isBorder(opcode)) {
        entry.insert(entry.end(), {8, 0, 0, 0, 0, 0, 0, 0, 0});
        return entry;
    }
    return std::nullopt;
}

} // namespace

SprmOpcode propertySetBy(SprmOpcode opcode) {
    const auto* found = std::find_if(spellings.begin(), spellings.end(),
                                     [&](const auto& pair) { return pair.first == opcode; });
    return found != spellings.end() ? found->second : opcode;
}

bool isToggle(SprmOpcode opcode) {
    return std::find(toggles.begin(), toggles.end(), opcode) != toggles.end();
}

bool setsTabStops(SprmOpcode opcode) {
    return opcode == sprm::PChgTabsPapx || opcode == sprm::PChgTabs;
}

bool belongsToLook(SprmOpcode opcode) {
    const SprmGroup group = groupOf(opcode);
    return (group == SprmGroup::paragraph || group == SprmGroup::character) &&
           !setsTabStops(opcode) && opcode != 0x6816 && opcode != 0x6817 &&
           std::find(noLook.begin(), noLook.end(), opcode) == noLook.end();
}

bool isIndent(SprmOpcode property) {
    return std::find(indents.begin(), indents.end(), property) != indents.end();
}

std::optional<Bytes> defaultEntry(SprmOpcode opcode) {
    constexpr std::array<std::size_t, 8> sizes{1, 1, 2, 4, 2, 2, 0, 3};
    const std::size_t size = sizes[opcode >> 13];
    if (size == 0) {
        return defaultOfVariableSize(opcode);
    }
    const auto* found = std::find_if(defaults.begin(), defaults.end(),
                                     [&](const auto& pair) { return pair.first == opcode; });
    return entryOf(opcode, found != defaults.end() ? found->second : 0, size);
}

bool sameEffect(ByteView one, ByteView other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end()) ||
           effectOf(one) == effectOf(other);
}

Bytes entry8(SprmOpcode opcode, unsigned operand) { return entryOf(opcode, operand, 1); }
Bytes entry16(SprmOpcode opcode, unsigned operand) { return entryOf(opcode, operand, 2); }

} // namespace qvnd::word
