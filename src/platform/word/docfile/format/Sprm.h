#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

// Single property modifiers, [MS-DOC] 2.2.5 and 2.6. A property list (grpprl) is one after the
// other: a two-byte opcode, then an operand whose size the opcode tells.
namespace qvnd::word {

using SprmOpcode = std::uint16_t;

enum class SprmGroup : std::uint8_t {
    paragraph = 1,
    character = 2,
    picture = 3,
    section = 4,
    table = 5
};

inline SprmGroup groupOf(SprmOpcode opcode) { return static_cast<SprmGroup>((opcode >> 10) & 7); }

struct SprmView {
    SprmOpcode opcode = 0;
    ByteView operand; // with its own length byte or bytes, where the operand has one
    ByteView whole;   // opcode and operand
    // The offset of the operand in the list it was parsed from.
    std::size_t operandOffset = 0;
};

// The size of the operand that starts at `rest`, its length bytes included; nothing when `rest`
// is too short for it.
std::optional<std::size_t> operandSize(SprmOpcode opcode, ByteView rest);

// All entries up to the first that does not fit; `complete` tells whether the list ended cleanly
// (a lone padding byte at the end is clean).
struct ParsedSprms {
    std::vector<SprmView> sprms;
    bool complete = true;
};
ParsedSprms parseSprms(ByteView list);

// A list that there is only so much room for: the entries up to the first that does not fit.
struct CutList {
    Bytes list;
    bool lost = false;
};
CutList cutSprms(ByteView list, std::size_t room);

// An operand that begins with its length and holds a list from `at` on, each entry of which becomes
// what `change` makes of it: nothing where it goes. Nothing for an operand that holds no list.
using SprmChange = std::function<Bytes(const SprmView&)>;
std::optional<Bytes> withListInside(ByteView operand, std::size_t at, const SprmChange& change);

// The last entry with that opcode: later entries overrule earlier ones.
std::optional<SprmView> findSprm(ByteView list, SprmOpcode opcode);
// The list without entries of that opcode, and with the new one at its end.
Bytes withSprm(ByteView list, SprmOpcode opcode, ByteView operand);
Bytes withSprm8(ByteView list, SprmOpcode opcode, unsigned operand);
Bytes withSprm16(ByteView list, SprmOpcode opcode, unsigned operand);
Bytes withSprm32(ByteView list, SprmOpcode opcode, std::uint32_t operand);
Bytes withoutSprm(ByteView list, SprmOpcode opcode);

} // namespace qvnd::word
