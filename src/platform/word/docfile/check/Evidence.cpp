#include "platform/word/docfile/check/Evidence.h"

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sprm.h"

#include <algorithm>

namespace qvnd::word {

ByteView Evidence::at(FibPair pair) const {
    const FcLcb place = fib.at(pair);
    if (place.fc > table.size() || place.lcb > table.size() - place.fc) {
        return {};
    }
    return ByteView(table).subspan(place.fc, place.lcb);
}

std::array<Cp, textParts.size()> Evidence::partLengths() const {
    std::array<Cp, textParts.size()> lengths{};
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        lengths[i] = lengthOf(textParts[i].part, fib.ccp);
    }
    return lengths;
}

Cp Evidence::partBegin(TextPart part) const { return static_cast<Cp>(startOf(part, fib.ccp)); }

const TextPiece* Evidence::pieceOf(Cp cp) const {
    const auto behind = std::upper_bound(pieces.begin(), pieces.end(), cp,
                                         [](Cp at, const TextPiece& p) { return at < p.begin; });
    if (behind == pieces.begin() || cp >= std::prev(behind)->end) {
        return nullptr;
    }
    return &*std::prev(behind);
}

std::optional<std::uint32_t> Evidence::fcOf(Cp cp) const {
    const TextPiece* piece = pieceOf(cp);
    return piece == nullptr ? std::nullopt : std::optional(piece->fcOf(cp));
}

const FormatRun* Evidence::characterRunOf(Cp cp) const {
    const auto fc = fcOf(cp);
    return fc ? runAt(characters, *fc) : nullptr;
}

unsigned Evidence::characterFlag(Cp cp, std::uint16_t opcode) const {
    const FormatRun* run = characterRunOf(cp);
    const auto entry = run == nullptr ? std::nullopt : findSprm(run->sprms, opcode);
    return entry && !entry->operand.empty() ? entry->operand[0] : 0;
}

const FormatRun* runAt(const std::vector<FormatRun>& runs, std::uint32_t fc) {
    const auto behind =
        std::upper_bound(runs.begin(), runs.end(), fc,
                         [](std::uint32_t at, const FormatRun& run) { return at < run.begin; });
    if (behind == runs.begin() || fc >= std::prev(behind)->end) {
        return nullptr;
    }
    return &*std::prev(behind);
}

std::u16string placeOf(const Evidence& evidence, Cp cp) {
    for (const TextPartFacts& part : textParts) {
        const Cp length = lengthOf(part.part, evidence.fib.ccp);
        if (cp < length) {
            return std::u16string(part.name) + u"第 " + digits(std::int64_t{cp} + 1) + u" 个字符";
        }
        cp -= length;
    }
    return u"文末之后第 " + digits(std::int64_t{cp} + 1) + u" 个字符";
}

} // namespace qvnd::word
