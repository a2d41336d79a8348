#pragma once

#include "platform/office/OfficeSuite.h"
#include "platform/word/layout/PageNumberSource.h"

#include <optional>
#include <utility>

namespace qvnd::office {

// Page numbers as the office suite lays the document out: a copy with a mark at each position is
// drawn as PDF, which names the page of each mark.
class OfficePageNumbers : public word::PageNumberSource {
public:
    explicit OfficePageNumbers(OfficeSuite suite) : suite_(std::move(suite)) {}

    // Throws what OfficeSuite::convert() throws.
    std::vector<int> displayedPages(const word::DocumentContent& content,
                                    std::span<const word::Cp> positions) override;
    int pages() const override { return pages_; }

private:
    OfficeSuite suite_;
    int pages_ = 0;
};

// The exact numbers where they can be had, else the estimate.
class BestPageNumbers : public word::PageNumberSource {
public:
    BestPageNumbers(word::PageNumberSource& exact, word::PageNumberSource& estimate)
        : exact_(exact), estimate_(estimate) {}

    std::vector<int> displayedPages(const word::DocumentContent& content,
                                    std::span<const word::Cp> positions) override;
    int pages() const override { return used_ == nullptr ? 0 : used_->pages(); }

    // Why the last answer is an estimate, in Chinese; nothing when it is exact.
    const std::optional<QString>& whyEstimated() const { return whyEstimated_; }

private:
    word::PageNumberSource& exact_;
    word::PageNumberSource& estimate_;
    word::PageNumberSource* used_ = nullptr;
    std::optional<QString> whyEstimated_;
};

} // namespace qvnd::office
