#include "platform/word/engine/ContentsPages.h"

#include "platform/word/engine/ContentsField.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace qvnd::word {

namespace {

Story storyOf(const WorkingStory& main, FieldSpan span) {
    Story whole;
    for (const StorySlice& slice : main.slicesOf(span.start, span.end)) {
        appendStory(whole, partOf(*slice.fragment, slice.begin, slice.length));
    }
    return whole;
}

std::vector<const Bookmark*> headingBookmarks(WorkingDocument& document) {
    std::vector<const Bookmark*> result;
    for (const Bookmark& bookmark : document.bookmarks()) {
        if (bookmark.name.starts_with(u"_Toc")) {
            result.push_back(&bookmark);
        }
    }
    std::sort(result.begin(), result.end(),
              [](const Bookmark* a, const Bookmark* b) { return a->start < b->start; });
    return result;
}

std::unordered_map<std::u16string, std::u16string> pagesByBookmark(WorkingDocument& document,
                                                                   PageNumberSource& source) {
    std::unordered_map<std::u16string, std::u16string> result;
    const auto bookmarks = headingBookmarks(document);
    std::vector<Cp> positions;
    positions.reserve(bookmarks.size());
    for (const Bookmark* bookmark : bookmarks) {
        positions.push_back(bookmark->start);
    }
    const std::vector<std::u16string> pages = source.displayedPages(document.content(), positions);
    for (std::size_t i = 0; i < std::min(pages.size(), bookmarks.size()); ++i) {
        result.emplace(bookmarks[i]->name, pages[i]);
    }
    return result;
}

Cp movedWith(Cp position, FieldSpan old, Cp newLength) {
    return position >= old.end ? position - (old.end - old.start) + newLength : position;
}

} // namespace

void updateContentsPages(WorkingDocument& document, Insertion& insertion, PageNumberSource& pages) {
    WorkingStory& main = document.main();
    auto fields = contentsFields(main);
    if (fields.empty()) {
        return;
    }
    const auto numbers = pagesByBookmark(document, pages);
    const auto pageOf = [&](const std::u16string& bookmark) {
        const auto known = numbers.find(bookmark);
        return known == numbers.end() ? std::nullopt : std::optional(known->second);
    };
    // From the last one on, so that the places of the others stay right.
    std::reverse(fields.begin(), fields.end());
    for (const FieldSpan& span : fields) {
        const Story old = storyOf(main, span);
        Story updated = withPageNumbers(old, pageOf);
        if (updated.text == old.text) {
            continue;
        }
        const Cp length = updated.size();
        main.insertFragment(span.start, std::make_shared<const Story>(std::move(updated)));
        main.erase(span.start + length, span.end + length);
        insertion.start = movedWith(insertion.start, span, length);
        insertion.end = movedWith(insertion.end, span, length);
    }
}

} // namespace qvnd::word
