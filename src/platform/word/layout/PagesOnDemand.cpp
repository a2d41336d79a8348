#include "platform/word/layout/PagesOnDemand.h"

#include <algorithm>
#include <utility>

namespace qvnd::layout {

namespace {

constexpr std::size_t bytesPerCharacter = 40;
constexpr std::size_t bytesForAny = 64 * 1024; // that a short document may take as well
// Every page would be more than a look at a single page saves.
constexpr std::size_t pagesApart = 4;

} // namespace

PagesOnDemand::PagesOnDemand(const LayoutSource& source, FontMetrics& fonts,
                             const LayoutOptions& options)
    : source_(source), fonts_(fonts), options_(options) {
    begin();
}

void PagesOnDemand::begin() {
    layout_ = std::make_unique<DocumentLayout>(source_, fonts_, options_);
    places_.clear();
    atFound_.reset();
    kept_ = cursor_ = found_ = nextKept_ = 0;
    ++round_;
}

bool PagesOnDemand::findNext() {
    if (isWhole_) {
        return false;
    }
    goTo(found_);
    if (next()) {
        return true;
    }
    sizes_.resize(found_);
    // A second count could differ from the first by the width of the number alone.
    const auto counts = round_ == 1 ? layout_->correctedCounts() : std::nullopt;
    isWhole_ = !counts;
    if (counts) {
        options_.counts = *counts;
        begin();
    }
    return !isWhole_;
}

Page PagesOnDemand::page(std::size_t sheet) {
    goTo(sheet);
    std::optional<Page> page = next();
    return page ? std::move(*page) : Page{};
}

std::optional<Page> PagesOnDemand::next() {
    keepPlace();
    std::optional<Page> page = layout_->nextPage();
    if (!page) {
        return page;
    }
    const PageSize size{page->width, page->height};
    if (cursor_ < sizes_.size()) {
        sizes_[cursor_] = size;
    } else {
        sizes_.push_back(size);
    }
    found_ = std::max(found_, ++cursor_);
    return page;
}

void PagesOnDemand::goTo(std::size_t sheet) {
    const auto behind = places_.upper_bound(sheet);
    const std::size_t kept = behind == places_.begin() ? 0 : std::prev(behind)->first;
    if (atFound_ && sheet >= found_ && cursor_ < found_) {
        layout_->goTo(*atFound_);
        cursor_ = found_;
    } else if (cursor_ > sheet || cursor_ < kept) {
        leave();
        layout_->goTo(*std::prev(behind)->second);
        cursor_ = kept;
    }
    while (cursor_ < sheet && next()) {
    }
}

// The way back to the first page that is not found yet may be long.
void PagesOnDemand::leave() {
    if (cursor_ == found_) {
        atFound_ = layout_->place();
    }
}

void PagesOnDemand::keepPlace() {
    if (cursor_ < nextKept_) {
        return;
    }
    nextKept_ = cursor_ + pagesApart;
    const std::size_t allowed = bytesForAny + source_.main->text.size() * bytesPerCharacter;
    const std::size_t room = allowed - kept_;
    const std::size_t size = layout_->placeSize(room);
    if (size <= room || places_.empty()) {
        places_.emplace(cursor_, layout_->place());
        kept_ = std::min(allowed, kept_ + size);
    }
}

} // namespace qvnd::layout
