#include "platform/word/engine/WorkingDocument.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
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

std::vector<StorySlice> oneSlice(Story text) {
    const Cp length = text.size();
    return {{std::make_shared<const Story>(std::move(text)), 0, length}};
}

bool isEmptyParagraph(const Story& story) { return story.text == u"\r"; }

} // namespace

WorkingDocument::WorkingDocument(DocumentContent content)
    : content_(std::move(content)), main_(content_.main, this),
      sections_(content_.sections, content_.headers) {
    for (const Bookmark& bookmark : content_.bookmarks) {
        bookmarkNames_.add(bookmark.name);
        lastBookmarkEnd_ = std::max(lastBookmarkEnd_, bookmark.end);
    }
}

void WorkingDocument::addBookmark(Bookmark bookmark) {
    lastBookmarkEnd_ = std::max(lastBookmarkEnd_, bookmark.end);
    content_.bookmarks.push_back(std::move(bookmark));
}

WorkingDocument::HeaderUnderWork::HeaderUnderWork(Story text)
    : slices(oneSlice(std::move(text))), story(slices) {}

WorkingStory& WorkingDocument::header(std::size_t section, HeaderKind kind) {
    const std::size_t owner = sections_.headerOwner(section, kind);
    auto& open = headers_[{owner, kind}];
    if (!open) {
        const auto& stored = content_.headers[owner][static_cast<std::size_t>(kind)];
        open = std::make_unique<HeaderUnderWork>(
            stored && stored->size() > 0 ? *stored : emptyHeader(content_.tables, kind));
    }
    return open->story;
}

// A header without text stands in the normal style: its own would show the style's line.
void WorkingDocument::storeHeaders() {
    for (const auto& [key, open] : headers_) {
        auto& stored = content_.headers[key.first][static_cast<std::size_t>(key.second)];
        Story text = open->story.flattened();
        stored = isEmptyParagraph(text) ? blankHeader(content_.tables) : std::move(text);
    }
}

void WorkingDocument::setTitlePage(std::size_t section, bool titlePage) {
    PropertyLists& lists = content_.tables.lists;
    const Bytes list =
        withSprm8(lists[sections_.properties(section)], sprm::SFTitlePage, titlePage ? 1 : 0);
    sections_.setProperties(section, lists.intern(list));
    for (const HeaderKind kind : {HeaderKind::firstHeader, HeaderKind::firstFooter}) {
        auto& stored = content_.headers[section][static_cast<std::size_t>(kind)];
        if (titlePage && !stored) {
            stored = blankHeader(content_.tables);
        }
    }
}

const DocumentContent& WorkingDocument::content() {
    storeHeaders();
    sections_.fillReturned(blankHeader(content_.tables));
    main_.seal();
    return content_;
}

void WorkingDocument::closeHeaders() {
    storeHeaders();
    headers_.clear();
}

// Whose header is whose may change with the sections, so none stays open.
void WorkingDocument::changing(Cp) { closeHeaders(); }

void WorkingDocument::inserted(Cp at, Cp length) {
    sections_.inserted(at, length);
    if (at > lastBookmarkEnd_) {
        return;
    }
    for (Bookmark& bookmark : content_.bookmarks) {
        const bool isPoint = bookmark.start == bookmark.end;
        bookmark.end += bookmark.end > at || (isPoint && bookmark.end == at) ? length : 0;
        bookmark.start += bookmark.start >= at ? length : 0;
    }
    lastBookmarkEnd_ += length;
}

void WorkingDocument::erased(Cp start, Cp end) {
    sections_.erased(start, end);
    if (start >= lastBookmarkEnd_) {
        return;
    }
    auto& bookmarks = content_.bookmarks;
    const auto gone = [&](const Bookmark& b) { return b.start >= start && b.end <= end; };
    bookmarks.erase(std::remove_if(bookmarks.begin(), bookmarks.end(), gone), bookmarks.end());
    const auto moved = [&](Cp at) { return at <= start ? at : at - std::min(at, end) + start; };
    for (Bookmark& bookmark : bookmarks) {
        bookmark.start = moved(bookmark.start);
        bookmark.end = moved(bookmark.end);
    }
}

} // namespace qvnd::word
