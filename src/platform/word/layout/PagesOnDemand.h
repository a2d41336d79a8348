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

// The pages of a document, each laid out when it is asked for and as often as that. Between calls
// no page is kept, only places at which pages begin, as many as 40 bytes for each character of the
// document pay for: a page is laid out again from the last of them before it.
class PagesOnDemand {
public:
    // All must outlive the object.
    PagesOnDemand(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options);

    // Finds where one more page ends. A document that shows how many pages it has is gone through
    // once more when they are counted. False when nothing is left to find.
    bool findNext();
    // Whether all pages are found and show what they will show.
    bool isWhole() const { return isWhole_; }
    // How often the document was begun anew; pages taken before may show an old number of pages.
    int round() const { return round_; }

    // Of the pages found so far.
    const std::vector<PageSize>& sizes() const { return sizes_; }
    // A page of those.
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
    std::size_t cursor_ = 0; // the page that the layout gives next
    std::size_t found_ = 0;  // pages of this round whose ends are known
    Place atFound_; // where the first page behind them begins, while the layout is elsewhere
    std::map<std::size_t, Place> places_; // by page
    std::size_t kept_ = 0;                // bytes in `places_`
    std::size_t nextKept_ = 0;            // the page at which the next place may be kept
    bool isWhole_ = false;
    int round_ = 0;
};

} // namespace qvnd::layout
