#pragma once

#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/PageModel.h"

#include <memory>
#include <optional>
#include <vector>

namespace qvnd::layout {

// Where a line of the main story came to stand.
struct LinePlace {
    word::Cp at = 0; // its first character
    int sheet = 0;   // counted from 0
    int number = 1;  // that the page shows
};

// Lays a document out, page by page and no further than is asked for.
class DocumentLayout {
public:
    // `source` and `fonts` must outlive the object.
    DocumentLayout(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options);
    ~DocumentLayout();
    DocumentLayout(const DocumentLayout&) = delete;
    DocumentLayout& operator=(const DocumentLayout&) = delete;

    // The next page; nothing behind the last one. A document has at least one page.
    std::optional<Page> nextPage();
    // The place that the next page begins at: what has been composed and stands on no page yet.
    struct Place;
    std::shared_ptr<const Place> place() const;
    // Goes on from a place of this layout; the pages come out as they did before.
    void goTo(const Place& place);
    // The memory that place() would take, in bytes; counted no further than beyond `most`.
    std::size_t placeSize(std::size_t most) const;

    // Whether a page so far shows how many pages there are: LayoutOptions::totalPages was used.
    bool showsPageCount() const;
    // Lines on the pages so far, ascending by their first character.
    const std::vector<LinePlace>& lines() const;

private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace qvnd::layout
