#include "platform/word/layout/LineComposer.h"

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/CharacterPlacement.h"
#include "platform/word/layout/LineHeights.h"
#include "platform/word/layout/LineStretch.h"
#include "platform/word/layout/ParagraphBorders.h"
#include "platform/word/layout/TabStops.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace qvnd::layout {

namespace {

using word::LineAlignment;
using word::ResolvedParagraph;
using word::TabStop;
using Kind = TextItem::Kind;

constexpr double narrowestBeside = 1134; // twips of a line beside what floats
constexpr double overlong = 1;           // twips by which a line may be too long
constexpr double nearEnd = 20;           // twips between the ends of a line and of its contents
// The part of its size that a punctuation mark gives up at most: of a line's marks of 10.5 points
// one gives up 4.2 points and not 4.7.
constexpr double squeezedPart = 0.42;

// A line of a paragraph, or the part of one between obstacles: items [begin, end) with the places
// that they take.
struct Line {
    std::size_t begin = 0;
    std::size_t end = 0;
    double left = 0;    // where its first item stands
    double room = 0;    // from there to its right end
    double reach = 0;   // how far its text may stand: to its right end, or to a stop beyond it
    double length = 0;  // of its items without blanks at the end
    double dropped = 0; // below the line before, where something stands in the way
    bool isLast = false;
    bool hangs = false; // its last mark stands beyond its right end
};

class Composer {
public:
    Composer(ParagraphItems paragraph, const ResolvedParagraph& format, FontMetrics& fonts,
             const LineSetting& setting)
        : paragraph_(std::move(paragraph)), items_(paragraph_.items), format_(format),
          fonts_(fonts), setting_(setting),
          indents_(indentsOf(format, paragraph_.characterWidth,
                             setting.options.officeLines ? word::IndentUnits::twips
                                                         : word::IndentUnits::characters)) {
        if (setting.options.officeLines) {
            joinLigatures(items_, fonts_);
        }
        kern(items_, fonts_);
        gaps_ = gapsBehind(items_, format_, setting_);
    }

    Strips compose(std::size_t from) {
        Strips strips;
        std::size_t at = from;
        do {
            const bool isFirst = strips.empty() && from == 0;
            const std::vector<Line> parts = nextLine(at, isFirst);
            strips.push_back(setLine(parts, isFirst));
            at = parts.back().end;
        } while (at < items_.size());
        if (!items_.empty() && endsLine(items_.back())) {
            strips.push_back(
                setLine(nextLine(at, false), false)); // the mark stands behind the break
        }
        finish(strips, from == 0);
        return strips;
    }

private:
    double lineLeft(bool first) const {
        return indents_.left + (first ? indents_.firstLine - paragraph_.labelBefore : 0);
    }

    double widthOf(std::size_t i) const { return items_[i].width + gaps_[i]; }

    // The parts of the next line: one, or several beside what stands in its way.
    std::vector<Line> nextLine(std::size_t begin, bool first) {
        // The height is known when the line is filled; that of plain text is near enough.
        constexpr double usualHeight = 1.2;
        const double height = usualHeight * paragraph_.markSize;
        LineGap whole{top_, lineLeft(first), setting_.width - indents_.right};
        for (;;) {
            const auto gaps = gapsFor(setting_.obstacles, whole, height, narrowestBeside);
            whole.top = gaps.front().top;
            std::vector<Line> parts = partsIn(gaps, begin, gaps.front() == whole);
            if (!parts.empty()) {
                return parts;
            }
            whole.top = endOfObstacle(setting_.obstacles, whole, height);
        }
    }

    // Fills the gaps of a line one after the other. A gap stays empty whose first word is too long,
    // unless it is as wide as the line.
    std::vector<Line> partsIn(const std::vector<LineGap>& gaps, std::size_t begin, bool isWhole) {
        std::vector<Line> parts;
        std::size_t at = begin;
        for (const LineGap& gap : gaps) {
            const bool isFull = !parts.empty() && (at == items_.size() || endsLine(items_[at - 1]));
            if (isFull) {
                break;
            }
            Line part;
            part.begin = at;
            part.dropped = gap.top - top_;
            part.left = atCell(gap.left);
            part.room = std::max(gap.right - part.left, leastRoom());
            const bool cutsWord = !fill(part);
            if (isWhole || !cutsWord) {
                measure(part);
                parts.push_back(part);
                at = part.end;
            }
        }
        return parts;
    }

    double atCell(double x) const {
        return format_.snapsToGrid ? layout::atCell(setting_.grid, x) : x;
    }
    // Of a part of a line, which begins at a cell.
    double wholeCells(double width) const {
        return layout::atCell({0, 0, format_.snapsToGrid ? setting_.grid.cellWidth : 0, 0}, width);
    }

    // Chinese text behind Latin text begins at a cell. Returns where the item begins.
    double moveToCell(std::size_t i, double x) {
        if (setting_.grid.cellWidth <= 0 || !isText(items_[i]) || !isText(items_[i - 1]) ||
            !isEastAsian(items_[i].character) || isEastAsian(items_[i - 1].character)) {
            return x;
        }
        const double end = x - gaps_[i - 1];
        gaps_[i - 1] = wholeCells(end) - end;
        return end + gaps_[i - 1];
    }

    // Of a line whose indents leave none, as in narrow cells. In the office suite each character
    // stands on a line of its own there.
    double leastRoom() const { return setting_.options.officeLines ? 1 : paragraph_.markSize; }

    void measure(Line& line) {
        line.isLast = line.end == items_.size();
        showHyphen(line);
        std::size_t seen = line.end;
        while (seen > line.begin && (isBlankItem(items_[seen - 1]) || endsLine(items_[seen - 1]))) {
            --seen;
        }
        for (std::size_t i = line.begin; i < seen; ++i) {
            line.length += widthOf(i);
        }
        line.length -= seen > line.begin ? gaps_[seen - 1] : 0;
        line.length -= line.hangs ? items_[seen - 1].width : 0;
        if (seen > line.begin) {
            line.length -= squeeze(portionOf(seen - 1, line.begin), seen, line.length - line.reach);
        }
    }

    // What a punctuation mark can give up of its width so that more fits on its line, as the
    // office suite has it.
    double spareOf(const TextItem& item) const {
        const bool gives = setting_.options.officeLines && setting_.compressesPunctuation &&
                           isText(item) && isSqueezable(item.character) && item.width >= item.size;
        return gives ? squeezedPart * item.size : 0;
    }

    // Whether a portion of text begins with the item: what stands before it is measured by itself,
    // and its marks give nothing up for what follows.
    bool beginsPortion(std::size_t i) const {
        return i == 0 || !follows(i) ||
               isEastAsian(items_[i - 1].character) != isEastAsian(items_[i].character);
    }

    std::size_t portionOf(std::size_t i, std::size_t begin) const {
        while (i > begin && !beginsPortion(i)) {
            --i;
        }
        return i;
    }

    // Takes `wanted` from the marks of a line in equal parts; what they gave.
    double squeeze(std::size_t begin, std::size_t end, double wanted) {
        double spare = 0;
        for (std::size_t i = begin; i < end; ++i) {
            spare += spareOf(items_[i]);
        }
        if (wanted <= 0 || spare <= 0) {
            return 0;
        }
        const double part = std::min(1.0, wanted / spare);
        for (std::size_t i = begin; i < end; ++i) {
            items_[i].width -= part * spareOf(items_[i]);
        }
        return part * spare;
    }

    // Finds the line's end. False when it is within a word that has no room on the line, or when
    // its first item has none.
    bool fill(Line& line) {
        double x = 0;
        line.reach = line.room;
        bool isTooLong = false;            // the first item
        double spare = 0;                  // of the marks of the portion so far
        std::size_t breakAt = line.begin;  // the best place so far; none while it is the begin
        std::optional<std::size_t> halved; // a mark without its empty half
        for (std::size_t i = line.begin; i < items_.size(); ++i) {
            if (endsLine(items_[i])) {
                line.end = i + 1;
                return !isTooLong;
            }
            x = i > line.begin ? moveToCell(i, x) : x;
            if (items_[i].kind == Kind::tab && !placeTab(line, i, x) && i > line.begin) {
                line.end = i;
                return !isTooLong;
            }
            if (i > line.begin && mayBreak(i) && hyphenFits(items_[i - 1], line.reach - x)) {
                breakAt = i;
            }
            spare = (beginsPortion(i) ? std::max(0.0, x - line.reach) : spare) + spareOf(items_[i]);
            const bool fits = isBlankItem(items_[i]) || reachesBeyond(items_[i]) ||
                              x + items_[i].width <= line.reach + spare + overlong;
            if (!fits && fitsByHalf(items_[i], line.reach - x)) {
                items_[i].width -= items_[i].size / 2;
                halved = i;
            } else if (!fits && i > line.begin) {
                const bool isWhole = endBefore(i, breakAt, line) && !isTooLong;
                if (halved && *halved >= line.end) {
                    items_[*halved].width += items_[*halved].size / 2;
                }
                return isWhole;
            } else {
                isTooLong = isTooLong || !fits;
            }
            x += widthOf(i);
        }
        line.end = items_.size();
        return !isTooLong;
    }

    static bool hyphenFits(const TextItem& item, double room) {
        return item.kind != Kind::optionalHyphen || item.hyphenWidth <= room + overlong;
    }

    // An optional hyphen behind which a line ends is text like any other.
    void showHyphen(const Line& line) {
        TextItem* last = line.isLast || line.end == line.begin ? nullptr : &items_[line.end - 1];
        if (last != nullptr && last->kind == Kind::optionalHyphen) {
            last->kind = Kind::character;
            last->width = last->hyphenWidth;
        }
    }

    // A tab may lead beyond the right end of the line to a stop that the paragraph sets.
    bool reachesBeyond(const TextItem& item) const {
        return item.kind == Kind::tab && item.toOwnStop;
    }

    // The item does not fit any more.
    bool endBefore(std::size_t i, std::size_t breakAt, Line& line) const {
        if (hangs(i)) {
            line.hangs = !setting_.options.officeLines;
            line.end = behindBlanks(i + 1);
            return true;
        }
        const bool hasBreak = breakAt > line.begin;
        line.end = hasBreak ? breakAt : i;
        return hasBreak;
    }

    std::size_t behindBlanks(std::size_t i) const {
        while (i < items_.size() && isBlankItem(items_[i])) {
            ++i;
        }
        return i;
    }

    // A mark hangs only where the next line may begin behind it; in the office suite anywhere.
    bool hangs(std::size_t i) const {
        if (!format_.hangsPunctuation || !isText(items_[i]) || !isEastAsian(items_[i].character)) {
            return false;
        }
        if (setting_.options.officeLines) {
            return mayHangInOffice(items_[i].character);
        }
        const std::size_t next = behindBlanks(i + 1);
        const bool mayEnd = next == items_.size() || next > i + 1 || mayBreak(next);
        return mayHang(items_[i].character) && mayEnd;
    }

    bool inPairs() const { return setting_.compressesPunctuation && !setting_.options.officeLines; }

    // Whether a closing mark has room at the end of a line without its empty half.
    bool fitsByHalf(const TextItem& item, double room) const {
        return inPairs() && isText(item) && isClosingMark(item.character) &&
               item.width >= item.size && item.width - item.size / 2 <= room + overlong;
    }

    bool mayBreak(std::size_t i) const {
        return mayBreakBetween(items_[i - 1], items_[i], format_);
    }

    // False where what is to stand in front of the stop has no room on the line: the tab goes to
    // the next line with it. Text that is aligned at a stop beyond the right indent stands there.
    bool placeTab(Line& line, std::size_t i, double x) {
        const double at = line.left + x;
        const TabStop stop = stopBehind(at, format_, indents_, setting_.defaultTab);
        const double reach = std::max(line.room, stop.at - line.left);
        const SpacedItems all{items_, gaps_};
        const bool atRightEnd =
            stop.kind == TabStop::Kind::right && stop.at >= line.left + line.room - nearEnd;
        if (atRightEnd && x + behindTab(all, i) > reach + overlong) {
            return false;
        }
        const double end = stop.kind == TabStop::Kind::left ? atCell(stop.at) : stop.at;
        const double width = std::max(end - at - beforeStop(stop.kind, all, i), 0.0);
        if (stop.kind != TabStop::Kind::left && reach > line.room) {
            line.reach = std::max(line.reach, x + width + behindTab(all, i));
        }
        items_[i].width = width;
        items_[i].character = stop.leader;
        items_[i].toOwnStop = stop.kind == TabStop::Kind::left &&
                              std::find(format_.tabStops.begin(), format_.tabStops.end(), stop) !=
                                  format_.tabStops.end();
        return true;
    }

    Strip setLine(const std::vector<Line>& parts, bool isFirst) {
        Line line = parts.front();
        line.end = parts.back().end;
        line.isLast = parts.back().isLast;
        Strip strip;
        const std::span<const TextItem> shown(items_.data() + line.begin, line.end - line.begin);
        const LineRoom room = roomOf(contentOf(shown, paragraph_, line.isLast, fonts_, setting_),
                                     format_, setting_, {isFirst, line.isLast});
        // What stands in the way hangs on the strip, so its room is a part of the strip's height.
        strip.height = line.dropped + room.height;
        strip.dropped = line.dropped;
        strip.spare = room.spare;
        top_ += strip.height;
        strip.at = startOf(line);
        for (const Line& part : parts) {
            place(part, part.left + shift(part), line.dropped + room.foot, stretch(part), strip);
        }
        for (std::size_t i = line.begin; i < line.end; ++i) {
            if (items_[i].note) {
                strip.notes.push_back(*items_[i].note);
            }
            strip.endsPage = strip.endsPage || items_[i].kind == Kind::pageBreak;
            strip.endsColumn = strip.endsColumn || items_[i].kind == Kind::columnBreak;
        }
        return strip;
    }

    // The mark behind a break has the position behind it.
    word::Cp startOf(const Line& line) const {
        if (line.begin < items_.size()) {
            return items_[line.begin].at;
        }
        return items_.empty() ? 0 : items_.back().at + 1;
    }

    double shift(const Line& line) const {
        const double rest = line.reach > line.room ? 0 : line.room - line.length - restOfCell(line);
        switch (format_.alignment) {
        case LineAlignment::centre:
            return rest / 2;
        case LineAlignment::right:
            return rest;
        default:
            return 0;
        }
    }

    // On a grid with cells the Latin text at the end of a line takes whole ones.
    double restOfCell(const Line& line) const {
        double latin = 0;
        for (std::size_t i = seenEnd(line);
             i > line.begin && isText(items_[i - 1]) && !isEastAsian(items_[i - 1].character);
             --i) {
            latin += widthOf(i - 1);
        }
        return std::min(std::max(0.0, line.room - line.length), wholeCells(latin) - latin);
    }

    // Whether the line reaches to its right end where it is justified.
    bool goesOn(const Line& line) const {
        const TextItem& last = items_[line.end - 1];
        const bool isExpanded = last.kind == Kind::lineBreak && setting_.expandsBrokenLines;
        return !endsLine(last) || isExpanded;
    }

    // What each elastic place of the line gets.
    double stretch(const Line& line) const {
        const bool wanted =
            (format_.alignment == LineAlignment::justified && !line.isLast && goesOn(line)) ||
            format_.alignment == LineAlignment::distributed;
        const double rest = line.room - line.length;
        if (!wanted || rest <= 0 || line.begin == line.end) {
            return 0;
        }
        const std::size_t places = elasticPartOf(line).places();
        return places > 0 ? rest / static_cast<double>(places) : 0;
    }

    ElasticPart elasticPartOf(const Line& line) const {
        return {{items_.data() + line.begin, line.end - line.begin}, line.hangs};
    }

    std::size_t seenEnd(const Line& line) const {
        std::size_t end = line.end;
        while (end > line.begin && isBlankItem(items_[end - 1])) {
            --end;
        }
        return end;
    }

    void place(const Line& line, double x, double foot, double spread, Strip& strip) {
        const ElasticPart elastic = elasticPartOf(line);
        for (std::size_t i = line.begin; i < line.end; ++i) {
            const TextItem& item = items_[i];
            double width = widthOf(i);
            width += spread > 0 && elastic.stretchesBehind(i - line.begin) ? spread : 0;
            if (item.kind == Kind::picture && item.height > 0) {
                strip.layer.pictures.push_back(
                    {x, foot - item.raised - item.height, item.width, item.height, item.picture});
            } else if (item.kind == Kind::tab) {
                if (auto leader = leaderOf(item, x, foot, fonts_, setting_.options.officeLines)) {
                    strip.layer.texts.push_back(std::move(*leader));
                }
            } else if (isText(item)) {
                const bool goesOn = i > line.begin && follows(i);
                addCharacter(
                    {item, x, foot, width, goesOn, goesOn ? 0 : runOf({&item, line.end - i})},
                    fonts_, strip.layer);
            }
            x += width;
        }
    }

    // Whether the item goes on in the text of the one before.
    bool follows(std::size_t i) const { return continuesText(items_[i - 1], items_[i]); }

    void finish(Strips& strips, bool fromStart) const {
        if (fromStart) {
            strips.front().before = spaceAround(
                {format_.before, format_.linesBefore, format_.automaticBefore}, setting_.grid);
        }
        strips.back().after =
            spaceAround({format_.after, format_.linesAfter, format_.automaticAfter}, setting_.grid);
        strips.front().startsPage = (format_.startsPage || paragraph_.startsPage) && fromStart;
        for (std::size_t i = 0; i < strips.size(); ++i) {
            strips[i].line = i;
            strips[i].lines = strips.size();
            strips[i].keepsLines = format_.keepsLines;
            strips[i].keepsWithNext = format_.keepsWithNext;
            strips[i].controlsWidows = format_.controlsWidows;
            strips[i].contextual = format_.contextual;
        }
        addBorders(strips, format_, {indents_.left, setting_.width - indents_.right},
                   setting_.borders);
    }

    ParagraphItems paragraph_;
    std::vector<TextItem>& items_;
    const ResolvedParagraph& format_;
    FontMetrics& fonts_;
    const LineSetting& setting_;
    const word::ParagraphIndents indents_;
    std::vector<double> gaps_; // behind each item
    double top_ = 0;           // of the next line, from the first one's
};

} // namespace

Strips composeLines(ParagraphItems paragraph, const word::ResolvedParagraph& format,
                    FontMetrics& fonts, const LineSetting& setting, std::size_t from) {
    return Composer(std::move(paragraph), format, fonts, setting).compose(from);
}

} // namespace qvnd::layout
