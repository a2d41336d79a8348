#pragma once

#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/LinePlaces.h"
#include "platform/word/layout/PageModel.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::layout {

// Lays out a document page by page, on demand.
class DocumentLayout {
public:
    // `source` and `fonts` must outlive the object.
    DocumentLayout(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options);
    ~DocumentLayout();
    DocumentLayout(const DocumentLayout&) = delete;
    DocumentLayout& operator=(const DocumentLayout&) = delete;

    // The next page; nothing after the last page. A document has at least one page.
    std::optional<Page> nextPage();
    // The layout state at the start of the next page, with the content that is composed but not yet
    // placed.
    struct Place;
    std::shared_ptr<const Place> place() const;
    // Continues from a state that this object returned. It yields the same pages as before.
    void goTo(const Place& place);
    // The size of place() in bytes. Counting stops above `most`.
    std::size_t placeSize(std::size_t most) const;

    // Whether fields of the document show LayoutOptions::counts.
    bool showsPageCounts() const;
    // After the last page: the counts that the fields should show. Nothing when they show these
    // already; otherwise the document is to be laid out once more.
    std::optional<PageCounts> correctedCounts() const;
    // The lines on the pages so far, those of table cells too, in order of their first characters.
    const std::vector<LinePlace>& lines() const;
    // The number of the chapter in front of the page number of a position, with the sign behind it;
    // empty where its section shows none.
    std::u16string chapterAt(word::Cp position) const;

private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace qvnd::layout
