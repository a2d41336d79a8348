#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/format/TextParts.h"

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qvnd::word {

// Where a stretch of text lies (Pcd).
struct TextPiece {
    Cp begin = 0;
    Cp end = 0;
    std::uint32_t fc = 0; // of the first character, in bytes
    bool wide = true;     // two bytes a character
    std::uint16_t prm = 0;

    std::uint32_t fcOf(Cp cp) const { return fc + (cp - begin) * (wide ? 2 : 1); }
    std::uint64_t fcEnd() const { return fc + std::uint64_t{end - begin} * (wide ? 2 : 1); }
};

// A run of a formatting page.
struct FormatRun {
    std::uint32_t begin = 0; // in bytes of the WordDocument stream
    std::uint32_t end = 0;
    StyleIndex style = 0; // of a paragraph
    ByteView sprms;
};

// A paragraph with all its properties: those of its page, those kept in the Data stream, those of
// its piece.
struct CheckedParagraph {
    Cp begin = 0;
    Cp end = 0; // behind its mark
    char16_t mark = 0;
    Bytes sprms;
};

// What a property list belongs to, and with that which sprm it may hold.
enum class ListPlace : std::uint8_t { characters, paragraph, tableStyle, section, piece };

// A property list of a style, to be checked once the tables it points to are known.
struct StyleProperties {
    std::u16string where;
    ListPlace place = ListPlace::paragraph;
    ByteView sprms;
};

// A bullet that a picture shows, counted from the start of their bookmark.
struct PictureBullet {
    std::u16string where;
    std::uint32_t picture = 0;
};

// What the checks look at, filled in step by step: each check may rely on those before it.
struct Evidence {
    Bytes word; // the streams
    Bytes table;
    Bytes data;
    std::set<std::u16string> objects; // names of the storages in ObjectPool
    Fib fib;

    std::vector<std::optional<StyleKind>> styles; // by istd
    std::vector<StyleProperties> styleProperties;
    std::vector<std::uint16_t> defaultFonts; // that the head of the style sheet names
    std::size_t fonts = 0;
    std::size_t authors = 0;
    std::size_t listOverrides = 0;
    std::vector<PictureBullet> pictureBullets;

    std::vector<TextPiece> pieces; // ascending, without gaps; empty when the text is unusable
    std::vector<Bytes> pieceLists; // property lists that pieces name (Prc)
    std::u16string text;
    std::vector<FormatRun> characters; // ascending
    std::vector<FormatRun> paragraphs;
    std::vector<Cp> sectionEnds; // of the main text
    std::vector<CheckedParagraph> marked;

    // Empty when the FIB's place lies outside of the table stream.
    ByteView at(FibPair pair) const;
    std::array<Cp, textParts.size()> partLengths() const;
    Cp partBegin(TextPart part) const;
    // Nothing when no piece holds `cp`.
    std::optional<std::uint32_t> fcOf(Cp cp) const;
    const TextPiece* pieceOf(Cp cp) const;
    const FormatRun* characterRunOf(Cp cp) const;
    // The value of a one-byte property of the character at `cp`; 0 where nothing sets it.
    unsigned characterFlag(Cp cp, std::uint16_t opcode) const;
};

// The run that holds the byte `fc`, or null. `runs` ascend.
const FormatRun* runAt(const std::vector<FormatRun>& runs, std::uint32_t fc);

// "正文第 12 个字符" and the like, for findings.
std::u16string placeOf(const Evidence& evidence, Cp cp);

} // namespace qvnd::word
