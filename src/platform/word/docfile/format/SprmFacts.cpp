#include "platform/word/docfile/format/SprmFacts.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

using Kind = SprmKind;
using Target = SprmTarget;

// Ascending by opcode.
constexpr std::array<SprmFacts, 122> rows{{
    {.opcode = sprm::CFRMarkDel, .kind = Kind::revision},
    {.opcode = sprm::CFRMarkIns, .kind = Kind::revision},
    {.opcode = sprm::CFFldVanish, .kind = Kind::substance},
    {.opcode = sprm::CFData, .kind = Kind::substance},
    {.opcode = sprm::CFOle2, .kind = Kind::substance},
    {.opcode = sprm::CFBold, .toggle = true},
    {.opcode = sprm::CFItalic, .toggle = true},
    {.opcode = sprm::CFStrike, .toggle = true},
    {.opcode = sprm::CFOutline, .toggle = true},
    {.opcode = sprm::CFShadow, .toggle = true},
    {.opcode = sprm::CFSmallCaps, .toggle = true},
    {.opcode = sprm::CFCaps, .toggle = true},
    {.opcode = sprm::CFVanish, .toggle = true},
    {.opcode = sprm::CFImprint, .toggle = true},
    {.opcode = sprm::CFSpec, .kind = Kind::substance},
    {.opcode = sprm::CFObj, .kind = Kind::substance},
    {.opcode = sprm::CFEmboss, .toggle = true},
    {.opcode = sprm::CFBoldBi, .toggle = true},
    {.opcode = sprm::CFItalicBi, .toggle = true},
    {.opcode = sprm::CFUsePgsuSettings, .plain = 1},
    {.opcode = sprm::PFInTable, .kind = Kind::place},
    {.opcode = sprm::PFTtp, .kind = Kind::place},
    {.opcode = sprm::PFWidowControl, .plain = 1},
    {.opcode = sprm::PFKinsoku, .plain = 1},
    {.opcode = sprm::PFWordWrap, .plain = 1},
    {.opcode = sprm::PFOverflowPunct, .plain = 1},
    {.opcode = sprm::PFAutoSpaceDE, .plain = 1},
    {.opcode = sprm::PFAutoSpaceDN, .plain = 1},
    {.opcode = sprm::PFNumRMIns, .kind = Kind::revision},
    {.opcode = sprm::PFUsePgsuSettings, .plain = 1},
    {.opcode = sprm::PFAdjustRight, .plain = 1},
    {.opcode = sprm::PFInnerTableCell, .kind = Kind::place},
    {.opcode = sprm::PFInnerTtp, .kind = Kind::place},
    {.opcode = sprm::PJc, .property = sprm::PJc80},
    {.opcode = sprm::PIncLvl, .kind = Kind::style},
    {.opcode = sprm::POutLvl, .plain = 9},
    {.opcode = sprm::PWall, .kind = Kind::revision},
    {.opcode = sprm::CPlain, .kind = Kind::style},
    {.opcode = sprm::CWall, .kind = Kind::revision},
    {.opcode = sprm::PWAlignFont, .plain = 4},
    {.opcode = sprm::PDcxaRight, .indent = true},
    {.opcode = sprm::PDcxaLeft, .indent = true},
    {.opcode = sprm::PDcxaLeft1, .indent = true},
    {.opcode = sprm::PIstd, .kind = Kind::style, .target = Target::paragraphStyle},
    {.opcode = sprm::PIlfo, .target = Target::list},
    {.opcode = sprm::PNest80, .indent = true},
    {.opcode = sprm::PNest, .property = sprm::PNest80},
    {.opcode = sprm::CIbstRMark, .kind = Kind::revision, .target = Target::author},
    {.opcode = sprm::CIdslRMark, .kind = Kind::revision},
    {.opcode = sprm::CCharScale, .plain = 100},
    {.opcode = sprm::CLidBi, .plain = 0x0400},
    {.opcode = sprm::CIbstRMarkDel, .kind = Kind::revision, .target = Target::author},
    {.opcode = sprm::CIdslRMarkDel, .kind = Kind::revision},
    {.opcode = sprm::CRgLid0, .plain = 0x0400},
    {.opcode = sprm::CRgLid1, .plain = 0x0400},
    {.opcode = sprm::CRgLid0New, .property = sprm::CRgLid0, .plain = 0x0400},
    {.opcode = sprm::CRgLid1New, .property = sprm::CRgLid1, .plain = 0x0400},
    {.opcode = sprm::CIstd, .kind = Kind::style, .target = Target::characterStyle},
    {.opcode = sprm::CFtc, .property = sprm::CRgFtc0, .target = Target::font},
    {.opcode = sprm::CHps, .plain = 20},
    {.opcode = sprm::CRgFtc0, .target = Target::font},
    {.opcode = sprm::CRgFtc1, .target = Target::font},
    {.opcode = sprm::CRgFtc2, .target = Target::font},
    {.opcode = sprm::CFtcBi, .target = Target::font},
    {.opcode = sprm::CHpsBi, .plain = 20},
    {.opcode = sprm::TIstd, .kind = Kind::style, .target = Target::tableStyle},
    {.opcode = sprm::PDyaLine, .plain = 0x000100F0},
    {.opcode = sprm::PIpgp, .kind = Kind::place, .target = Target::elsewhere},
    {.opcode = sprm::PRsid, .kind = Kind::session},
    {.opcode = sprm::PTableProps, .kind = Kind::storage, .target = Target::dataStream},
    {.opcode = sprm::PHugePapx97, .kind = Kind::storage, .target = Target::dataStream},
    {.opcode = sprm::PHugePapx, .kind = Kind::storage, .target = Target::dataStream},
    {.opcode = sprm::PItap, .kind = Kind::place},
    {.opcode = sprm::PDtap, .kind = Kind::place},
    {.opcode = sprm::CDttmRMark, .kind = Kind::revision},
    {.opcode = sprm::CObjLocation, .kind = Kind::substance, .target = Target::object},
    {.opcode = sprm::CRsidProp, .kind = Kind::session},
    {.opcode = sprm::CRsidText, .kind = Kind::session},
    {.opcode = sprm::CRsidRMDel, .kind = Kind::session},
    {.opcode = sprm::CDttmRMarkDel, .kind = Kind::revision},
    {.opcode = sprm::CCv, .property = sprm::CIco, .plain = 0xFF000000},
    {.opcode = sprm::CCvUl, .plain = 0xFF000000},
    {.opcode = sprm::CPbiIBullet, .target = Target::bulletPicture},
    {.opcode = sprm::CPicLocation, .kind = Kind::substance, .target = Target::blob},
    {.opcode = sprm::CSymbol, .kind = Kind::substance, .target = Target::font},
    {.opcode = sprm::TIpgp, .kind = Kind::place, .target = Target::elsewhere},
    {.opcode = sprm::PDxaRight80, .indent = true},
    {.opcode = sprm::PDxaLeft80, .indent = true},
    {.opcode = sprm::PDxaLeft180, .indent = true},
    {.opcode = sprm::PDxaRight, .property = sprm::PDxaRight80},
    {.opcode = sprm::PDxaLeft, .property = sprm::PDxaLeft80},
    {.opcode = sprm::PDxaLeft1, .property = sprm::PDxaLeft180},
    {.opcode = sprm::PIstdPermute, .kind = Kind::style, .target = Target::elsewhere},
    {.opcode = sprm::PChgTabsPapx, .kind = Kind::tabStops},
    {.opcode = sprm::PChgTabs, .property = sprm::PChgTabsPapx, .kind = Kind::tabStops},
    {.opcode = sprm::PAnld80, .target = Target::font, .targetAt = 7},
    {.opcode = sprm::PPropRMark90, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::PNumRM, .kind = Kind::revision, .target = Target::author, .targetAt = 3},
    {.opcode = sprm::PShd, .property = sprm::PShd80},
    {.opcode = sprm::PBrcTop, .property = sprm::PBrcTop80},
    {.opcode = sprm::PBrcLeft, .property = sprm::PBrcLeft80},
    {.opcode = sprm::PBrcBottom, .property = sprm::PBrcBottom80},
    {.opcode = sprm::PBrcRight, .property = sprm::PBrcRight80},
    {.opcode = sprm::PBrcBetween, .property = sprm::PBrcBetween80},
    {.opcode = sprm::PBrcBar, .property = sprm::PBrcBar80},
    {.opcode = sprm::PCnf, .kind = Kind::place, .target = Target::listInside, .targetAt = 3},
    {.opcode = sprm::PIstdListPermute, .kind = Kind::style},
    {.opcode = sprm::PTIstdInfo, .kind = Kind::style},
    {.opcode = sprm::PPropRMark, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::CIstdPermute, .kind = Kind::style, .target = Target::elsewhere},
    {.opcode = sprm::CMajority, .target = Target::listInside, .targetAt = 1},
    {.opcode = sprm::CPropRMark90, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::CDispFldRMark,
     .kind = Kind::revision,
     .target = Target::author,
     .targetAt = 2},
    {.opcode = sprm::CShd, .property = sprm::CShd80},
    {.opcode = sprm::CBrc, .property = sprm::CBrc80},
    {.opcode = sprm::CCnf, .kind = Kind::place, .target = Target::listInside, .targetAt = 3},
    {.opcode = sprm::CPropRMark, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::SOlstAnm80, .target = Target::levelFonts},
    {.opcode = sprm::SPropRMark90, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::SPropRMark, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::TPropRMark, .kind = Kind::revision, .target = Target::author, .targetAt = 2},
    {.opcode = sprm::TCnf, .kind = Kind::place, .target = Target::listInside, .targetAt = 3},
}};

constexpr bool before(const SprmFacts& row, SprmOpcode opcode) { return row.opcode < opcode; }

static_assert(std::is_sorted(rows.begin(), rows.end(), [](const SprmFacts& a, const SprmFacts& b) {
    return a.opcode < b.opcode;
}));

} // namespace

SprmFacts factsOf(SprmOpcode opcode) {
    const auto* found = std::lower_bound(rows.begin(), rows.end(), opcode, before);
    SprmFacts facts;
    if (found != rows.end() && found->opcode == opcode) {
        facts = *found;
    }
    facts.opcode = opcode;
    facts.property = facts.property == 0 ? opcode : facts.property;
    return facts;
}

std::optional<std::size_t> fixedOperandSize(SprmOpcode opcode) {
    constexpr std::array<std::size_t, 8> sizes{1, 1, 2, 4, 2, 2, 0, 3};
    const std::size_t size = sizes[opcode >> 13];
    return size == 0 ? std::nullopt : std::optional(size);
}

} // namespace qvnd::word
