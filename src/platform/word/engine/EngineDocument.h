#pragma once

#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/EngineContents.h"
#include "platform/word/engine/EngineHeadersFooters.h"
#include "platform/word/engine/EngineInlineShapes.h"
#include "platform/word/engine/EnginePageSetup.h"
#include "platform/word/engine/EngineParagraphs.h"
#include "platform/word/engine/EngineRange.h"
#include "platform/word/engine/EngineServices.h"
#include "platform/word/engine/EngineStyles.h"
#include "platform/word/engine/StoryEditor.h"
#include "platform/word/engine/WorkingDocument.h"
#include "platform/word/model/Document.h"
#include "platform/word/model/Window.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace qvnd::word {

struct ImportNotes;

// An open document with its selection: one in the main story and one in the header or
// footer that the view shows. Calls on a closed document throw 5825.
class EngineDocument : public Document {
public:
    // `activate` makes it the active document; `closed` hears that it was closed.
    struct Owner {
        std::function<void(EngineDocument&)> activate;
        std::function<void(EngineDocument&)> closed;
    };

    EngineDocument(DocumentContent content, std::filesystem::path path,
                   const EngineServices& services, Owner owner);

    void Activate() override;
    // With a contents in the document its page numbers are brought up to date first.
    void SaveAs(const std::filesystem::path& path) override;
    // Throws 5 for a document that was never to be saved. Where the first SaveAs() has failed, this
    // does nothing: the document goes on without a file until a SaveAs() succeeds, and the same
    // cause is not told again for each of many saves in between.
    void Save() override;
    // Saves, when it is to, to the file that SaveAs() has wanted last.
    void Close(std::optional<bool> saveChanges) override;
    void setSaved(bool saved) override;

    std::unique_ptr<word::Range> Range(int start, int end) override;
    Paragraphs& paragraphs() override { return paragraphs_; }
    Styles& styles() override { return styles_; }
    TablesOfContents& tablesOfContents() override { return contents_; }
    PageSetup& pageSetup() override { return pageSetup_; }

    const std::filesystem::path& path() const { return path_; }
    bool isSaved() const { return isSaved_; }
    // What the document has lost since it was read or made, told with the next save.
    void addLosses(const std::vector<std::u16string>& losses) {
        losses_.insert(losses_.end(), losses.begin(), losses.end());
    }

    // The content, to look at or to change.
    WorkingDocument& read();
    WorkingDocument& change();

    // The story that the selection is in, and the selection there.
    WorkingStory& story();
    Insertion& insertion();
    StoryEditor editor();
    Insertion& mainInsertion() { return main_; }
    void selectInMain(Cp start, Cp end);

    SeekView seekView() const { return seekView_; }
    // A header or footer is entered at its start; the main story where it was left.
    void seek(SeekView view);
    // The section of the selection; in a header or footer the one that it belongs to.
    std::size_t selectedSection();
    HeaderKind headerKind() const;
    // Text was put in front of that header's text.
    void moveHeaderInsertion(HeaderKind kind, Cp length);

    void insertFile(const std::filesystem::path& path);
    EngineInlineShapes& inlineShapes() { return inlineShapes_; }
    const EngineServices& services() const { return services_; }
    EngineSection& section() { return section_; }

private:
    void askAndSave(std::optional<bool> saveChanges);
    void bringIn(const DocumentContent& source, ImportNotes& notes);
    void written(const std::filesystem::path& path);

    std::unique_ptr<WorkingDocument> content_;
    std::filesystem::path path_;
    std::filesystem::path wanted_; // by SaveAs()
    const EngineServices& services_;
    Owner owner_;
    DocumentWriter writer_;
    bool isWritten_ = false; // by our writer
    bool isSaved_ = true;
    std::vector<std::u16string> losses_;
    std::size_t rangesTold_ = 0;    // the same of DocumentWriter::rangesWithoutRoom()
    std::size_t cutListsTold_ = 0;  // DocumentWriter::cutLists() as far as it was told
    bool areSmartTagsTold_ = false; // those of files that came in

    SeekView seekView_ = SeekView::mainDocument;
    Insertion main_;
    Insertion header_; // of the header or footer that is in view

    EngineParagraphs paragraphs_{*this};
    EngineStyles styles_{*this};
    EngineTablesOfContents contents_{*this};
    EnginePageSetup pageSetup_{*this};
    EngineInlineShapes inlineShapes_{*this};
    EngineSection section_{*this};
};

} // namespace qvnd::word
