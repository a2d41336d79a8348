#pragma once

#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/PageNumberSource.h"

#include <functional>
#include <memory>

namespace qvnd::layout {

// Page numbers from our own layout: the numbers that the pages show on which the positions stand.
class LayoutPageNumbers : public word::PageNumberSource {
public:
    // Called at the first document, so that a program that asks for no numbers opens no fonts.
    // What it throws is thrown by displayedPages().
    using OpenFonts = std::function<std::unique_ptr<FontMetrics>()>;

    explicit LayoutPageNumbers(OpenFonts openFonts, const LayoutOptions& options = {})
        : openFonts_(std::move(openFonts)), options_(options) {}

    std::vector<int> displayedPages(const word::DocumentContent& content,
                                    std::span<const word::Cp> positions) override;
    int pages() const override { return pages_; }

private:
    OpenFonts openFonts_;
    LayoutOptions options_;
    std::unique_ptr<FontMetrics> fonts_;
    int pages_ = 0;
};

} // namespace qvnd::layout
