#include "platform/word/layout/DocumentLayout.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/formatting/NumberForms.h"
#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/FillState.h"
#include "platform/word/layout/HeaderStrips.h"
#include "platform/word/layout/PageFloats.h"
#include "platform/word/layout/PageNotes.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace qvnd::layout {

namespace {

using word::ResolvedSection;

constexpr double leastBody = 720; // twips that headers and footers leave

} // namespace

struct DocumentLayout::Place {
    FillState state;
    ColumnFlow flow;
    std::deque<Page> finished;
};

class DocumentLayout::Work : FillState {
public:
    Work(const LayoutSource& source, FontMetrics& fonts, const LayoutOptions& options)
        : source_(source), options_(options), shared_(source_, fonts), notes_(shared_),
          headers_(shared_), body_(shared_, *source_.main), flow_(addsSpaces(), noteRooms()) {
        if (options_.officeLines) {
            shared_.readLikeOffice(word::readDop(source_.settings, word::dop::showRevisions) != 0);
        }
        const bool onTop = word::gutterOnTop(source_.settings);
        word::Cp at = 0;
        for (const word::SectionRun& section : source_.sections) {
            sections_.push_back(
                word::resolvedSectionOf(source_.tables->lists[section.properties], onTop));
            at += section.length;
            sectionEnds_.push_back(at);
        }
        if (sections_.empty()) {
            sections_.push_back(word::resolvedSectionOf({}, onTop));
            sectionEnds_.push_back(source_.main->size());
        }
        shared_.hasLeading = hasLeading();
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

    bool showsPageCount() const { return headers_.showsPageCount(); }
    const std::vector<LinePlace>& lines() const { return lines_; }

private:
    const ResolvedSection& section() const { return sections_[section_]; }

    bool addsSpaces() const {
        constexpr std::size_t knownFrom = 516; // settings of Word 97 do not say it
        return source_.settings.size() < knownFrom ||
               word::readDop(source_.settings, word::dop::addsParagraphSpaces) != 0;
    }

    ColumnFlow::NoteRooms noteRooms() {
        return [this](std::uint32_t note, bool first) { return pageNotes().roomOf(note, first); };
    }

    // In the office suite one grid takes the leading from all of the document.
    bool hasLeading() const {
        const bool isLost =
            options_.officeLines &&
            std::any_of(sections_.begin(), sections_.end(), [](const ResolvedSection& section) {
                return section.grid != word::GridKind::none;
            });
        return word::readDop(source_.settings, word::dop::noLeading) == 0 && !isLost;
    }

    LineSetting settingOf(double width) const {
        LineSetting setting;
        setting.width = width;
        setting.options = options_;
        const auto tab = word::readDop(source_.settings, word::dop::defaultTab);
        setting.defaultTab = tab > 0 ? tab : setting.defaultTab;
        setting.hasLeading = shared_.hasLeading;
        setting.compressesPunctuation =
            word::readDop(source_.settings, word::dop::characterSpacing) != 0;
        setting.gridInTables = word::readDop(source_.settings, word::dop::tableLinesOffGrid) == 0;
        return setting;
    }
    LineSetting columnSetting() const {
        LineSetting setting = settingOf(section().columns[column_].width);
        setting.grid = gridOf(section());
        return setting;
    }
    // Headers, footers and notes keep to no grid.
    LineSetting pageSetting() const { return settingOf(section().paper.textWidth()); }

    // One block, or the end.
    void step() {
        if (!pending_.empty()) {
            Strip strip = std::move(pending_.front());
            pending_.pop_front();
            feed(std::move(strip));
            return;
        }
        if (block_ == body_.blocks().size()) {
            finish();
            return;
        }
        const Block& block = body_.blocks()[block_++];
        const word::Cp start = body_.startOf(block);
        while (section_ + 1 < sections_.size() && start >= sectionEnds_[section_]) {
            enterSection();
        }
        body_.setPage({page_.numberText, options_.totalPages}, addsSpaces());
        append(compose(block, 0));
    }

    void append(Strips strips) {
        std::move(strips.begin(), strips.end(), std::back_inserter(pending_));
    }

    // A paragraph is composed once more where something floats beside it.
    Strips compose(const Block& block, word::Cp from) {
        Strips strips = body_.compose(block, columnSetting(), from);
        if (strips.empty() || block.table) {
            return strips;
        }
        const double top = regionTop_ + flow_.used() + flow_.spaceAbove(strips.front());
        const double left = columnLeft();
        obstacles_.add(strips, frameAt(top));
        LineSetting setting = columnSetting();
        setting.obstacles = obstacles_.within({left, top, left + section().columns[column_].width,
                                               top + heightOf(strips, addsSpaces())});
        if (setting.obstacles.empty()) {
            return strips;
        }
        strips = body_.compose(block, setting, from);
        for (Strip& strip : strips) {
            strip.besideFloats = true;
        }
        return strips;
    }

    // Lines that were set beside what floats on the page before are set anew.
    void recompose() {
        const auto first = std::find_if(pending_.begin(), pending_.end(),
                                        [](const Strip& strip) { return strip.besideFloats; });
        if (first == pending_.end() || block_ == 0) {
            return;
        }
        const Block& block = body_.blocks()[block_ - 1];
        if (first->paragraph != block.paragraph) {
            return;
        }
        body_.setPage({page_.numberText, options_.totalPages}, addsSpaces());
        const std::size_t line = first->line;
        const word::Cp from = line > 0 ? first->at : 0;
        pending_.erase(first, pending_.end());
        Strips strips = compose(block, from);
        for (Strip& strip : strips) {
            strip.line += line;
            strip.lines += line;
        }
        append(std::move(strips));
    }

    void feed(Strip strip) {
        if (strip.startsPage && !isPageEmpty()) {
            newPage();
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
        placeColumns();
        finishPage();
    }

    void enterSection() {
        const bool isEmpty = isPageEmpty();
        const bool goesOnBelow = !isEmpty && goesOnSheet(sections_[section_ + 1]);
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

    bool goesOnSheet(const ResolvedSection& next) const {
        return next.start == ResolvedSection::Start::continuous &&
               next.paper.width == section().paper.width &&
               next.paper.height == section().paper.height;
    }

    void beginPage() {
        ++page_.sheet;
        number_ = page_.sheet == 0 ? 1 : number_ + 1;
        openPage();
        skipForParity();
    }

    // A section that begins on an even or odd page leaves one empty before it where need be.
    void skipForParity() {
        const bool wantsEven = section().start == ResolvedSection::Start::evenPage;
        const bool wantsOdd = section().start == ResolvedSection::Start::oddPage;
        const bool isOdd = number_ % 2 != 0;
        if (isFirstOfSection_ && ((wantsEven && isOdd) || (wantsOdd && !isOdd))) {
            Page empty = page_;
            empty.layer = {};
            finished_.push_back(std::move(empty));
            ++page_.sheet;
            number_ += section().restartsNumbers ? 0 : 1;
            page_.layer = {};
            layHeaders();
        }
    }

    void openPage() {
        if (firstOfSection_) {
            isFirstOfSection_ = true;
            firstOfSection_ = false;
            number_ = section().restartsNumbers ? section().firstNumber : number_;
        } else {
            isFirstOfSection_ = false;
        }
        page_.layer = {};
        page_.width = section().paper.width;
        page_.height = section().paper.height;
        layHeaders();
        regionTop_ = bodyTop_;
        regionUsed_ = 0;
        column_ = 0;
        pageNotes_.clear();
        notesHeight_ = heightOfCarried();
        obstacles_.clear();
        beginColumn();
    }

    void layHeaders() {
        page_.number = number_;
        page_.numberText = word::numberInForm(number_, section().numberForm);
        HeaderStrips::Of of;
        of.section = section_;
        of.firstPage = section().hasTitlePage && isFirstOfSection_;
        of.evenPage = number_ % 2 == 0;
        const PageFields fields{page_.numberText, options_.totalPages};
        const word::SectionPaper& paper = section().paper;
        const auto header = headers_.header(of, fields, pageSetting());
        const auto footer = headers_.footer(of, fields, pageSetting());
        const double footerTop = paper.height - section().footerBottom - footer.height;
        putOn(page_, header, paper, section().headerTop);
        putOn(page_, footer, paper, footerTop);
        bodyTop_ = paper.top;
        bodyBottom_ = paper.height - paper.bottom;
        if (!section().topIsFixed && header.height > 0) {
            bodyTop_ = std::max<double>(bodyTop_, section().headerTop + header.height);
        }
        if (!section().bottomIsFixed && footer.height > 0) {
            bodyBottom_ = std::min(bodyBottom_, footerTop);
        }
        bodyBottom_ = std::max(bodyBottom_, bodyTop_ + leastBody);
        if (options_.officeLines) {
            centreGrid();
        }
    }

    // Whole lines of the document grid, in the middle of the room for the text.
    void centreGrid() {
        const double pitch = gridOf(section()).linePitch;
        const double height = bodyBottom_ - bodyTop_;
        if (pitch > 0 && pitch <= height) {
            const double lines = std::floor(height / pitch) * pitch;
            bodyTop_ += (height - lines) / 2;
            bodyBottom_ = bodyTop_ + lines;
        }
    }

    void beginColumn() {
        regionGoesOn_ = column_ == 0 ? goesOn_ : regionGoesOn_;
        flow_.begin(bodyBottom_ - regionTop_, goesOn_, notesHeight_);
        goesOn_ = false;
    }

    void flushColumn() {
        columns_.push_back(flow_.strips());
        regionUsed_ = std::max(regionUsed_, flow_.used());
        pageNotes_.insert(pageNotes_.end(), flow_.notes().begin(), flow_.notes().end());
        notesHeight_ = flow_.notesHeight();
        flow_.begin(0, false, notesHeight_);
    }

    // Columns of one width above a section that goes on under them end at the same height.
    void balanceColumns() {
        const auto& shape = section().columns;
        const bool isWanted = word::readDop(source_.settings, word::dop::unbalancedColumns) == 0;
        const bool areEqual = std::all_of(shape.begin(), shape.end(), [&](const auto& column) {
            return column.width == shape[0].width;
        });
        if (shape.size() < 2 || !isWanted || !areEqual) {
            return;
        }
        columns_.resize(shape.size());
        columns_ = balanced(columns_, bodyBottom_ - regionTop_, regionGoesOn_, addsSpaces());
    }

    void placeColumns() {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            column_ = std::min(i, section().columns.size() - 1);
            for (const FlowedStrip& flowed : columns_[i]) {
                const double y = regionTop_ + flowed.y;
                page_.layer.append(flowed.strip.layer, columnLeft(), y);
                for (const AnchoredFloat& floating : flowed.strip.floats) {
                    putOn(page_, floating, frameAt(y));
                }
                keepLine(flowed.strip.at);
            }
        }
        columns_.clear();
    }

    // Lines of a page that is laid out again are known already.
    void keepLine(word::Cp at) {
        const bool isNew = lines_.empty() || std::pair(lines_.back().at, lines_.back().sheet) <
                                                 std::pair(at, page_.sheet);
        if (isNew) {
            lines_.push_back({at, page_.sheet, number_});
        }
    }

    double columnLeft() const { return section().paper.left + section().columns[column_].left; }

    FloatFrame frameAt(double anchorTop) const {
        return frameOn(section().paper, columnLeft(), section().columns[column_].width, anchorTop);
    }

    void finishPage() {
        placeNotes();
        if (options_.officeLines) {
            page_.alignLikeOffice();
        }
        finished_.push_back(std::move(page_));
        Page next;
        next.sheet = finished_.back().sheet;
        page_ = std::move(next);
    }

    void placeNotes() {
        std::vector<NotePart> parts = std::exchange(carriedNotes_, {});
        for (const std::uint32_t note : pageNotes_) {
            parts.push_back({note, 0});
        }
        if (!parts.empty()) {
            const NoteArea area{static_cast<double>(section().paper.left),
                                bodyBottom_ - notesHeight_, bodyBottom_};
            carriedNotes_ = pageNotes().place(parts, area, page_.layer);
        }
    }

    PageNotes pageNotes() { return {notes_, pageSetting(), addsSpaces()}; }

    double heightOfCarried() {
        constexpr double leastText = 480; // that they leave on their page
        return std::min(pageNotes().heightOf(carriedNotes_), bodyBottom_ - bodyTop_ - leastText);
    }

    // Endnotes stand behind the text.
    void finish() {
        if (!endnotesFed_) {
            endnotesFed_ = true;
            for (const std::uint32_t note : notes_.endnotes()) {
                const Strips& strips = notes_.strips(note, columnSetting());
                pending_.insert(pending_.end(), strips.begin(), strips.end());
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
    StoryReader::Shared shared_;
    NoteStrips notes_;
    HeaderStrips headers_;
    BlockComposer body_;
    ColumnFlow flow_;
    std::vector<ResolvedSection> sections_;
    std::vector<word::Cp> sectionEnds_;
    std::deque<Page> finished_;
    std::vector<LinePlace> lines_;
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
bool DocumentLayout::showsPageCount() const { return work_->showsPageCount(); }
const std::vector<LinePlace>& DocumentLayout::lines() const { return work_->lines(); }

} // namespace qvnd::layout
