#pragma once

#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/PageNumberSource.h"

#include <functional>
#include <memory>
#include <optional>

namespace qvnd::layout {

// Page numbers from our own layout: the numbers that the pages show on which the positions stand.
// A layout that was stopped counts what lies behind its last page by the room that the text took
// so far.
class LayoutPageNumbers : public word::PageNumberSource {
public:
    // Called at the first document, so that a program that asks for no numbers opens no fonts.
    // What it throws is thrown by displayedPages().
    using OpenFonts = std::function<std::unique_ptr<FontMetrics>()>;

    explicit LayoutPageNumbers(OpenFonts openFonts, const LayoutOptions& options = {})
        : openFonts_(std::move(openFonts)), options_(options) {}

    // Asked behind each page with how many there are; false stops the layout.
    using EachPage = std::function<bool(int pages)>;
    void watch(EachPage eachPage) { eachPage_ = std::move(eachPage); }

    std::vector<int> displayedPages(const word::DocumentContent& content,
                                    std::span<const word::Cp> positions) override;
    // Forgets the document asked about last; fonts and watch stay.
    void clear();
    int pages() const override { return pages_; }
    // The pages behind which the last layout was stopped; nothing when it went to the end.
    std::optional<int> stoppedBehind() const { return stoppedBehind_; }

private:
    OpenFonts openFonts_;
    EachPage eachPage_;
    LayoutOptions options_;
    std::unique_ptr<FontMetrics> fonts_;
    int pages_ = 0;
    std::optional<int> stoppedBehind_;
};

} // namespace qvnd::layout
