#include "platform/word/docfile/format/Fib.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/TextParts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::uint16_t wordMagic = 0xA5EC;
// Files of Word 97 carry 0xC1; a few, of its first builds, 0xC0.
constexpr std::uint16_t firstOfWord97 = 0x00C0;
constexpr std::uint16_t nFibBack = 0x00BF;
// FibBase.cQuickSaves since Word 2000; FibRgCswNewData2000.cQuickSavesNew has the number, up to 15.
constexpr unsigned cQuickSavesSinceWord2000 = 0xF;
constexpr std::size_t wordsOfRgW97 = 14;
constexpr std::size_t longsOfRgLw97 = 22;

enum Flag : unsigned {
    flagDot = 0x0001,
    flagGlsy = 0x0002,
    flagComplex = 0x0004,
    flagHasPic = 0x0008,
    flagEncrypted = 0x0100,
    flagWhichTblStm = 0x0200,
    flagReadOnlyRecommended = 0x0400,
    flagWriteReservation = 0x0800,
    flagExtChar = 0x1000,
    flagFarEast = 0x4000,
    flagObfuscated = 0x8000
};
constexpr unsigned quickSavesShift = 4;

bool isOlderWordMagic(unsigned magic) {
    // Word 2, Word 6 and 95, and the Far Eastern editions of Word 6 and 95.
    return magic == 0xA5DB || magic == 0xA5DC || (magic >= 0xA697 && magic <= 0xA699);
}

[[noreturn]] void refuse(FormatError::Kind kind, const std::string& detail) {
    throw FormatError(kind, "FIB: " + detail);
}

void takeFlags(Fib& fib, unsigned flags) {
    fib.fDot = (flags & flagDot) != 0;
    fib.fGlsy = (flags & flagGlsy) != 0;
    fib.fComplex = (flags & flagComplex) != 0;
    fib.fHasPic = (flags & flagHasPic) != 0;
    fib.fEncrypted = (flags & flagEncrypted) != 0;
    fib.fWhichTblStm = (flags & flagWhichTblStm) != 0;
    fib.fReadOnlyRecommended = (flags & flagReadOnlyRecommended) != 0;
    fib.fWriteReservation = (flags & flagWriteReservation) != 0;
    fib.fExtChar = (flags & flagExtChar) != 0;
    fib.fFarEast = (flags & flagFarEast) != 0;
    fib.fObfuscated = (flags & flagObfuscated) != 0;
}

unsigned flagsOf(const Fib& fib) {
    return (fib.fDot ? flagDot : 0U) | (fib.fGlsy ? flagGlsy : 0U) |
           (fib.fComplex ? flagComplex : 0U) | (fib.fHasPic ? flagHasPic : 0U) |
           (fib.fEncrypted ? flagEncrypted : 0U) | (fib.fWhichTblStm ? flagWhichTblStm : 0U) |
           (fib.fReadOnlyRecommended ? flagReadOnlyRecommended : 0U) |
           (fib.fWriteReservation ? flagWriteReservation : 0U) | (fib.fExtChar ? flagExtChar : 0U) |
           (fib.fFarEast ? flagFarEast : 0U) | (fib.fObfuscated ? flagObfuscated : 0U) |
           (cQuickSavesSinceWord2000 << quickSavesShift);
}

void readBase(Fib& fib, LittleEndianReader& reader) {
    reader.skip(2); // wIdent, judged before
    fib.nFib = reader.u16();
    reader.skip(2);
    fib.lid = reader.u16();
    fib.pnNext = reader.u16();
    takeFlags(fib, reader.u16());
    reader.skip(2);
    fib.lKey = reader.u32();
    reader.skip(1);
    fib.fMac = (reader.u8() & 1) != 0;
    reader.skip(4);
    fib.fcMin = reader.u32();
    fib.fcMac = reader.u32();
}

// The numbers of FibRgLw97; a count that is negative or missing is taken as 0.
void takeLongs(Fib& fib, const std::vector<std::uint32_t>& longs) {
    const auto at = [&](std::size_t i) {
        const std::uint32_t value = i < longs.size() ? longs[i] : 0;
        return value > 0x7FFFFFFF ? 0 : value;
    };
    fib.cbMac = at(0);
    constexpr std::size_t firstPart = 3; // ccpText
    for (const TextPartFacts& part : textParts) {
        fib.ccp.*part.length = at(firstPart + static_cast<std::size_t>(part.part));
    }
}

void readVariableParts(Fib& fib, LittleEndianReader& reader) {
    const std::size_t words = reader.u16();
    for (std::size_t i = 0; i < words; ++i) {
        const std::uint16_t value = reader.u16();
        fib.lidFE = i == wordsOfRgW97 - 1 ? value : fib.lidFE;
    }
    std::vector<std::uint32_t> longs(reader.u16());
    for (std::uint32_t& value : longs) {
        value = reader.u32();
    }
    takeLongs(fib, longs);

    const std::size_t pairs = std::min<std::size_t>(reader.u16(), reader.remaining() / 8);
    fib.pairs.resize(pairs);
    for (FcLcb& pair : fib.pairs) {
        pair.fc = reader.u32();
        pair.lcb = reader.u32();
    }
    if (reader.remaining() >= 4 && reader.u16() != 0) {
        fib.nFib = reader.u16();
        fib.quickSaves = reader.remaining() >= 2 ? reader.u16() : 0;
    }
}

void writeBase(const Fib& fib, LittleEndianWriter& out) {
    out.u16(wordMagic);
    out.u16(Fib::word97);
    out.u16(0);
    out.u16(fib.lid);
    out.u16(fib.pnNext);
    out.u16(flagsOf(fib));
    out.u16(nFibBack);
    out.u32(fib.lKey);
    out.u8(0);
    out.u8(fib.fMac ? 1 : 0);
    out.zeros(4);
    out.u32(fib.fcMin);
    out.u32(fib.fcMac);
}

// The flag stands where later versions have it.
bool isOlderAndEncrypted(ByteView wordDocumentStream) {
    constexpr std::size_t flagsAt = 10;
    constexpr unsigned encrypted = 0x0100;
    LittleEndianReader reader(wordDocumentStream, "FIB");
    if (wordDocumentStream.size() < flagsAt + 2) {
        return false;
    }
    reader.seek(flagsAt);
    return (reader.u16() & encrypted) != 0;
}

} // namespace

std::uint64_t PartLengths::sideTotal() const {
    return startOf(TextPart::headerTextBoxes, *this) + headerTextBoxes - text;
}

FcLcb Fib::at(FibPair pair) const {
    const auto index = static_cast<std::size_t>(pair);
    return index < pairs.size() ? pairs[index] : FcLcb{};
}

void Fib::set(FibPair pair, FcLcb place) {
    const auto index = static_cast<std::size_t>(pair);
    if (index >= pairs.size()) {
        pairs.resize(index + 1);
    }
    pairs[index] = place;
}

bool isOlderThanWord97(ByteView wordDocumentStream) {
    if (wordDocumentStream.size() < 4) {
        return false;
    }
    LittleEndianReader reader(wordDocumentStream, "FIB");
    const unsigned magic = reader.u16();
    const unsigned version = reader.u16();
    return isOlderWordMagic(magic) || (magic == wordMagic && version < firstOfWord97);
}

Fib readFib(ByteView wordDocumentStream) {
    LittleEndianReader magicReader(wordDocumentStream, "FIB");
    if (wordDocumentStream.size() < 4) {
        refuse(FormatError::Kind::damaged, "the WordDocument stream is empty");
    }
    const unsigned magic = magicReader.u16();
    if (isOlderThanWord97(wordDocumentStream)) {
        refuse(isOlderAndEncrypted(wordDocumentStream) ? FormatError::Kind::encrypted
                                                       : FormatError::Kind::olderThanWord97,
               "magic number " + std::to_string(magic));
    }
    if (magic != wordMagic) {
        refuse(FormatError::Kind::notWord, "magic number " + std::to_string(magic));
    }
    Fib fib;
    LittleEndianReader reader(wordDocumentStream, "FIB");
    readBase(fib, reader);
    if (fib.fEncrypted || fib.fObfuscated) {
        refuse(FormatError::Kind::encrypted, "the file is encrypted");
    }
    readVariableParts(fib, reader);
    return fib;
}

Bytes encodeFib(const Fib& fib) {
    LittleEndianWriter out;
    writeBase(fib, out);
    out.u16(wordsOfRgW97);
    out.zeros(2 * (wordsOfRgW97 - 1));
    out.u16(fib.lidFE);

    out.u16(longsOfRgLw97);
    out.u32(fib.cbMac);
    out.zeros(8);
    for (const TextPartFacts& part : textParts) {
        out.u32(fib.ccp.*part.length);
    }
    out.zeros(4 * (longsOfRgLw97 - 11));

    out.u16(Fib::pairsOfWord2003);
    for (std::size_t i = 0; i < Fib::pairsOfWord2003; ++i) {
        const FcLcb pair = fib.at(static_cast<FibPair>(i));
        out.u32(pair.fc);
        out.u32(pair.lcb);
    }
    out.u16(2); // cswNew
    out.u16(Fib::word2003);
    out.u16(fib.quickSaves);
    return out.take();
}

} // namespace qvnd::word
