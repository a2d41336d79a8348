#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/FormattingPage.h"

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

// Paragraph formatting in pages, [MS-DOC] 2.9.174 PapxFkp, 2.9.23 BxPap, 2.9.175 PapxInFkps and
// 2.9.114 GrpPrlAndIstd.
namespace qvnd::word {

// A paragraph, its mark included, with its properties in the form that the file needs.
struct FormattedParagraph {
    Cp length = 0;
    StyleIndex style = 0;
    ByteView properties;
};

// Stores a record in the Data stream and answers its offset there.
using StoreInDataStream = std::function<std::uint32_t(ByteView record)>;

// The most bytes of properties that a PrcData holds: what a paragraph may have, or a piece's
// modifier.
inline constexpr std::size_t longestPrcData = 0x3FA2;

// The pages for text at file offset `fc`, two bytes a character, handed on one by one; paragraphs
// of length 0 are left out. Properties that no page has room for are given to `store` as a PrcData
// record, once for each list, and the page names its offset (sprmPHugePapx). Lists longer than
// longestPrcData are cut. The properties of all paragraphs outlive the object.
class ParagraphPages {
public:
    ParagraphPages(std::uint32_t fc, StoreInDataStream store, FormattingPages::Take take);

    void add(const FormattedParagraph& paragraph);
    // Hands the last page on.
    void finish() { pages_.finish(); }

private:
    std::uint32_t stored(ByteView list);

    StoreInDataStream store_;
    FormattingPages pages_;
    std::unordered_map<const std::uint8_t*, std::uint32_t> stored_; // offsets
};

// A PrcData record: the properties behind their length, [MS-DOC] 2.9.211.
Bytes encodePrcData(ByteView properties);
// The properties of the PrcData that starts at `offset` of the Data stream.
// Throws FormatError (damaged) when it is not wholly inside.
ByteView decodePrcData(ByteView dataStream, std::uint32_t offset);

struct ParagraphEntry {
    std::uint32_t firstFc = 0;
    std::uint32_t limitFc = 0;
    StyleIndex style = 0;
    ByteView properties; // of the page's bytes
};

struct ParagraphPage {
    std::vector<ParagraphEntry> entries; // ascending, none empty
    bool sound = true;                   // false: something was out of bounds and left out
};

// Throws FormatError (damaged) for what cannot be a page.
ParagraphPage decodeParagraphPage(ByteView page);

} // namespace qvnd::word
