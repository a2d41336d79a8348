#include "platform/word/engine/DocumentMerge.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentSource.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/SectionProperties.h"

namespace qvnd::word {

namespace {

void append(WorkingDocument& document, const std::filesystem::path& file, const FontChange& font,
            ImportReport& report, DocumentConverter* converter, bool& areSmartTagsTold) {
    const DocumentReading source = readConverting(file, converter);
    ImportNotes notes;
    DocumentBody text =
        importDocument(document.tables(), document.bookmarkNames(), source.content, notes);
    if (!source.conversion.empty()) {
        report.converted(file, source.conversion);
    }
    notes.tell(report, file, areSmartTagsTold);
    WorkingStory main(text.main);
    main.changeCharacters(0, main.size(), propertyChange(document.tables(), font));
    insertDocument(document, document.main().size() - 1, std::move(text));
}

// The last file ends in a paragraph mark of its own, which becomes that of the document.
void dropLastParagraph(WorkingDocument& document) {
    WorkingStory& story = document.main();
    if (story.size() < 2) {
        return;
    }
    const Cp last = story.size() - 1;
    const ParagraphLook look = story.paragraphLook(last - 1);
    const bool isInTable =
        sprmValue(document.tables().lists[look.properties], sprm::PFInTable, 0) != 0;
    if (story.at(last - 1) != u'\r' || isInTable) {
        return;
    }
    const PropertyListId properties = story.characterProperties(last - 1);
    story.changeParagraphs(last, last + 1, [&](const ParagraphLook&) { return look; });
    story.changeCharacters(last, last + 1, [&](PropertyListId) { return properties; });
    story.erase(last - 1, last);
}

} // namespace

std::unique_ptr<WorkingDocument> mergeDocuments(std::span<const std::filesystem::path> files,
                                                const FontChange& font, ImportReport& report,
                                                DocumentConverter* converter) {
    auto document = std::make_unique<WorkingDocument>(normalTemplate());
    bool areSmartTagsTold = false;
    for (const std::filesystem::path& file : files) {
        append(*document, file, font, report, converter, areSmartTagsTold);
    }
    dropLastParagraph(*document);
    return document;
}

} // namespace qvnd::word
