#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/TextParts.h"
#include "platform/word/docfile/text/CommentTables.h"

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <vector>

// The texts that characters of the main story stand for, whatever tables their part has.
namespace qvnd::word {

// One row for each kind of anchor that stands for a text of its own.
struct SidePart {
    AnchorKind kind = AnchorKind::footnote;
    TextPart part = TextPart::footnotes;
    const char16_t* measure = nullptr; // for remarks, behind a number
    const char* plural = nullptr;      // for programs that ask how many there are
};
inline constexpr std::array<SidePart, 3> sideParts{{
    {AnchorKind::footnote, TextPart::footnotes, u"个", "footnotes"},
    {AnchorKind::endnote, TextPart::endnotes, u"个", "endnotes"},
    {AnchorKind::comment, TextPart::comments, u"条", "comments"},
}};

// A text as the tables of its part have it.
struct SidePlace {
    Cp at = 0; // its reference in the main story
    TextPlace text;
    SideStory story;                   // without its text
    std::optional<CommentRange> range; // what a comment speaks of
};

using TableSource = std::function<ByteView(FibPair)>;
using TableTarget = std::function<void(FibPair, const Bytes&)>;

// Those without a text are left out, and counted in `damage`.
std::vector<SidePlace> decodeSidePlaces(AnchorKind kind, const TableSource& table, Cp mainLength,
                                        Cp partLength, SideDamage& damage);
// Puts every table of the part, empty ones where there is no text. `end`: where tables over all
// text end.
void encodeSidePlaces(AnchorKind kind, std::span<const SidePlace> places, Cp mainLength, Cp end,
                      const TableTarget& put);

} // namespace qvnd::word
