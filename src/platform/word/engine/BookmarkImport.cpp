#include "platform/word/engine/BookmarkImport.h"

#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <unordered_set>

namespace qvnd::word {

namespace {

// With that of the pictures of bullets. The others are for the headings that the contents name.
constexpr std::size_t mostBookmarksBrought = mostBookmarks - 2380;

void addReferences(const Story& story, std::unordered_set<std::u16string>& names) {
    forEachFieldCode(story, [&](const FieldPlace&, const FieldCode& code) {
        forEachBookmarkWord(
            code, [&](const FieldWord& word) { names.insert(foldedName(word.in(story))); });
    });
}

} // namespace

std::unordered_set<std::u16string> namesInFields(const DocumentContent& document) {
    std::unordered_set<std::u16string> names;
    addReferences(*joined(document.main), names);
    forEachTextAside(document, [&](const Story& text) { addReferences(text, names); });
    return names;
}

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

// Those that nothing shows and nothing speaks of go first, then the last of the others: those of
// other texts stand behind those of the main story.
void BookmarkImport::leaveOutBeyondRoom(std::size_t room) {
    if (main_.size() + aside_.size() <= room) {
        return;
    }
    std::vector<const Bookmark*> all;
    for (const Bookmark& bookmark : main_) {
        all.push_back(&bookmark);
    }
    all.insert(all.end(), aside_.begin(), aside_.end());
    const auto inFields = namesInFields(source_);
    const std::vector<bool> stays = bookmarksWithin(room, all, [&](const Bookmark& bookmark) {
        return isHidden(bookmark) && !inFields.contains(foldedName(bookmark.name));
    });
    withoutRoom_ = static_cast<int>(std::count(stays.begin(), stays.end(), false));
    std::size_t next = 0;
    std::erase_if(main_, [&](const Bookmark&) { return !stays[next++]; });
    std::erase_if(aside_, [&](const Bookmark*) { return !stays[next++]; });
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
