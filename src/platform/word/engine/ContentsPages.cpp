#include "platform/word/engine/ContentsPages.h"

#include "platform/word/engine/ContentsField.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

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

// Gives a contents of the document the numbers; what has its place in the text keeps it.
void setPageNumbers(WorkingStory& main, FieldSpan span, Insertion& insertion,
                    const PageOfBookmark& pageOf) {
    Story contents = storyOf(main, span);
    StoryEdits numbers = pageNumberEdits(contents, pageOf);
    if (numbers.empty()) {
        return;
    }
    numbers.applyTo(contents);
    const auto moved = [&](Cp at) {
        return at <= span.start ? at : span.start + numbers.moved(at - span.start);
    };
    main.replace(span.start, span.end, std::make_shared<const Story>(std::move(contents)), moved);
    insertion.start = moved(insertion.start);
    insertion.end = moved(insertion.end);
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
        setPageNumbers(main, span, insertion, pageOf);
    }
}

} // namespace qvnd::word
