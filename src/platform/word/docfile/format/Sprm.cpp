#include "platform/word/docfile/format/Sprm.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"

#include <cstddef>

namespace qvnd::word {

namespace {

// PChgTabsOperand whose length byte is 255: the counts inside tell the real length.
std::optional<std::size_t> longTabsSize(ByteView rest) {
    if (rest.size() < 2) {
        return std::nullopt;
    }
    const std::size_t addedAt = 2 + std::size_t{4} * rest[1];
    if (rest.size() <= addedAt) {
        return std::nullopt;
    }
    return addedAt + 1 + std::size_t{3} * rest[addedAt];
}

std::optional<std::size_t> variableSize(SprmOpcode opcode, ByteView rest) {
    if (opcode == sprm::TDefTable || opcode == sprm::TDefTable10) {
        // The length word counts one byte too many, itself excluded.
        if (rest.size() < 2) {
            return std::nullopt;
        }
        const std::size_t counted = rest[0] | (std::size_t{rest[1]} << 8);
        return counted == 0 ? 2 : counted + 1;
    }
    if (rest.empty()) {
        return std::nullopt;
    }
    if (opcode == sprm::PChgTabs && rest[0] == 255) {
        return longTabsSize(rest);
    }
    return std::size_t{1} + rest[0];
}

Bytes littleEndian(std::uint32_t value, std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    return bytes;
}

} // namespace

std::optional<std::size_t> operandSize(SprmOpcode opcode, ByteView rest) {
    const auto fixed = fixedOperandSize(opcode);
    const auto size = fixed ? fixed : variableSize(opcode, rest);
    return size && *size <= rest.size() ? size : std::nullopt;
}

ParsedSprms parseSprms(ByteView list) {
    ParsedSprms result;
    std::size_t at = 0;
    while (list.size() - at >= 2) {
        const auto opcode = static_cast<SprmOpcode>(list[at] | (list[at + 1] << 8));
        const auto size = operandSize(opcode, list.subspan(at + 2));
        if (opcode == 0 || !size) {
            break;
        }
        result.sprms.push_back(
            {opcode, list.subspan(at + 2, *size), list.subspan(at, 2 + *size), at + 2});
        at += 2 + *size;
    }
    result.complete = list.size() - at < 2;
    return result;
}

CutList cutSprms(ByteView list, std::size_t room) {
    if (list.size() <= room) {
        return {{list.begin(), list.end()}, false};
    }
    CutList result;
    for (const SprmView& entry : parseSprms(list).sprms) {
        result.lost = result.list.size() + entry.whole.size() > room;
        if (result.lost) {
            break;
        }
        result.list.insert(result.list.end(), entry.whole.begin(), entry.whole.end());
    }
    return result;
}

std::optional<Bytes> withListInside(ByteView operand, std::size_t at, const SprmChange& change) {
    if (operand.size() < at) {
        return std::nullopt;
    }
    Bytes result(operand.begin(), operand.begin() + static_cast<std::ptrdiff_t>(at));
    for (const SprmView& entry : parseSprms(operand.subspan(at)).sprms) {
        const Bytes changed = change(entry);
        result.insert(result.end(), changed.begin(), changed.end());
    }
    result[0] = static_cast<std::uint8_t>(result.size() - 1);
    return result;
}

std::optional<SprmView> findSprm(ByteView list, SprmOpcode opcode) {
    std::optional<SprmView> found;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (entry.opcode == opcode) {
            found = entry;
        }
    }
    return found;
}

Bytes withoutSprm(ByteView list, SprmOpcode opcode) {
    Bytes result;
    result.reserve(list.size());
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (entry.opcode != opcode) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return result;
}

Bytes withSprm(ByteView list, SprmOpcode opcode, ByteView operand) {
    Bytes result = withoutSprm(list, opcode);
    result.push_back(static_cast<std::uint8_t>(opcode));
    result.push_back(static_cast<std::uint8_t>(opcode >> 8));
    result.insert(result.end(), operand.begin(), operand.end());
    return result;
}

Bytes withSprm8(ByteView list, SprmOpcode opcode, unsigned operand) {
    return withSprm(list, opcode, littleEndian(operand, 1));
}

Bytes withSprm16(ByteView list, SprmOpcode opcode, unsigned operand) {
    return withSprm(list, opcode, littleEndian(operand, 2));
}

Bytes withSprm32(ByteView list, SprmOpcode opcode, std::uint32_t operand) {
    return withSprm(list, opcode, littleEndian(operand, 4));
}

} // namespace qvnd::word
