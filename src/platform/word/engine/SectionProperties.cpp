#include "platform/word/engine/SectionProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <array>

namespace qvnd::word {

namespace {

constexpr std::array numbering{sprm::SFTitlePage, sprm::SNfcPgn,   sprm::SFPgnRestart,
                               sprm::SPgnStart97, sprm::SPgnStart, sprm::SiHeadingPgn,
                               sprm::ScnsPgn};
// What counts when nothing is said, [MS-DOC] 2.6.4.
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

bool samePageFormat(ByteView a, ByteView b) {
    return samePaper(a, b) && sprmValue(a, sprm::SCcolumns, 0) == sprmValue(b, sprm::SCcolumns, 0);
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
