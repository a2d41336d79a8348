#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/TextParts.h"

#include <algorithm>
#include <array>
#include <vector>

namespace qvnd::word {

namespace {

// Numbers of pairs by version of the FIB.
struct Version {
    std::uint16_t nFib;
    std::size_t pairs;
};
constexpr std::array<Version, 5> versions{
    {{0x00C1, 0x5D}, {0x00D9, 0x6C}, {0x0101, 0x88}, {0x010C, 0xA4}, {0x0112, 0xB7}}};

void checkSize(const Fib& fib, Findings& findings) {
    for (const Version& version : versions) {
        if (version.nFib == fib.nFib && version.pairs != fib.pairs.size()) {
            findings.add("fib.pairs", u"FIB 版本 " + hexadecimal(fib.nFib) + u" 应有 " +
                                          digits(std::int64_t(version.pairs)) + u" 个位置，实有 " +
                                          digits(std::int64_t(fib.pairs.size())) + u" 个");
        }
    }
}

// Pairs that hold no place, or one that every version of the program leaves to chance.
bool isNoPlace(std::size_t pair) {
    constexpr std::array<FibPair, 6> others{FibPair::DateTime, FibPair::Unused1, FibPair::Unused2,
                                            FibPair::Unused3,  FibPair::Unused4, FibPair::DocUndo};
    return std::any_of(others.begin(), others.end(),
                       [&](FibPair other) { return static_cast<std::size_t>(other) == pair; });
}

void checkPlaces(const Evidence& evidence, Findings& findings) {
    for (std::size_t i = 0; i < evidence.fib.pairs.size(); ++i) {
        const FcLcb place = evidence.fib.pairs[i];
        const bool outside = std::uint64_t{place.fc} + place.lcb > evidence.table.size();
        if (place.lcb != 0 && outside && !isNoPlace(i)) {
            findings.add("fib.place", u"FIB 第 " + digits(std::int64_t(i)) + u" 个位置（" +
                                          hexadecimal(place.fc) + u"，长 " + digits(place.lcb) +
                                          u"）超出表流");
        }
    }
}

// The counts as they stand: who reads the document takes a negative one as 0.
bool hasNegativeCount(ByteView wordDocument) {
    constexpr std::size_t wordsAt = 32;   // csw, [MS-DOC] 2.5.1
    constexpr std::size_t firstCount = 3; // ccpText, of FibRgLw97
    LittleEndianReader reader(wordDocument, "FIB");
    reader.seek(wordsAt);
    reader.skip(std::size_t{2} * reader.u16());
    std::vector<std::uint32_t> longs(reader.u16());
    for (std::uint32_t& value : longs) {
        value = reader.u32();
    }
    return std::any_of(textParts.begin(), textParts.end(), [&](const TextPartFacts& part) {
        const std::size_t at = firstCount + static_cast<std::size_t>(part.part);
        return at < longs.size() && longs[at] > 0x7FFFFFFF;
    });
}

} // namespace

void checkFib(const Evidence& evidence, Findings& findings) {
    checkSize(evidence.fib, findings);
    checkPlaces(evidence, findings);
    if (evidence.fib.cbMac > evidence.word.size()) {
        findings.add("fib.size", u"FIB 写明的长度 " + digits(evidence.fib.cbMac) +
                                     u" 大于 WordDocument 流的长度 " +
                                     digits(std::int64_t(evidence.word.size())));
    }
    if (hasNegativeCount(evidence.word)) {
        findings.add("fib.count", u"FIB 中的字符数为负");
    }
    if (evidence.fib.ccp.text == 0) {
        findings.add("fib.count", u"正文没有字符");
    }
}

} // namespace qvnd::word
