#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/ListNumbers.h"
#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/LayoutSource.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace qvnd::layout {

// What page fields show on the page at hand.
struct PageFields {
    std::u16string number = u"1";
    int totalPages = 1;
};

// One thing on a line: a character, a picture, a tab.
struct TextItem {
    enum class Kind : std::uint8_t { character, tab, picture, lineBreak, pageBreak, columnBreak };

    Kind kind = Kind::character;
    char32_t character = 0;
    FaceId face = 0;
    double size = 0;   // of the font, twips
    double width = 0;  // twips; of a tab only once it is placed
    double height = 0; // of a picture
    double raised = 0; // above the line's foot
    const word::ResolvedText* format = nullptr;
    word::Cp at = 0;
    word::DataBlob picture;
    std::optional<std::uint32_t> note{}; // a footnote that is referred to here
    bool isLabel = false;
    // A list's label ends here: what follows begins at the next tab stop or behind a blank.
    bool endsLabel = false;
};

// A paragraph as it is read: what is seen of it, and the look of its mark.
struct ParagraphItems {
    std::vector<TextItem> items;
    FaceId markFace = 0;
    double markSize = 210;
    double characterWidth = 210;   // of a full-width character, for indents in characters
    std::vector<word::Cp> anchors; // of drawings
    bool startsPage = false;       // a page break stands before all of it
    bool isLeftOut = false;        // takes no room at all
};

// Whether the anchor's index is that of a footnote or an endnote.
inline bool namesNote(const word::Anchor& anchor) {
    return anchor.kind == word::AnchorKind::footnote || anchor.kind == word::AnchorKind::endnote;
}

// Reads one story's paragraphs. Instructions of fields, hidden and deleted text are not seen.
class StoryReader {
public:
    // What all stories of one document share.
    struct Shared {
        Shared(const LayoutSource& from, FontMetrics& metrics)
            : source(from), fonts(metrics), formats(*from.tables),
              numbers(*from.tables, formats.levels()) {}

        const LayoutSource& source;
        FontMetrics& fonts;
        // An empty paragraph's mark takes over what is said of the mark before (LayoutOptions).
        bool marksInherit = false;
        bool showsDeleted = false; // text that a tracked change deletes, struck out
        // Breaks, languages and symbols as the office suite has them (LayoutOptions::officeLines):
        // codes of symbol fonts (0xF000 and on) stay, and the face knows what they stand for.
        bool officeText = false;
        word::FormatResolver formats;
        word::ListNumbers numbers;
        std::map<std::uint32_t, std::pair<double, double>> pictureSizes; // by blob, in twips
        std::vector<std::u16string> noteMarks; // by note: its number, as its form says
    };

    // `note`: the note whose text the story is, whose own number stands in it.
    StoryReader(Shared& shared, const word::Story& story,
                std::optional<std::uint32_t> note = std::nullopt);

    // `start`: where the paragraph begins; `counts` whether a list counts it on.
    ParagraphItems read(std::size_t paragraph, word::Cp start, const PageFields& fields);

private:
    struct Span { // text that is not seen, or is seen as something else
        enum class Shows : std::uint8_t { nothing, pageNumber, pageCount, text };
        word::Cp begin = 0;
        word::Cp end = 0;
        Shows shows = Shows::nothing;
        std::u16string text{};
    };

    void findFields();
    bool endsParagraph(word::Cp at) const;
    // What the field of that type shows anew, by the instruction between the two positions.
    Span spanOf(std::uint8_t type, word::Cp begin, word::Cp separator) const;
    std::u16string shownBy(const Span& span, const PageFields& fields) const;
    const Span* spanAt(word::Cp at) const;
    const word::CharacterRun& runAt(word::Cp at);
    const word::ResolvedText& formatAt(word::Cp at, word::StyleIndex style);
    const word::ResolvedText& formatOfMark(std::size_t paragraph, word::Cp start, word::Cp at);
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
    void addPicture(word::Cp at, const word::ResolvedText& format, ParagraphItems& result);
    void addNote(word::Cp at, const word::ResolvedText& format, ParagraphItems& result);
    // A character of a symbol font, by its code with or without 0xF000.
    void addSymbol(char16_t code, std::uint16_t font, word::Cp at, const word::ResolvedText& format,
                   ParagraphItems& result);
    FaceId faceOf(const word::ResolvedText& format, char32_t c);
    FaceId faceOf(std::uint16_t font, bool asksForChinese, const word::ResolvedText& format);
    std::u16string fontName(std::uint16_t index) const;

    Shared& shared_;
    const word::Story& story_;
    std::optional<std::uint32_t> note_;
    std::vector<Span> spans_; // ascending, apart from each other
    std::map<std::size_t, std::optional<word::ListLabel>> labels_; // counted once
    std::size_t run_ = 0;
    word::Cp runStart_ = 0;
    const word::CharacterRun* formatRun_ = nullptr;
    word::StyleIndex formatStyle_ = 0;
    const word::ResolvedText* format_ = nullptr;
    std::map<std::pair<std::uint16_t, unsigned>, FaceId> faces_;
};

} // namespace qvnd::layout
