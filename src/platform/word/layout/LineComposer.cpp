#include "platform/word/layout/LineComposer.h"

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/LineHeights.h"
#include "platform/word/layout/ParagraphBorders.h"
#include "platform/word/layout/TabStops.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

using word::LineAlignment;
using word::ResolvedParagraph;
using word::TabStop;
using Kind = TextItem::Kind;

constexpr double lineUnits = 240;        // of a multiple
constexpr double automaticSpace = 280;   // twips above and below, where a page of the web has them
constexpr double narrowestBeside = 1134; // twips of a line beside what floats
constexpr double rounding = 1;           // twips by which a line may be too long

bool isText(const TextItem& item) { return item.kind == Kind::character; }
bool isBlankItem(const TextItem& item) { return isText(item) && isBlank(item.character); }

bool isSeen(const TextItem& item) {
    return item.kind == Kind::picture || (isText(item) && !isBlank(item.character));
}

bool endsLine(const TextItem& item) {
    return item.kind == Kind::lineBreak || item.kind == Kind::pageBreak ||
           item.kind == Kind::columnBreak;
}

// One line of a paragraph: items [begin, end) with the places that they take.
struct Line {
    std::size_t begin = 0;
    std::size_t end = 0;
    double left = 0;    // where its first item stands
    double room = 0;    // from there to its right end
    double length = 0;  // of its items without blanks at the end
    double dropped = 0; // below the line before, where something stands in the way
    bool isLast = false;
};

class Composer {
public:
    Composer(const ParagraphItems& paragraph, const ResolvedParagraph& format, FontMetrics& fonts,
             const LineSetting& setting)
        : paragraph_(paragraph), items_(paragraph.items), format_(format), fonts_(fonts),
          setting_(setting), left_(format.left.in(paragraph.characterWidth)),
          right_(format.right.in(paragraph.characterWidth)),
          firstLine_(format.firstLine.in(paragraph.characterWidth)) {
        addGaps();
    }

    Strips compose(std::size_t from) {
        Strips strips;
        std::size_t at = from;
        do {
            const bool isFirst = strips.empty() && from == 0;
            const Line line = nextLine(at, isFirst);
            strips.push_back(setLine(line, isFirst));
            at = line.end;
        } while (at < items_.size());
        if (!items_.empty() && endsLine(items_.back())) {
            strips.push_back(
                setLine(nextLine(at, false), false)); // the mark stands behind the break
        }
        finish(strips, from == 0);
        return strips;
    }

private:
    // Room between Chinese and Latin, and what the grid adds to each character.
    void addGaps() {
        gaps_.assign(items_.size(), 0);
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (!isText(items_[i])) {
                continue;
            }
            const bool inPairs = setting_.compressesPunctuation && !setting_.options.officeLines;
            if (inPairs && i + 1 < items_.size() && isText(items_[i + 1])) {
                compress(items_[i], items_[i + 1]);
            }
            if (format_.snapsToGrid && items_[i].format->snapsToGrid) {
                items_[i].width += setting_.grid.characterSpacing;
            }
            if (i + 1 < items_.size() && isText(items_[i + 1]) && !items_[i].isLabel) {
                gaps_[i] = gapBetweenScripts(items_[i], items_[i + 1]);
            }
        }
    }

    // Of two full-width punctuation marks side by side the first gives up its empty half.
    static void compress(TextItem& mark, const TextItem& next) {
        const bool closesOnMark = isClosingMark(mark.character) &&
                                  (isClosingMark(next.character) || isOpeningMark(next.character));
        if (closesOnMark && mark.width >= mark.size) {
            mark.width -= mark.size / 2;
        }
    }

    double gapBetweenScripts(const TextItem& a, const TextItem& b) const {
        const char32_t latin = isIdeograph(a.character) ? b.character : a.character;
        const bool mixed = isIdeograph(a.character) != isIdeograph(b.character);
        const bool wanted = (format_.spacesLatin && isLatinLetter(latin)) ||
                            (format_.spacesDigits && isDigit(latin));
        return mixed && wanted ? setting_.options.latinGap * std::min(a.size, b.size) : 0;
    }

    double lineLeft(bool first) const { return left_ + (first ? firstLine_ : 0); }

    double widthOf(std::size_t i) const { return items_[i].width + gaps_[i]; }

    Line nextLine(std::size_t begin, bool first) {
        Line line;
        line.begin = begin;
        // The height is known when the line is filled; that of plain text is near enough.
        constexpr double usualHeight = 1.2;
        const LineGap gap =
            gapFor(setting_.obstacles, {top_, lineLeft(first), setting_.width - right_},
                   usualHeight * paragraph_.markSize, narrowestBeside);
        line.dropped = gap.top - top_;
        line.left = gap.left;
        line.room = std::max(gap.right - gap.left, paragraph_.markSize);
        line.end = fill(line);
        line.isLast = line.end == items_.size();
        std::size_t seen = line.end;
        while (seen > line.begin && (isBlankItem(items_[seen - 1]) || endsLine(items_[seen - 1]))) {
            --seen;
        }
        for (std::size_t i = line.begin; i < seen; ++i) {
            line.length += widthOf(i);
        }
        line.length -= seen > line.begin ? gaps_[seen - 1] : 0;
        line.length -= squeeze(line.begin, seen, line.length - line.room);
        return line;
    }

    // What a punctuation mark can give up of its width so that more fits on its line, as the
    // office suite has it.
    double spareOf(const TextItem& item) const {
        const bool gives = setting_.options.officeLines && setting_.compressesPunctuation &&
                           isText(item) && isSqueezable(item.character) && item.width >= item.size;
        return gives ? item.size / 2 : 0;
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

    // The item behind the line's last one.
    std::size_t fill(const Line& line) {
        double x = 0;
        double spare = 0;                 // of the marks so far
        std::size_t breakAt = line.begin; // the best place so far; none while it is the begin
        for (std::size_t i = line.begin; i < items_.size(); ++i) {
            if (endsLine(items_[i])) {
                return i + 1;
            }
            if (items_[i].kind == Kind::tab && !placeTab(line, i, x) && i > line.begin) {
                return i;
            }
            if (i > line.begin && mayBreak(i)) {
                breakAt = i;
            }
            spare += spareOf(items_[i]);
            const bool fits =
                isBlankItem(items_[i]) || x + items_[i].width <= line.room + spare + rounding;
            if (!fits && i > line.begin) {
                if (hangs(i)) {
                    return behindBlanks(i + 1);
                }
                return breakAt > line.begin ? breakAt : i;
            }
            x += widthOf(i);
        }
        return items_.size();
    }

    std::size_t behindBlanks(std::size_t i) const {
        while (i < items_.size() && isBlankItem(items_[i])) {
            ++i;
        }
        return i;
    }

    bool hangs(std::size_t i) const {
        return format_.hangsPunctuation && isText(items_[i]) && isEastAsian(items_[i].character) &&
               mayHang(items_[i].character);
    }

    bool mayBreak(std::size_t i) const {
        const TextItem& before = items_[i - 1];
        const TextItem& after = items_[i];
        if (!isText(before) || !isText(after)) {
            const TextItem& text = isText(before) ? before : after;
            const bool joins = (before.kind == Kind::picture || after.kind == Kind::picture) &&
                               isText(text) && !isBlankItem(before) && !isEastAsian(text.character);
            return !joins && (before.kind != Kind::tab || !before.isLabel);
        }
        return mayBreakBetween(before.character, after.character,
                               {format_.forbidsLineEnds, format_.breaksWords});
    }

    // What stands behind the tab up to the next one: all of it, or up to the decimal point.
    double behindTab(std::size_t tab, bool upToPoint) const {
        double width = 0;
        for (std::size_t i = tab + 1; i < items_.size(); ++i) {
            const bool ends = items_[i].kind == Kind::tab || endsLine(items_[i]) ||
                              (upToPoint && items_[i].character == U'.');
            if (ends) {
                break;
            }
            width += widthOf(i);
        }
        return width;
    }

    // False where what is to stand in front of the stop has no room on the line: the tab goes to
    // the next line with it.
    bool placeTab(const Line& line, std::size_t i, double x) {
        const double at = line.left + x;
        const TabStop stop = stopBehind(at, format_, left_, firstLine_, setting_.defaultTab);
        const bool atRightEnd =
            stop.kind == TabStop::Kind::right && stop.at >= line.left + line.room - rounding;
        if (atRightEnd && x + behindTab(i, false) > line.room + rounding) {
            return false;
        }
        double width = stop.at - at;
        if (stop.kind == TabStop::Kind::right) {
            width -= behindTab(i, false);
        } else if (stop.kind == TabStop::Kind::centre) {
            width -= behindTab(i, false) / 2;
        } else if (stop.kind == TabStop::Kind::decimal) {
            width -= behindTab(i, true);
        }
        items_[i].width = std::max(width, 0.0);
        items_[i].character = stop.leader;
        return true;
    }

    ContentHeights heightsOf(const Line& line) const {
        ContentHeights heights;
        // Blanks and tabs count only where nothing else stands.
        const bool hasText =
            std::any_of(items_.begin() + static_cast<std::ptrdiff_t>(line.begin),
                        items_.begin() + static_cast<std::ptrdiff_t>(line.end), isSeen);
        for (std::size_t i = line.begin; i < line.end; ++i) {
            const TextItem& item = items_[i];
            if (item.kind == Kind::picture) {
                heights.add(item.height + item.raised, -item.raised);
            } else if (isSeen(item) || !hasText) {
                add(heights, item.face, lineSize(item), item.raised);
            }
        }
        if (line.begin == line.end || (line.isLast && setting_.options.marksCount)) {
            add(heights, paragraph_.markFace, paragraph_.markSize, 0);
        }
        return heights;
    }

    // Small capitals take the room of the letters that they stand for.
    static double lineSize(const TextItem& item) {
        const bool isSmall =
            item.format->smallCapitals && item.format->script == word::ResolvedText::Script::normal;
        return isSmall ? item.format->halfPoints * 10.0 : item.size;
    }

    void add(ContentHeights& heights, FaceId face, double size, double raised) const {
        const FaceHeights own = fonts_.heights(face);
        const double leading = setting_.hasLeading ? own.leading : 0;
        heights.add((own.ascent + leading) * size + raised, own.descent * size - raised);
    }

    Strip setLine(const Line& line, bool isFirst) {
        Strip strip;
        const LineRoom room = roomOf(heightsOf(line), format_, setting_, {isFirst, line.isLast});
        strip.height = room.height;
        strip.spare = room.spare;
        strip.before = line.dropped;
        top_ += line.dropped + room.height;
        strip.at = line.begin < items_.size() ? items_[line.begin].at : 0;
        const double spread = stretch(line);
        place(line, line.left + shift(line), room.foot, spread, strip);
        for (std::size_t i = line.begin; i < line.end; ++i) {
            if (items_[i].note) {
                strip.notes.push_back(*items_[i].note);
            }
            strip.endsPage = strip.endsPage || items_[i].kind == Kind::pageBreak;
            strip.endsColumn = strip.endsColumn || items_[i].kind == Kind::columnBreak;
        }
        return strip;
    }

    double shift(const Line& line) const {
        const double rest = line.room - line.length;
        switch (format_.alignment) {
        case LineAlignment::centre:
            return rest / 2;
        case LineAlignment::right:
            return rest;
        default:
            return 0;
        }
    }

    // A place where a justified line may be stretched: behind this item.
    bool isElastic(std::size_t i, std::size_t end) const {
        if (i + 1 >= end || !isText(items_[i]) || !isText(items_[i + 1])) {
            return false;
        }
        return isBlank(items_[i].character) || isEastAsian(items_[i].character) ||
               isEastAsian(items_[i + 1].character);
    }

    // What each elastic place of the line gets.
    double stretch(const Line& line) const {
        const bool wanted = (format_.alignment == LineAlignment::justified && !line.isLast &&
                             !endsLine(items_[line.end - 1])) ||
                            format_.alignment == LineAlignment::distributed;
        const double rest = line.room - line.length;
        if (!wanted || rest <= 0 || line.begin == line.end) {
            return 0;
        }
        std::size_t places = 0;
        const std::size_t end = seenEnd(line);
        for (std::size_t i = firstElastic(line); i < end; ++i) {
            places += isElastic(i, end) ? 1 : 0;
        }
        return places > 0 ? rest / static_cast<double>(places) : 0;
    }

    std::size_t seenEnd(const Line& line) const {
        std::size_t end = line.end;
        while (end > line.begin && isBlankItem(items_[end - 1])) {
            --end;
        }
        return end;
    }

    // Nothing in front of a tab moves.
    std::size_t firstElastic(const Line& line) const {
        std::size_t first = line.begin;
        for (std::size_t i = line.begin; i < line.end; ++i) {
            first = items_[i].kind == Kind::tab ? i + 1 : first;
        }
        return first;
    }

    void place(const Line& line, double x, double foot, double spread, Strip& strip) {
        const std::size_t end = seenEnd(line);
        const std::size_t elasticFrom = firstElastic(line);
        for (std::size_t i = line.begin; i < line.end; ++i) {
            const TextItem& item = items_[i];
            double width = widthOf(i);
            width += spread > 0 && i >= elasticFrom && isElastic(i, end) ? spread : 0;
            if (item.kind == Kind::picture) {
                strip.layer.pictures.push_back(
                    {x, foot - item.raised - item.height, item.width, item.height, item.picture});
            } else if (item.kind == Kind::tab) {
                if (auto leader = leaderOf(item, x, foot, fonts_, setting_.options.officeLines)) {
                    strip.layer.texts.push_back(std::move(*leader));
                }
            } else if (isText(item)) {
                placeCharacter(item, x, foot, width, strip, i > line.begin && follows(i));
            }
            x += width;
        }
    }

    // Whether the item goes on in the text of the one before.
    bool follows(std::size_t i) const {
        const TextItem& a = items_[i - 1];
        const TextItem& b = items_[i];
        return isText(a) && a.format == b.format && a.face == b.face && a.size == b.size &&
               a.raised == b.raised;
    }

    void placeCharacter(const TextItem& item, double x, double foot, double width, Strip& strip,
                        bool goesOn) {
        if (item.format->background) {
            const FaceHeights heights = fonts_.heights(item.face);
            strip.layer.fills.push_back({x, foot - heights.ascent * item.size, width,
                                         (heights.ascent + heights.descent) * item.size,
                                         *item.format->background});
        }
        if (!goesOn || strip.layer.texts.empty()) {
            PlacedText text;
            text.x = x;
            text.baseline = foot - item.raised;
            text.size = item.size;
            text.stretch = item.format->scalePercent / 100.0;
            text.face = item.face;
            text.colour = item.format->colour;
            text.underlined = item.format->underlined;
            text.struckOut = item.format->struckOut || item.format->deleted;
            text.bold = item.format->bold;
            strip.layer.texts.push_back(std::move(text));
        }
        PlacedText& text = strip.layer.texts.back();
        if (item.character >= 0x10000) {
            const char32_t rest = item.character - 0x10000;
            text.text += static_cast<char16_t>(0xD800 + (rest >> 10));
            text.text += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
            text.advances.push_back(static_cast<float>(width));
            text.advances.push_back(0);
        } else {
            text.text += static_cast<char16_t>(item.character);
            text.advances.push_back(static_cast<float>(width));
        }
    }

    double spaceOf(int twips, int lines, bool automatic) const {
        if (automatic) {
            return automaticSpace;
        }
        const double line = setting_.grid.linePitch > 0 ? setting_.grid.linePitch : lineUnits;
        return lines > 0 ? lines * line / 100 : twips;
    }

    void finish(Strips& strips, bool fromStart) const {
        if (fromStart) {
            strips.front().before +=
                spaceOf(format_.before, format_.linesBefore, format_.automaticBefore);
        }
        strips.back().after = spaceOf(format_.after, format_.linesAfter, format_.automaticAfter);
        strips.front().startsPage = format_.startsPage && fromStart;
        for (std::size_t i = 0; i < strips.size(); ++i) {
            strips[i].line = i;
            strips[i].lines = strips.size();
            strips[i].keepsLines = format_.keepsLines;
            strips[i].keepsWithNext = format_.keepsWithNext;
            strips[i].controlsWidows = format_.controlsWidows;
            strips[i].contextual = format_.contextual;
        }
        addBorders(strips, format_, left_, setting_.width - right_);
    }

    const ParagraphItems& paragraph_;
    std::vector<TextItem> items_;
    const ResolvedParagraph& format_;
    FontMetrics& fonts_;
    const LineSetting& setting_;
    double left_;
    double right_;
    double firstLine_;
    std::vector<double> gaps_; // behind each item
    double top_ = 0;           // of the next line, from the first one's
};

} // namespace

Grid gridOf(const word::ResolvedSection& section) {
    Grid grid;
    if (section.grid == word::GridKind::none) {
        return grid;
    }
    grid.linePitch = section.linePitch;
    if (section.grid == word::GridKind::linesAndCharacters) {
        constexpr double unitsPerPoint = 4096;
        constexpr double twipsPerPoint = 20;
        grid.characterSpacing = section.characterSpacing / unitsPerPoint * twipsPerPoint;
    }
    return grid;
}

Strips composeLines(const ParagraphItems& paragraph, const word::ResolvedParagraph& format,
                    FontMetrics& fonts, const LineSetting& setting, std::size_t from) {
    return Composer(paragraph, format, fonts, setting).compose(from);
}

} // namespace qvnd::layout
