#include "platform/word/layout/DocumentLayout.h"

#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/DocumentRules.h"
#include "platform/word/layout/FillState.h"
#include "platform/word/layout/PageCounts.h"
#include "platform/word/layout/PageFieldValues.h"
#include "platform/word/layout/PageFloats.h"
#include "platform/word/layout/PageHeaders.h"
#include "platform/word/layout/PageLook.h"
#include "platform/word/layout/PageNotes.h"
#include "platform/word/layout/SectionPages.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <span>
#include <utility>

namespace qvnd::layout {

struct DocumentLayout::Place {
    FillState state;
    ColumnFlow flow;
    std::deque<Page> finished;
};

class DocumentLayout::Work : FillState {
public:
    Work(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options)
        : source_(source), options_(options), rules_(source_, options),
          counter_(source_, rules_.sections().size()),
          shared_(source_, fonts, options.officeLines,
                  options.officeLines && rules_.showsRevisions()),
          notes_(shared_, options.counts.noteSheets), fields_(rules_, options_, shared_),
          headers_(rules_, fields_, shared_), body_(shared_, *source_.main),
          flow_(rules_.addsSpaces(), noteRooms()) {
        shared_.addsSpaces = rules_.addsSpaces();
        shared_.hasLeading = rules_.hasLeading();
        beginPage();
    }

    std::optional<Page> nextPage() {
        while (finished_.empty() && !done_) {
            step();
        }
        if (finished_.empty()) {
            return std::nullopt;
        }
        Page page = std::move(finished_.front());
        finished_.pop_front();
        return page;
    }

    std::shared_ptr<const Place> place() const {
        return std::make_shared<const Place>(
            Place{static_cast<const FillState&>(*this), flow_, finished_});
    }
    void goTo(const Place& place) {
        static_cast<FillState&>(*this) = place.state;
        flow_ = place.flow;
        finished_ = place.finished;
    }

    std::size_t placeSize(std::size_t most) const {
        std::size_t size = sizeof(Place) + sizeOf(static_cast<const FillState&>(*this), most);
        for (const Page& page : finished_) {
            size += sizeOf(page.layer);
        }
        return size;
    }

    bool showsPageCounts() const { return counter_.isShown(); }
    std::optional<PageCounts> correctedCounts() const {
        return done_ ? counter_.corrected(options_.counts) : std::nullopt;
    }
    const std::vector<LinePlace>& lines() const { return lines_.lines(); }
    std::u16string chapterAt(word::Cp position) { return fields_.chapterAt(position); }

private:
    using ResolvedSection = word::ResolvedSection;

    const ResolvedSection& section() const { return rules_.sections()[section_]; }
    word::SectionPaper paper() const { return rules_.paperOf(section(), page_.number); }

    ColumnFlow::NoteRooms noteRooms() {
        return [this](std::uint32_t note, bool first) { return pageNotes().roomOf(note, first); };
    }

    LineSetting columnSetting() const { return rules_.columnSetting(section(), column_); }
    LineSetting pageSetting() const { return rules_.pageSetting(section()); }

    // One block, or the end.
    void step() {
        if (!pending_.empty()) {
            Strip strip = std::move(pending_.front());
            pending_.pop_front();
            feed(std::move(strip));
            return;
        }
        if (!body_.blocks().has(block_)) {
            finish();
            return;
        }
        const Block& block = body_.blocks()[block_];
        const word::Cp start = body_.blocks().startOf(block.paragraph);
        while (section_ + 1 < rules_.sections().size() && start >= rules_.endOf(section_)) {
            enterSection();
        }
        if (!finished_.empty()) {
            return; // a page is asked for before a frame waits for its paragraph
        }
        body_.setPage(fieldsOfBody(start));
        if (!block.table) {
            append(compose(block, 0));
            ++block_;
            return;
        }
        append(body_.composeRows(block, columnSetting(), table_));
        if (!body_.blocks().hasRow(*block.table, table_.row)) {
            table_ = {};
            ++block_;
        }
    }

    PageFields fieldsOfBody(word::Cp at) { return fields_.of(section_, bodyNumber(), {at, at}); }

    // The number of the current page for the text that comes next: a section may begin on it.
    int bodyNumber() const {
        return firstOfSection_ ? word::firstNumberOf(section(), number_) : number_;
    }

    void append(Strips strips) {
        std::move(strips.begin(), strips.end(), std::back_inserter(pending_));
    }

    // A paragraph is composed once more where something floats beside it.
    Strips compose(const Block& block, word::Cp from) {
        LineSetting setting = columnSetting();
        Strips strips = body_.compose(block, setting, from);
        if (strips.empty()) {
            return strips;
        }
        const double top = regionTop_ + flow_.used() + flow_.spaceAbove(strips.front());
        const double left = columnLeft();
        obstacles_.add(strips, frameAt(top));
        setting.obstacles = obstacles_.within({left, top, left + section().columns[column_].width,
                                               top + heightOf(strips, rules_.addsSpaces())});
        if (setting.obstacles.empty()) {
            return strips;
        }
        Strips beside = body_.compose(block, setting, from);
        if (hasRoomOnNoPage(beside.front())) {
            return strips;
        }
        for (Strip& strip : beside) {
            strip.besideFloats = true;
        }
        return beside;
    }

    // Of a line below what floats, at the top of a page.
    bool hasRoomOnNoPage(const Strip& strip) const {
        return strip.dropped > 0 && flow_.isEmpty() && regionTop_ == bodyTop_ &&
               strip.height > bodyBottom_ - notesHeight_ - bodyTop_;
    }

    // Goes back to the first paragraph whose lines were set beside what floats on the page before,
    // or that holds what floats: it is set anew, and all behind it.
    void recompose() {
        const auto first = firstWithFloats(pending_);
        if (first == pending_.end() || endnotesFed_) {
            return;
        }
        const std::size_t line = first->line;
        const word::Cp from = line > 0 ? first->at : 0;
        block_ = body_.blocks().blockOf(first->paragraph);
        table_ = {};
        pending_.erase(first, pending_.end());
        body_.forgetFrames();
        if (line == 0) {
            while (block_ > 0 && body_.blocks()[block_ - 1].framed > 0) {
                --block_;
            }
            return;
        }
        body_.setPage(fieldsOfBody(from));
        Strips strips = compose(body_.blocks()[block_], from);
        ++block_;
        for (Strip& strip : strips) {
            strip.line += line;
            strip.lines += line;
        }
        append(std::move(strips));
    }

    void feed(Strip strip) {
        if (strip.startsPage && !isPageEmpty()) {
            newPage();
            pending_.push_front(std::move(strip));
            recompose();
            return;
        }
        const bool endsPage = strip.endsPage;
        const bool endsColumn = strip.endsColumn;
        Strips overflow;
        if (!flow_.add(std::move(strip), overflow)) {
            obstacles_.forgetFrom(overflow.front().at);
            pending_.insert(pending_.begin(), std::make_move_iterator(overflow.begin()),
                            std::make_move_iterator(overflow.end()));
            goesOn_ = true;
            nextColumn();
            recompose();
        } else if (endsPage) {
            newPage();
        } else if (endsColumn) {
            nextColumn();
        }
    }

    bool isPageEmpty() const { return flow_.isEmpty() && column_ == 0 && regionTop_ == bodyTop_; }

    void nextColumn() {
        if (column_ + 1 < section().columns.size()) {
            flushColumn();
            ++column_;
            beginColumn();
        } else {
            newPage();
        }
    }

    void newPage() {
        endPage();
        beginPage();
    }

    void endPage() {
        flushColumn();
        if (regionTop_ == bodyTop_ && !options_.officeLines) {
            const double end = bodyBottom_ - notesHeight_;
            regionTop_ += spaceAboveText(section().textPlace, end - regionTop_ - regionUsed_);
        }
        placeColumns();
        finishPage();
    }

    void enterSection() {
        const bool isEmpty = isPageEmpty();
        const ResolvedSection& next = rules_.sections()[section_ + 1];
        const bool hasColumn = column_ + 1 < section().columns.size();
        if (!isEmpty && hasColumn && word::beginsColumn(section(), next)) {
            flushColumn();
            beginSectionHere();
            sectionColumn_ = columns_.size();
            ++section_;
            ++column_;
            firstOfSection_ = true;
            beginColumn();
            return;
        }
        const bool goesOnBelow = !isEmpty && word::goesOnBelow(section(), next);
        if (goesOnBelow) {
            flushColumn();
            balanceColumns();
            regionUsed_ = lowerEnd(columns_);
            placeColumns();
        } else if (!isEmpty) {
            endPage();
        }
        ++section_;
        firstOfSection_ = true;
        if (goesOnBelow) {
            regionTop_ += regionUsed_;
            column_ = 0;
            regionUsed_ = 0;
            beginColumn();
        } else if (isEmpty) {
            openPage(); // nothing stands on it yet: it becomes a page of this section
        } else {
            beginPage();
        }
    }

    void beginPage() {
        ++page_.sheet;
        number_ = page_.sheet == 0 ? 1 : number_ + 1;
        openPage();
    }

    // A section that begins on an even or odd page leaves one empty before it where need be.
    void skipForParity() {
        if (isFirstOfSection_ && word::skipsPage(section(), number_)) {
            page_.number = number_;
            page_.numberText = fields_.of(section_, number_, textAhead()).number;
            finished_.push_back(page_);
            ++page_.sheet;
            number_ += section().restartsNumbers ? 0 : 1;
        }
    }

    void openPage() {
        number_ = bodyNumber();
        isFirstOfSection_ = std::exchange(firstOfSection_, false);
        page_.layer = {};
        text_.reset();
        page_.width = section().paper.width;
        page_.height = section().paper.height;
        skipForParity();
        layHeaders();
        regionTop_ = bodyTop_;
        regionUsed_ = 0;
        column_ = 0;
        pageNotes_.clear();
        notesHeight_ = pageNotes().heightWithin(carriedNotes_, bodyBottom_ - bodyTop_);
        obstacles_.clear();
        beginColumn();
    }

    void layHeaders() {
        page_.number = number_;
        headersOf_ = {section_, section().hasTitlePage && isFirstOfSection_, number_ % 2 == 0};
        const TextRoom room = headers_.begin(headersOf_, isFirstOfSection_, textAhead(), page_);
        bodyTop_ = room.top;
        bodyBottom_ = room.bottom;
    }

    // Where the text of the page will begin, as far as that is known before it is full.
    word::PageText textAhead() {
        const word::Cp at = pending_.empty() ? body_.blocks().beginOf(block_) : pending_.front().at;
        return {at, at};
    }

    void beginColumn() {
        regionGoesOn_ = column_ == 0 ? goesOn_ : regionGoesOn_;
        flow_.begin(bodyBottom_ - regionTop_, goesOn_, notesHeight_, regionTop_ > bodyTop_);
        goesOn_ = false;
    }

    void flushColumn() {
        columns_.push_back(flow_.take());
        regionUsed_ = std::max(regionUsed_, flow_.used());
        pageNotes_.insert(pageNotes_.end(), flow_.notes().begin(), flow_.notes().end());
        notesHeight_ = flow_.notesHeight();
        flow_.begin(0, false, notesHeight_);
    }

    // Columns of one width above a section that goes on under them end at the same height.
    void balanceColumns() {
        const std::size_t count = section().columns.size();
        if (count < 2 || sectionColumn_ > 0 || !rules_.balancesColumns() ||
            !word::hasOneColumnWidth(section())) {
            return;
        }
        columns_.resize(count);
        columns_ = balanced(columns_, bodyBottom_ - regionTop_, regionGoesOn_, rules_.addsSpaces());
    }

    void placeColumns() {
        beginSectionHere();
        addColumnLines(section(), columns_, paper().left, regionTop_, page_.layer);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            column_ = std::min(i, section().columns.size() - 1);
            for (FlowedStrip& flowed : columns_[i]) {
                const double y = regionTop_ + flowed.y;
                page_.layer.append(std::move(flowed.strip.layer), columnLeft(), y);
                for (const AnchoredFloat& floating : flowed.strip.floats) {
                    putOn(page_, floating, frameAt(y));
                }
                extend(text_, flowed.strip);
            }
        }
        columns_.clear();
        sectionColumn_ = 0;
    }

    // A continuous section begins on this page when some of it stands here. The page's headers are
    // those of the section above it.
    void beginSectionHere() {
        const auto own = std::span(columns_).subspan(sectionColumn_);
        if (std::all_of(own.begin(), own.end(),
                        [](const auto& column) { return column.empty(); })) {
            return;
        }
        number_ = bodyNumber();
        firstOfSection_ = false;
        counter_.add(section_, page_.sheet);
        for (const auto& column : own) {
            for (const FlowedStrip& flowed : column) {
                lines_.add(flowed.strip, {0, page_.sheet, number_, section().numberForm});
            }
        }
    }

    double columnLeft() const { return paper().left + section().columns[column_].left; }

    FloatFrame frameAt(double anchorTop) const {
        return frameOn(paper(), columnLeft(), section().columns[column_].width, anchorTop);
    }

    void finishPage() {
        placeNotes();
        headers_.finish(headersOf_, text_ ? *text_ : textAhead(), page_);
        if (!firstOfSection_) {
            counter_.add(section_, page_.sheet);
        }
        if (options_.officeLines) {
            page_.alignLikeOffice();
        }
        finished_.push_back(std::move(page_));
        page_ = {};
        page_.sheet = finished_.back().sheet;
    }

    void placeNotes() {
        counter_.addNotes(pageNotes_, page_.sheet);
        std::vector<NotePart> parts = std::exchange(carriedNotes_, {});
        for (const std::uint32_t note : pageNotes_) {
            parts.push_back({note, 0});
        }
        if (!parts.empty()) {
            const NoteArea area{static_cast<double>(paper().left), bodyBottom_ - notesHeight_,
                                bodyBottom_};
            carriedNotes_ = pageNotes().place(std::move(parts), area, page_.layer);
        }
    }

    PageNotes pageNotes() { return {notes_, pageSetting(), rules_.addsSpaces()}; }

    // Their positions count in a story of their own.
    Strips behindText(Strips notes) const {
        for (Strip& strip : notes) {
            strip.isOfNote = true;
            strip.at = source_.main->size();
        }
        return notes;
    }

    // Endnotes stand behind the text.
    void finish() {
        if (!endnotesFed_) {
            endnotesFed_ = true;
            for (const std::uint32_t note : notes_.endnotes()) {
                append(behindText(notes_.strips(note, columnSetting())));
                notes_.forget(note);
            }
            if (auto frames = body_.rest()) {
                pending_.push_back(std::move(*frames));
            }
            if (!pending_.empty()) {
                return;
            }
        }
        endPage();
        while (!carriedNotes_.empty()) {
            beginPage();
            endPage();
        }
        done_ = true;
    }

    LayoutSource source_;
    LayoutOptions options_;
    DocumentRules rules_;
    PageCounter counter_;
    StoryReader::Shared shared_;
    NoteStrips notes_;
    PageFieldValues fields_;
    PageHeaders headers_;
    BlockComposer body_;
    ColumnFlow flow_;
    std::deque<Page> finished_;
    LinePlaces lines_;
};

DocumentLayout::DocumentLayout(const LayoutSource& source, FontMetrics& fonts,
                               const LayoutOptions& options)
    : work_(std::make_unique<Work>(source, fonts, options)) {}

DocumentLayout::~DocumentLayout() = default;

std::optional<Page> DocumentLayout::nextPage() { return work_->nextPage(); }
std::shared_ptr<const DocumentLayout::Place> DocumentLayout::place() const {
    return work_->place();
}
void DocumentLayout::goTo(const Place& place) { work_->goTo(place); }
std::size_t DocumentLayout::placeSize(std::size_t most) const { return work_->placeSize(most); }
bool DocumentLayout::showsPageCounts() const { return work_->showsPageCounts(); }
std::optional<PageCounts> DocumentLayout::correctedCounts() const {
    return work_->correctedCounts();
}
const std::vector<LinePlace>& DocumentLayout::lines() const { return work_->lines(); }
std::u16string DocumentLayout::chapterAt(word::Cp position) const {
    return work_->chapterAt(position);
}

} // namespace qvnd::layout
