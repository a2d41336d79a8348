#include "platform/word/engine/WorkingDocument.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/engine/StoryBuilder.h"
#include "platform/word/engine/TemplateStyles.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool isFooter(HeaderKind kind) {
    return kind == HeaderKind::evenFooter || kind == HeaderKind::oddFooter ||
           kind == HeaderKind::firstFooter;
}

Story emptyHeader(DocumentTables& tables, HeaderKind kind) {
    const StyleIndex style = requireStyle(tables, isFooter(kind) ? sti::footer : sti::header);
    Story story;
    StoryBuilder(story).mark(u'\r', {style, PropertyListId::empty}, PropertyListId::empty);
    return story;
}

Story blankHeader(DocumentTables& tables) {
    Story story;
    StoryBuilder(story).mark(u'\r', {requireStyle(tables, sti::normal), PropertyListId::empty},
                             PropertyListId::empty);
    return story;
}

// Behind the text of the bookmark; one without text also minds the character that it stands at.
Cp reachOf(const Bookmark& bookmark) {
    return bookmark.end + (bookmark.start == bookmark.end ? 1 : 0);
}

bool isEmptyParagraph(const SlicedText& text) {
    return lengthOf(text) == 1 && joined(text)->text == u"\r";
}

} // namespace

WorkingDocument::WorkingDocument(DocumentContent content)
    : content_(std::move(content)), main_(content_.main, this),
      sections_(content_.sections, content_.headers) {
    for (const Bookmark& bookmark : content_.bookmarks) {
        if (!bookmark.comment) {
            bookmarkNames_.add(bookmark.name);
        }
        reach_ = std::max(reach_, reachOf(bookmark));
    }
    forEachTextAside(content_, [this](const Story& text) {
        for (const Bookmark& bookmark : text.bookmarks) {
            bookmarkNames_.add(bookmark.name);
        }
    });
}

std::size_t WorkingDocument::roomForBookmarks() const {
    const auto& main = content_.bookmarks;
    auto count = static_cast<std::size_t>(std::count_if(
        main.begin(), main.end(), [](const Bookmark& bookmark) { return !bookmark.comment; }));
    forEachTextAside(content_, [&](const Story& text) { count += text.bookmarks.size(); });
    return mostOwnBookmarks - std::min(count, mostOwnBookmarks);
}

void WorkingDocument::addBookmark(Bookmark bookmark) {
    reach_ = std::max(reach_, reachOf(bookmark));
    content_.bookmarks.push_back(std::move(bookmark));
}

WorkingStory& WorkingDocument::header(std::size_t section, HeaderKind kind) {
    const std::size_t owner = sections_.headerOwner(section, kind);
    if (const auto open = openHeaders_.find({owner, kind}); open != openHeaders_.end()) {
        return open->second;
    }
    SlicedText& text = content_.headers[owner][static_cast<std::size_t>(kind)];
    if (text.empty() || text.front().fragment == blankHeader_) {
        text = slicesOf(emptyHeader(content_.tables, kind));
    }
    return openHeaders_.try_emplace({owner, kind}, text).first->second;
}

SlicedText WorkingDocument::blank() {
    if (!blankHeader_) {
        blankHeader_ = std::make_shared<const Story>(blankHeader(content_.tables));
    }
    return slicesOf(blankHeader_);
}

// A header without text stands in the normal style: its own would show the style's line.
void WorkingDocument::closeHeaders() {
    for (auto& [key, open] : openHeaders_) {
        SlicedText& text = content_.headers[key.first][static_cast<std::size_t>(key.second)];
        if (isEmptyParagraph(text)) {
            text = blank();
        }
    }
    openHeaders_.clear();
}

void WorkingDocument::setTitlePage(std::size_t section, bool titlePage) {
    PropertyLists& lists = content_.tables.lists;
    const Bytes list =
        withSprm8(lists[sections_.properties(section)], sprm::SFTitlePage, titlePage ? 1 : 0);
    sections_.setProperties(section, lists.intern(list));
    for (const HeaderKind kind : {HeaderKind::firstHeader, HeaderKind::firstFooter}) {
        auto& stored = content_.headers[section][static_cast<std::size_t>(kind)];
        if (titlePage && stored.empty()) {
            stored = blank();
        }
    }
}

const DocumentContent& WorkingDocument::content() {
    closeHeaders();
    sections_.fillReturned(blank());
    main_.seal();
    return content_;
}

// Whose header is whose may change with the sections, so none stays open.
void WorkingDocument::changing(Cp) { closeHeaders(); }

void WorkingDocument::inserted(Cp at, Cp length) {
    sections_.inserted(at, length);
    if (at >= reach_) {
        return;
    }
    reach_ = 0;
    for (Bookmark& bookmark : content_.bookmarks) {
        bookmark.end += reachOf(bookmark) > at ? length : 0;
        bookmark.start += bookmark.start >= at ? length : 0;
        reach_ = std::max(reach_, reachOf(bookmark));
    }
}

// A bookmark without text stands in front of a character and goes with it.
void WorkingDocument::erased(Cp start, Cp end) {
    sections_.erased(start, end);
    if (start >= reach_) {
        return;
    }
    auto& bookmarks = content_.bookmarks;
    std::erase_if(bookmarks, [&](const Bookmark& bookmark) {
        return bookmark.start >= start && reachOf(bookmark) <= end;
    });
    moveBookmarks([&](Cp at) { return at <= start ? at : at - std::min(at, end) + start; });
}

void WorkingDocument::replaced(const PositionMap& moved) {
    sections_.replaced(moved);
    moveBookmarks(moved);
}

void WorkingDocument::moveBookmarks(const PositionMap& moved) {
    reach_ = 0;
    for (Bookmark& bookmark : content_.bookmarks) {
        bookmark.start = moved(bookmark.start);
        bookmark.end = moved(bookmark.end);
        reach_ = std::max(reach_, reachOf(bookmark));
    }
}

} // namespace qvnd::word
