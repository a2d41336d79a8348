#include "platform/word/engine/BookmarkImport.h"

#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <unordered_set>

namespace qvnd::word {

namespace {

// The others are for the headings that the contents name.
constexpr std::size_t mostBookmarksBrought = mostBookmarks - 2380;

using Names = std::unordered_set<std::u16string>; // folded

void addReferences(const Story& story, Names& names) {
    for (const std::vector<FieldWord>& words : fieldWords(story)) {
        for (const FieldWord& word : bookmarkWords(words)) {
            names.insert(foldedName(word.text));
        }
    }
}

// The names of the bookmarks that fields of the document speak of.
Names referencesOf(const DocumentContent& source) {
    Names names;
    addReferences(*joined(source.main), names);
    forEachTextAside(source, [&](const Story& text) { addReferences(text, names); });
    return names;
}

} // namespace

BookmarkImport::BookmarkImport(const DocumentContent& source, BookmarkNames& names)
    : source_(source), main_(source.bookmarks) {
    forEachTextAside(source, [&](const Story& text) {
        for (const Bookmark& bookmark : text.bookmarks) {
            aside_.push_back(&bookmark);
        }
    });
    leaveOutBeyondRoom(mostBookmarksBrought - std::min(names.count(), mostBookmarksBrought));
    for (Bookmark& bookmark : main_) {
        bookmark.name = bookmark.comment ? bookmark.name : named(bookmark, names);
    }
    for (const Bookmark* bookmark : aside_) {
        asideNames_.emplace(bookmark, named(*bookmark, names));
    }
}

// Those that nothing shows and nothing speaks of go first, and those of the main story before
// others.
void BookmarkImport::leaveOutBeyondRoom(std::size_t room) {
    if (main_.size() + aside_.size() <= room) {
        return;
    }
    const Names references = referencesOf(source_);
    const std::size_t kept = std::min(aside_.size(), room);
    withoutRoom_ = static_cast<int>(aside_.size() - kept);
    aside_.resize(kept);
    withoutRoom_ += leaveOutBookmarks(main_, room - kept, [&](const Bookmark& bookmark) {
        return isHidden(bookmark) && !references.contains(foldedName(bookmark.name));
    });
}

std::u16string BookmarkImport::named(const Bookmark& bookmark, BookmarkNames& names) {
    std::u16string name = names.addUnique(bookmark.name);
    if (name != bookmark.name) {
        newNames_.emplace(foldedName(bookmark.name), name);
        if (!isHidden(bookmark)) {
            renamed_.push_back({bookmark.name, name});
        }
    }
    return name;
}

std::vector<Bookmark> BookmarkImport::aside(const Story& text) const {
    std::vector<Bookmark> result;
    for (const Bookmark& bookmark : text.bookmarks) {
        const auto found = asideNames_.find(&bookmark);
        if (found != asideNames_.end()) {
            result.push_back(bookmark);
            result.back().name = found->second;
        }
    }
    return result;
}

} // namespace qvnd::word
