#pragma once

#include "platform/word/layout/DocumentLayout.h"

#include <map>
#include <memory>
#include <vector>

namespace qvnd::layout {

// The paper of a page, in twips.
struct PageSize {
    double width = 0;
    double height = 0;
    bool operator==(const PageSize&) const = default;
};

// The pages of a document, laid out on demand. Pages are not cached. Instead, layout states at the
// starts of pages are kept, up to a total of 40 bytes for each character of the document. A page is
// laid out again from the last state before it.
class PagesOnDemand {
public:
    // All must outlive the object.
    PagesOnDemand(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options);

    // Lays out one more page to find where it ends. A document that shows its number of pages is
    // laid out a second time once the pages are counted. Returns false when there is nothing left
    // to find.
    bool findNext();
    // Whether all pages are found and their content is final.
    bool isWhole() const { return isWhole_; }
    // How many times the layout was restarted. Pages from an earlier round may show an outdated
    // number of pages.
    int round() const { return round_; }

    // The sizes of the pages found so far.
    const std::vector<PageSize>& sizes() const { return sizes_; }
    // One of the pages found so far, by its index.
    Page page(std::size_t sheet);

private:
    using Place = std::shared_ptr<const DocumentLayout::Place>;

    std::optional<Page> next();
    void begin();
    void goTo(std::size_t sheet);
    void leave();
    void keepPlace();

    const LayoutSource& source_;
    FontMetrics& fonts_;
    LayoutOptions options_;
    std::unique_ptr<DocumentLayout> layout_;
    std::vector<PageSize> sizes_;
    std::size_t cursor_ = 0; // index of the page that `layout_` yields next
    std::size_t found_ = 0;  // number of pages of this round whose ends are known
    Place atFound_;          // state after those pages, while `layout_` is at another page
    std::map<std::size_t, Place> places_; // by page index
    std::size_t kept_ = 0;                // bytes in `places_`
    std::size_t nextKept_ = 0;            // page from which the next state may be kept
    bool isWhole_ = false;
    int round_ = 0;
};

} // namespace qvnd::layout
