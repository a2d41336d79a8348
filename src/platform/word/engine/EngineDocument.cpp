#include "platform/word/engine/EngineDocument.h"

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/engine/ContentsPages.h"
#include "platform/word/engine/DocumentImport.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentSource.h"
#include "platform/word/engine/EngineErrors.h"

#include <algorithm>

namespace qvnd::word {

EngineDocument::EngineDocument(DocumentContent content, std::filesystem::path path,
                               const EngineServices& services, Owner owner)
    : content_(std::make_unique<WorkingDocument>(std::move(content))), path_(std::move(path)),
      services_(services), owner_(std::move(owner)),
      writer_(services.files ? services.files : realOutputFolder()) {
    selectInMain(0, 0);
}

WorkingDocument& EngineDocument::read() {
    if (!content_) {
        throw documentClosed();
    }
    return *content_;
}

WorkingDocument& EngineDocument::change() {
    WorkingDocument& content = read();
    isSaved_ = false;
    return content;
}

void EngineDocument::Activate() {
    read();
    owner_.activate(*this);
}

void EngineDocument::written(const std::filesystem::path& path) {
    path_ = path;
    isWritten_ = true;
    isSaved_ = true;
    for (const std::u16string& what : losses_) {
        services_.report.notCarried(path, what);
    }
    losses_.clear();
    if (const std::size_t ranges = writer_.rangesWithoutRoom(); ranges > rangesTold_) {
        rangesTold_ = ranges;
        services_.report.notCarried(path,
                                    u"批注所指的文字 " + digits(static_cast<std::int64_t>(ranges)) +
                                        u" 处未能标出，一个文档最多 16379 处，批注仍在原来的位置");
    }
    if (const std::size_t cut = writer_.cutLists(); cut > cutListsTold_) {
        cutListsTold_ = cut;
        services_.report.notCarried(path,
                                    u"文字的格式 " + digits(static_cast<std::int64_t>(cut)) +
                                        u" 种过于繁复，只写入了一部分，用它们的文字可能与原来不同");
    }
}

void EngineDocument::SaveAs(const std::filesystem::path& path) {
    WorkingDocument& content = read();
    wanted_ = path;
    updateContentsPages(content, main_, services_.pages);
    services_.runLong([&] { writer_.saveAs(path, content.content()); });
    written(path);
}

void EngineDocument::Save() {
    WorkingDocument& content = read();
    if (path_.empty() && wanted_.empty()) {
        throw RunTimeError(error::invalidCall, u"文档还没有文件名，不能保存。");
    }
    if (path_.empty()) {
        return; // whoever called SaveAs() knows
    }
    services_.runLong([&] {
        isWritten_ ? writer_.save(content.content()) : writer_.saveAs(path_, content.content());
    });
    written(path_);
}

void EngineDocument::askAndSave(std::optional<bool> saveChanges) {
    if (isSaved_) {
        return;
    }
    const std::filesystem::path file = path_.empty() ? wanted_ : path_;
    if (saveChanges.has_value() ? *saveChanges : services_.unsaved.save(file)) {
        path_ == file ? Save() : SaveAs(file);
    }
}

void EngineDocument::Close(std::optional<bool> saveChanges) {
    read();
    askAndSave(saveChanges);
    content_.reset();
    owner_.closed(*this);
}

void EngineDocument::setSaved(bool saved) {
    read();
    isSaved_ = saved;
}

std::unique_ptr<Range> EngineDocument::Range(int start, int end) {
    const auto size = static_cast<int>(read().main().size());
    if (start < 0 || end < start || end > size) {
        throw outOfRange();
    }
    auto range = std::make_unique<EngineRange>(*this);
    range->set(static_cast<Cp>(start), static_cast<Cp>(end));
    return range;
}

HeaderKind EngineDocument::headerKind() const {
    return seekView_ == SeekView::currentPageFooter ? HeaderKind::oddFooter : HeaderKind::oddHeader;
}

std::size_t EngineDocument::selectedSection() {
    const DocumentSections& sections = read().sections();
    const std::size_t index = sections.indexAt(main_.start);
    return seekView_ == SeekView::mainDocument ? index : sections.headerOwner(index, headerKind());
}

WorkingStory& EngineDocument::story() {
    WorkingDocument& content = read();
    return seekView_ == SeekView::mainDocument ? content.main()
                                               : content.header(selectedSection(), headerKind());
}

Insertion& EngineDocument::insertion() {
    return seekView_ == SeekView::mainDocument ? main_ : header_;
}

StoryEditor EngineDocument::editor() {
    DocumentTables& tables = change().tables();
    return {story(), tables, insertion()};
}

void EngineDocument::selectInMain(Cp start, Cp end) {
    WorkingDocument& content = read();
    seekView_ = SeekView::mainDocument;
    StoryEditor(content.main(), content.tables(), main_).select(start, end);
}

void EngineDocument::seek(SeekView view) {
    read();
    if (view == seekView_) {
        return;
    }
    seekView_ = view;
    // What was set on an insertion point and not typed is lost when the selection moves.
    if (view == SeekView::mainDocument) {
        selectInMain(main_.start, main_.end);
    } else {
        header_ = {};
        StoryEditor(story(), read().tables(), header_).select(0, 0);
    }
}

void EngineDocument::moveHeaderInsertion(HeaderKind kind, Cp length) {
    if (seekView_ != SeekView::mainDocument && headerKind() == kind) {
        header_.start += length;
        header_.end += length;
    }
}

void EngineDocument::insertFile(const std::filesystem::path& path) {
    if (seekView_ != SeekView::mainDocument) {
        throw RunTimeError(error::invalidCall, u"页眉和页脚中不能插入文件。");
    }
    // Everything that can fail on the file's side comes before the first change.
    const DocumentReading source = readConverting(path, services_.documents, services_.longWork);
    ImportNotes notes;
    services_.runLong([&] { bringIn(source.content, notes); });
    if (!source.conversion.empty()) {
        services_.report.converted(path, source.conversion);
    }
    notes.tell(services_.report, path, areSmartTagsTold_);
}

void EngineDocument::bringIn(const DocumentContent& source, ImportNotes& notes) {
    WorkingDocument& content = read();
    DocumentBody text = importDocument(content.tables(), content.bookmarkNames(), source, notes);
    editor().eraseSelection();
    const Cp behind = insertDocument(content, main_.start, std::move(text));
    selectInMain(behind, behind);
}

} // namespace qvnd::word
