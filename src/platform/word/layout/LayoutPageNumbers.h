#pragma once

#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/PageNumberSource.h"

#include <functional>
#include <memory>
#include <optional>

namespace qvnd::layout {

class DocumentLayout;

// Page numbers from our own layout: the numbers that the pages of the positions show. When the
// layout was stopped, the pages after the last one are estimated from the text per page so far.
class LayoutPageNumbers : public word::PageNumberSource {
public:
    // Called for the first document, so that a program that needs no page numbers opens no fonts.
    // displayedPages() passes its exceptions on.
    using OpenFonts = std::function<std::unique_ptr<FontMetrics>()>;

    explicit LayoutPageNumbers(OpenFonts openFonts, const LayoutOptions& options = {})
        : openFonts_(std::move(openFonts)), options_(options) {}

    // Called after each page with the number of pages so far; returning false stops the layout.
    using EachPage = std::function<bool(int pages)>;
    void watch(EachPage eachPage) { eachPage_ = std::move(eachPage); }

    std::vector<std::u16string> displayedPages(const word::DocumentContent& content,
                                               std::span<const word::Cp> positions) override;
    // Forgets the last document. Fonts and the callback are kept.
    void clear();
    int pages() const override { return pages_; }
    // The number of pages after which the last layout was stopped; nothing when it was completed.
    std::optional<int> stoppedBehind() const { return stoppedBehind_; }

private:
    // Lays out all pages, as long as the callback wants.
    std::unique_ptr<DocumentLayout> laidOut(const LayoutSource& source,
                                            const LayoutOptions& options);

    OpenFonts openFonts_;
    EachPage eachPage_;
    LayoutOptions options_;
    std::unique_ptr<FontMetrics> fonts_;
    int pages_ = 0;
    std::optional<int> stoppedBehind_;
};

} // namespace qvnd::layout
