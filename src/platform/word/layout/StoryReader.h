#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/ListNumbers.h"
#include "platform/word/formatting/StyledParagraphs.h"
#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/CharacterFaces.h"
#include "platform/word/layout/FieldResults.h"
#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/LayoutSource.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::layout {

inline constexpr double twipsPerHalfPoint = 10;

// An item of a line: a character, a picture, a tab or a break.
struct TextItem {
    enum class Kind : std::uint8_t {
        character,
        tab,
        picture,
        optionalHyphen, // seen at the end of a line alone
        lineBreak,
        pageBreak,
        columnBreak
    };

    Kind kind = Kind::character;
    char32_t character = 0;
    FaceId face = 0;
    double size = 0;        // of the font, twips
    double width = 0;       // twips; the width of a tab is set when it is placed
    double height = 0;      // of a picture, in twips
    double hyphenWidth = 0; // of an optional hyphen at the end of a line, twips
    double raised = 0;      // above the baseline, in twips
    const word::ResolvedText* format = nullptr;
    word::Cp at = 0;
    word::DataBlob picture;
    std::optional<std::uint32_t>
        note{};                  // index of the note at the foot of the page, referenced here
    bool toOwnStop = false;      // of a tab: leads to a left stop that the paragraph sets
    bool isSetAsChinese = false; // of either script, but set in the East Asian font
    bool isLabel = false;
    // The last item of a list label. The text begins at the next tab stop or after a space.
    bool endsLabel = false;
};

inline bool isText(const TextItem& item) { return item.kind == TextItem::Kind::character; }
inline bool isBlankItem(const TextItem& item) { return isText(item) && isBlank(item.character); }
inline bool endsLine(const TextItem& item) {
    using Kind = TextItem::Kind;
    return item.kind == Kind::lineBreak || item.kind == Kind::pageBreak ||
           item.kind == Kind::columnBreak;
}
// Text other than blanks, or a picture.
inline bool isSeen(const TextItem& item) {
    return item.kind == TextItem::Kind::picture || (isText(item) && !isBlank(item.character));
}

// The visible items of a paragraph, and the formatting of its mark.
struct ParagraphItems {
    std::vector<TextItem> items;
    FaceId markFace = 0;
    double markSize = 210;
    double characterWidth = 210;   // of a full-width character, for indents in characters
    std::vector<word::Cp> anchors; // positions of drawing anchors
    double labelBefore = 0;        // twips of the label before the start of the first line
    bool startsPage = false;       // begins with a page break
    bool isLeftOut = false;        // yields no line
};

// Whether the anchor refers to a footnote or an endnote.
inline bool namesNote(const word::Anchor& anchor) {
    return anchor.kind == word::AnchorKind::footnote || anchor.kind == word::AnchorKind::endnote;
}

// Reads the paragraphs of one story. Field instructions and hidden text are left out, and deleted
// text unless Shared::showsDeleted is set.
class StoryReader {
public:
    // The state that all stories of one document share.
    struct Shared {
        // `office`: reads as LayoutOptions::officeLines says; `deletedToo`: see showsDeleted.
        Shared(const LayoutSource& from, FontMetrics& metrics, bool office = false,
               bool deletedToo = false)
            : source(from), fonts(metrics), marksInherit(office), showsDeleted(deletedToo),
              officeText(office), formats(*from.tables, office) {}

        // Those of the main story, read when they are asked for first.
        const word::StyledParagraphs& styledParagraphs();
        // Whether a text flows through a chain of shapes. All of it stands in the first one, where
        // it must not be lost.
        bool isLinked(std::uint32_t shapeText);

        const LayoutSource& source;
        FontMetrics& fonts;
        // The mark of an empty paragraph inherits the formatting of the previous mark
        // (LayoutOptions::officeLines).
        bool marksInherit;
        bool showsDeleted; // shows text deleted by a tracked revision, struck out
        // Handles breaks, languages and symbols as the office suite does
        // (LayoutOptions::officeLines). Symbol codes (from 0xF000 on) are kept; the face maps them.
        bool officeText;
        bool hasLeading = true; // see LineSetting
        word::FormatResolver formats;
        // Lists count in the main text, in notes, in the texts of shapes and in each header apart.
        enum class Counts : std::uint8_t { mainText, notes, shapes, header };
        std::map<std::pair<Counts, const word::Story*>, word::ListNumbers> numbers;
        std::set<const word::Story*> headers;
        std::optional<word::StyledParagraphs> styled;
        std::optional<std::set<std::uint32_t>> linked; // see isLinked()
        bool addsSpaces = true;                        // see gapBetween()
        // A picture in a line and its size in twips; none for a character that shows nothing.
        struct ShownPicture {
            word::DataBlob blob;
            double width = 0;
            double height = 0;
        };
        std::map<std::uint32_t, ShownPicture> pictures;          // by blob
        std::map<std::uint32_t, ShownPicture> picturesOfObjects; // by object
        std::vector<std::u16string> noteMarks; // by note: its number in its number format
        // The labels of paragraphs in lists, by story and paragraph: each is counted once, however
        // often it is composed.
        std::map<std::pair<const word::Story*, std::size_t>, std::optional<word::ListLabel>> labels;
    };

    // `note`: the index of the note whose text this story is; its number appears in the text.
    StoryReader(Shared& shared, const word::Story& story,
                std::optional<std::uint32_t> note = std::nullopt);

    // What is read next stands in that cell.
    void setCell(word::CellLook cell);
    // `start`: the position of the paragraph's first character.
    ParagraphItems read(std::size_t paragraph, word::Cp start, const PageFields& fields);

private:
    double characterWidthOf(const ParagraphItems& paragraph) const;
    const word::CharacterRun& runAt(word::Cp at);
    const word::ResolvedText& formatAt(word::Cp at, word::StyleIndex style);
    word::Cp unformattedFrom(std::size_t paragraph, word::Cp start);
    const word::ResolvedText& formatOfMark(std::size_t paragraph, word::Cp start,
                                           word::PropertyListId own);
    bool isUnseen(const word::ResolvedText& format) const;
    bool isUnseen(word::Cp start, word::Cp end, word::StyleIndex style);
    word::ListNumbers& numbers();
    std::u16string shownBy(const FieldResults::Span& span, const PageFields& fields);
    void readLabel(std::size_t paragraph, word::Cp start, ParagraphItems& result);
    void readCharacter(char16_t c, word::Cp at, const word::ResolvedText& format,
                       ParagraphItems& result);
    void addText(std::u16string_view text, word::Cp at, const word::ResolvedText& format,
                 ParagraphItems& result);
    void addCharacter(char32_t c, word::Cp at, const word::ResolvedText& format,
                      ParagraphItems& result);
    void addCharacter(char32_t c, FaceId face, word::Cp at, const word::ResolvedText& format,
                      ParagraphItems& result);
    void addSpecial(char16_t c, word::Cp at, const word::ResolvedText& format,
                    ParagraphItems& result);
    const Shared::ShownPicture& pictureOf(const word::ResolvedText& format);
    void addPicture(word::Cp at, const word::ResolvedText& format, ParagraphItems& result);
    // The first anchor from there on.
    std::vector<word::Anchor>::const_iterator anchorFrom(word::Cp at) const;
    // Its position; behind all text where none follows.
    word::Cp nextAnchor(word::Cp at) const;
    // The reference to a note there, or null.
    const word::Anchor* noteAt(word::Cp at) const;
    void addNote(word::Cp at, const word::ResolvedText& format, ParagraphItems& result);
    // `first`: the item that the character there begins.
    void attachNote(word::Cp at, std::size_t first, ParagraphItems& result) const;
    // Adds a character of a symbol font. `code`: with or without 0xF000 added.
    void addSymbol(char16_t code, std::uint16_t font, word::Cp at, const word::ResolvedText& format,
                   ParagraphItems& result);

    Shared& shared_;
    const word::Story& story_;
    std::optional<std::uint32_t> note_;
    FieldResults fields_;
    std::size_t run_ = 0;
    word::Cp runStart_ = 0;
    const word::CharacterRun* formatRun_ = nullptr;
    word::StyleIndex formatStyle_ = 0;
    word::CellLook cell_ = word::CellLook::none;
    const word::ResolvedText* format_ = nullptr;
    CharacterFaces faces_;
};

} // namespace qvnd::layout
