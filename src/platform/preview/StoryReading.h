#pragma once

#include "platform/preview/BlockStack.h"
#include "platform/preview/Looks.h"
#include "platform/preview/OwnReading.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/pictures/FlatDrawings.h"
#include "platform/word/formatting/ListNumbers.h"

#include <map>
#include <vector>

namespace qvnd::preview {

// What the stories of one document share while they are read.
struct ReadingContext {
    ReadingContext(const word::DocumentContent& source, DocumentReading& target)
        : document(source), reading(target), looks(source.tables, target.looks),
          main(word::joined(source.main)),
          drawings(word::flatDrawings(main->anchors, source.tables)),
          numbers(source.tables, looks.levels()), places(source.tables.lists) {}

    const word::DocumentContent& document;
    DocumentReading& reading;
    Looks looks;
    std::shared_ptr<const word::Story> main;
    word::FlatDrawings drawings; // of the main story
    word::ListNumbers numbers;
    word::TablePlaces places;
    std::map<std::uint32_t, std::optional<std::size_t>> pictures; // by blob
};

// Reads one story, paragraph by paragraph.
class StoryReading {
public:
    // The main story has sections, text boxes and floating pictures; any other has not.
    StoryReading(ReadingContext& context, const word::Story& story, const ReadingLimits& limits);

    // Tells in `isCut` whether the limits ended it.
    std::vector<Block> read(bool& isCut);

private:
    bool isMain() const { return &story_ == context_.main.get(); }
    void endParagraph(word::Cp at, const word::ParagraphRun& run);
    void closeParagraph(const word::ParagraphRun& run, const word::TablePlace& place);
    void label(Paragraph& paragraph, const word::ParagraphRun& run, const Looks::OfParagraph& look);
    void sectionEndsAt(word::Cp end);
    void take(word::Cp at, const word::ParagraphRun& run);
    void takeFieldMark(std::uint8_t character);
    void takeCharacter(word::Cp at, const word::ParagraphRun& run);
    void breakPage(const word::ParagraphRun& run);
    void append(QChar c, std::size_t look);
    void appendPicture(std::optional<std::size_t> picture, std::size_t look);
    void anchored(word::Cp at, std::size_t look);
    void addTextBoxes();
    char16_t symbol(word::PropertyListId properties) const;
    std::optional<std::size_t> pictureAt(word::PropertyListId properties);
    const word::CharacterRun& runAt(word::Cp at);

    ReadingContext& context_;
    const word::Story& story_;
    ReadingLimits limits_;
    BlockStack blocks_;
    Paragraph paragraph_;
    std::vector<const word::TextBox*> boxes_; // of the paragraph
    std::vector<bool> open_; // a field each: whether its instructions are being passed
    int instructions_ = 0;   // how many of them are
    std::size_t nextField_ = 0;
    std::size_t run_ = 0;
    word::Cp runStart_ = 0;
    std::size_t section_ = 0;
    word::Cp sectionEnd_ = 0;
    std::size_t paragraphs_ = 0;
    bool startsPage_ = false; // the next paragraph does
};

} // namespace qvnd::preview
