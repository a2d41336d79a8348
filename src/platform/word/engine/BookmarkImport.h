#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/TextChanges.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qvnd::word {

// The names of the bookmarks that fields of the document speak of, folded.
std::unordered_set<std::u16string> namesInFields(const DocumentContent& document);

// The bookmarks of a document that comes into another one: those that there is room for, under
// names that nothing else has there.
class BookmarkImport {
public:
    // Adds the names to `names`. `source` outlives the object.
    BookmarkImport(const DocumentContent& source, BookmarkNames& names);

    // Those of the main story, at their places in the source, with the ranges of comments.
    std::vector<Bookmark> takeMain() { return std::move(main_); }
    // Those of a text aside, which is one of the source's fragments.
    std::vector<Bookmark> aside(const Story& text) const;

    const NewNames& newNames() const { return newNames_; }
    // Those of them that users see; nobody sees the names of hidden ones.
    const std::vector<ImportChanges::Renamed>& renamed() const { return renamed_; }
    int withoutRoom() const { return withoutRoom_; }

private:
    void leaveOutBeyondRoom(std::size_t room);
    std::u16string named(const Bookmark& bookmark, BookmarkNames& names);

    const DocumentContent& source_;
    std::vector<Bookmark> main_;
    std::vector<const Bookmark*> aside_;
    std::unordered_map<const Bookmark*, std::u16string> asideNames_; // of those that come in
    NewNames newNames_;
    std::vector<ImportChanges::Renamed> renamed_;
    int withoutRoom_ = 0;
};

} // namespace qvnd::word
