#pragma once

#include "platform/word/docfile/format/Fib.h"

#include <array>
#include <optional>

// The parts of a document's text, one row each, [MS-DOC] 2.3. The reader, the writer and the
// checker read this table.
namespace qvnd::word {

// In the order in which the parts follow each other in the text.
enum class TextPart : std::uint8_t {
    main,
    footnotes,
    headers,
    macros, // unused since Word 97
    comments,
    endnotes,
    textBoxes,
    headerTextBoxes
};

// A table of positions in the table stream, and the size of the element behind each of them.
struct PositionTable {
    FibPair pair{};
    std::size_t elementSize = 0;
};

struct TextPartFacts {
    TextPart part = TextPart::main;
    const char16_t* name = nullptr; // for remarks
    std::uint32_t PartLengths::*length = nullptr;
    FibPair fields{};
    std::optional<PositionTable> texts; // where each text of the part begins
    // What stands for a text of the part in the part `host`, and where.
    std::optional<PositionTable> references;
    TextPart host = TextPart::main;
    char16_t anchor = 0;
};

inline constexpr std::array<TextPartFacts, 8> textParts{{
    {TextPart::main, u"正文", &PartLengths::text, FibPair::PlcfFldMom, {}, {}},
    {TextPart::footnotes,
     u"脚注",
     &PartLengths::footnotes,
     FibPair::PlcfFldFtn,
     {{FibPair::PlcffndTxt, 0}},
     {{FibPair::PlcffndRef, 2}},
     TextPart::main,
     0x02},
    {TextPart::headers,
     u"页眉页脚",
     &PartLengths::headers,
     FibPair::PlcfFldHdr,
     {{FibPair::PlcfHdd, 0}},
     {}},
    {TextPart::macros, u"宏", &PartLengths::macros, FibPair::PlcfFldMcr, {}, {}},
    {TextPart::comments,
     u"批注",
     &PartLengths::comments,
     FibPair::PlcfFldAtn,
     {{FibPair::PlcfandTxt, 0}},
     {{FibPair::PlcfandRef, 30}},
     TextPart::main,
     0x05},
    {TextPart::endnotes,
     u"尾注",
     &PartLengths::endnotes,
     FibPair::PlcfFldEdn,
     {{FibPair::PlcfendTxt, 0}},
     {{FibPair::PlcfendRef, 2}},
     TextPart::main,
     0x02},
    {TextPart::textBoxes,
     u"文本框",
     &PartLengths::textBoxes,
     FibPair::PlcfFldTxbx,
     {{FibPair::PlcftxbxTxt, 22}},
     {{FibPair::PlcSpaMom, 26}},
     TextPart::main,
     0x08},
    {TextPart::headerTextBoxes,
     u"页眉文本框",
     &PartLengths::headerTextBoxes,
     FibPair::PlcffldHdrTxbx,
     {{FibPair::PlcfHdrtxbxTxt, 22}},
     {{FibPair::PlcSpaHdr, 26}},
     TextPart::headers,
     0x08},
}};

constexpr const TextPartFacts& factsOf(TextPart part) {
    return textParts[static_cast<std::size_t>(part)];
}

// Whether the part's texts are notes: each has one character that stands for it, and nothing but
// their positions tells them apart.
constexpr bool hasNotes(const TextPartFacts& facts) {
    return facts.references && facts.texts && facts.texts->elementSize == 0;
}

// Whether the character, where it is special, stands for a text of some part.
constexpr bool standsForText(char16_t character) {
    for (const TextPartFacts& facts : textParts) {
        if (facts.references && facts.anchor == character) {
            return true;
        }
    }
    return false;
}

inline std::uint32_t lengthOf(TextPart part, const PartLengths& lengths) {
    return lengths.*factsOf(part).length;
}

// Where the part begins in the text: behind all parts before it.
inline std::uint64_t startOf(TextPart part, const PartLengths& lengths) {
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(part); ++i) {
        start += lengthOf(textParts[i].part, lengths);
    }
    return start;
}

} // namespace qvnd::word
