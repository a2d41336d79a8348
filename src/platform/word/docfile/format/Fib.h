#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/format/FibPairs.h"

#include <cstdint>
#include <vector>

namespace qvnd::word {

// Where a structure lies in the table stream; a length of 0 means that it is not there.
struct FcLcb {
    std::uint32_t fc = 0;
    std::uint32_t lcb = 0;
    bool operator==(const FcLcb&) const = default;
};

// Lengths of the parts of a document, in characters, in the order in which they follow each other.
struct PartLengths {
    std::uint32_t text = 0;
    std::uint32_t footnotes = 0;
    std::uint32_t headers = 0;
    std::uint32_t macros = 0; // unused since Word 97
    std::uint32_t comments = 0;
    std::uint32_t endnotes = 0;
    std::uint32_t textBoxes = 0;
    std::uint32_t headerTextBoxes = 0;

    // Of everything behind the main text.
    std::uint64_t sideTotal() const;
    bool operator==(const PartLengths&) const = default;
};

// The file information block at the start of the WordDocument stream, [MS-DOC] 2.5.1. Default
// values are those of a new document as this program writes it.
struct Fib {
    static constexpr std::uint16_t word97 = 0x00C1;
    static constexpr std::uint16_t word2003 = 0x010C;
    static constexpr std::size_t pairsOfWord2003 = 0xA4;

    std::uint16_t nFib = word2003; // nFibNew when there is one
    std::uint16_t lid = 0x0409;    // the format wants this one for East Asian installations
    std::uint16_t pnNext = 0;      // where the entries of AutoText lie; 0 for none
    bool fDot = false;
    bool fGlsy = false;
    bool fComplex = false;
    bool fHasPic = false;
    bool fEncrypted = false;
    bool fWhichTblStm = true; // "1Table", else "0Table"
    bool fReadOnlyRecommended = false;
    bool fWriteReservation = false;
    bool fExtChar = true;
    bool fFarEast = true;
    bool fObfuscated = false;
    bool fMac = false;
    std::uint32_t lKey = 0;
    std::uint32_t fcMin = 0; // start and end of the text in files of one piece, as old readers
    std::uint32_t fcMac = 0; // want it
    std::uint16_t lidFE = 0x0804;
    std::uint16_t quickSaves = 0; // since the last whole save; 15 stands for more, too
    std::uint32_t cbMac = 0;      // bytes of the WordDocument stream that bear meaning
    PartLengths ccp;
    std::vector<FcLcb> pairs; // by FibPair; as many as the file has

    // A pair that the file does not have is {0, 0}.
    FcLcb at(FibPair pair) const;
    void set(FibPair pair, FcLcb place);
    const char16_t* tableStreamName() const { return fWhichTblStm ? u"1Table" : u"0Table"; }
};

// Whether it is the stream of a document of Word 95 or before.
bool isOlderThanWord97(ByteView wordDocumentStream);

// Throws FormatError: notWord (no FIB), olderThanWord97, encrypted (obfuscated files, too),
// damaged.
Fib readFib(ByteView wordDocumentStream);

// A FIB of Word 2003: FibBase says Word 97, FibRgCswNew says 0x010C, 0xA4 pairs.
Bytes encodeFib(const Fib& fib);

} // namespace qvnd::word
