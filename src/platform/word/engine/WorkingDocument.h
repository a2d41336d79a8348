#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/DocumentSections.h"
#include "platform/word/engine/WorkingStory.h"

#include <map>
#include <memory>
#include <utility>

namespace qvnd::word {

// A document under work: its tables, its main story with sections and bookmarks kept in step, and
// its headers and footers as stories of their own.
class WorkingDocument : private PositionObserver {
public:
    explicit WorkingDocument(DocumentContent content);
    WorkingDocument(const WorkingDocument&) = delete;
    WorkingDocument& operator=(const WorkingDocument&) = delete;

    DocumentTables& tables() { return content_.tables; }
    WorkingStory& main() { return main_; }
    DocumentSections& sections() { return sections_; }
    std::vector<Bookmark>& bookmarks() { return content_.bookmarks; }
    BookmarkNames& bookmarkNames() { return bookmarkNames_; }
    Bytes& settings() { return content_.settings; }

    // How many more bookmarks a file has room for, beside that of the pictures of bullets.
    std::size_t roomForBookmarks() const;
    // Its name is one of bookmarkNames(), and there is room for it.
    void addBookmark(Bookmark bookmark);

    // The header or footer that the section shows; an empty paragraph in the style of headers or
    // footers where there is none yet. Valid until the main story's text changes or content() is
    // asked for.
    WorkingStory& header(std::size_t section, HeaderKind kind);

    // Whether the section's first page has a header and a footer of its own, empty ones at first.
    void setTitlePage(std::size_t section, bool titlePage);

    // All of it, as the writer wants it. What is typed from here on goes into new fragments.
    const DocumentContent& content();

private:
    void changing(Cp at) override;
    void inserted(Cp at, Cp length) override;
    void erased(Cp start, Cp end) override;
    void replaced(const PositionMap& moved) override;
    void moveBookmarks(const PositionMap& moved);
    SlicedText blank();
    void closeHeaders();

    DocumentContent content_;
    BookmarkNames bookmarkNames_;
    WorkingStory main_;
    DocumentSections sections_;
    std::map<std::pair<std::size_t, HeaderKind>, WorkingStory> openHeaders_;
    std::shared_ptr<const Story> blankHeader_; // of all headers that show nothing
    Cp reach_ = 0;                             // an insertion here or behind moves no bookmark
};

} // namespace qvnd::word
