#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <string>
#include <vector>

// Where the text lies in the WordDocument stream: Clx with PlcPcd, Pcd, FcCompressed and Prc,
// [MS-DOC] 2.9.38, 2.8.35, 2.9.177, 2.9.73, 2.9.209.
namespace qvnd::word {

// Text that lies in one stretch. The document's text is the pieces one after another.
struct Piece {
    static constexpr std::uint16_t withoutParagraphMark = 1; // flag fNoParaLast

    Cp length = 0;              // in characters
    std::uint32_t fc = 0;       // byte offset of its first character in the WordDocument stream
    bool compressed = false;    // one byte a character, else UTF-16
    std::uint16_t modifier = 0; // Prm; 0 for none
    std::uint16_t flags = 0;    // the Pcd's first word
    bool operator==(const Piece&) const = default;

    std::uint32_t bytesPerCharacter() const { return compressed ? 1 : 2; }
    // Behind its last character.
    std::uint64_t limitFc() const { return fc + std::uint64_t{length} * bytesPerCharacter(); }
};

struct PieceTable {
    std::vector<Piece> pieces;
    std::vector<Bytes> modifiers; // property lists (Prc) that a piece's Prm1 names by index
    bool operator==(const PieceTable&) const = default;
};

Bytes encodeClx(const PieceTable& table);

// Pieces that lie outside the stream of `streamSize` bytes are shortened to what lies inside, and
// those without a character left out; `*damage` (where given) counts them.
// Throws FormatError (damaged) when there is no table of pieces to read.
PieceTable decodeClx(ByteView clx, std::uint64_t streamSize, int* damage = nullptr);

// The properties that a piece's Prm adds to those of its characters and paragraphs: one entry
// for a Prm0, a copy of the list of `modifiers` for a Prm1; empty for none or an unknown one.
Bytes modifierProperties(const std::vector<Bytes>& modifiers, std::uint16_t modifier);

// A byte of compressed text, as the table of FcCompressed maps it.
char16_t decompressed(std::uint8_t byte);

} // namespace qvnd::word
