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

std::array<Cp, partCount> Evidence::partLengths() const {
    return {fib.ccp.text,     fib.ccp.footnotes, fib.ccp.headers,   fib.ccp.macros,
            fib.ccp.comments, fib.ccp.endnotes,  fib.ccp.textBoxes, fib.ccp.headerTextBoxes};
}

Cp Evidence::partBegin(Part part) const {
    const auto lengths = partLengths();
    Cp begin = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(part); ++i) {
        begin += lengths[i];
    }
    return begin;
}

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
    static constexpr std::array<const char16_t*, partCount> names{
        u"正文", u"脚注", u"页眉页脚", u"宏", u"批注", u"尾注", u"文本框", u"页眉文本框"};
    const auto lengths = evidence.partLengths();
    for (std::size_t i = 0; i < partCount; ++i) {
        if (cp < lengths[i]) {
            return std::u16string(names[i]) + u"第 " + digits(std::int64_t{cp} + 1) + u" 个字符";
        }
        cp -= lengths[i];
    }
    return u"文末之后第 " + digits(std::int64_t{cp} + 1) + u" 个字符";
}

} // namespace qvnd::word
