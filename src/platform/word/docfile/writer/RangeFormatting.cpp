#include "platform/word/docfile/writer/RangeFormatting.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

constexpr char16_t paragraphMark = 0x0D;
constexpr char16_t cellMark = 0x07;
constexpr char16_t breakCharacter = 0x0C;

// How much of the run [runBegin, runEnd) lies in the range.
Cp overlap(const TextRange& range, Cp runBegin, Cp runEnd) {
    const Cp begin = std::max(range.begin, runBegin);
    const Cp end = std::min(range.begin + range.length, runEnd);
    return end > begin ? end - begin : 0;
}

} // namespace

RangeFormatting::RangeFormatting(const std::vector<TextRange>& ranges,
                                 const std::set<Cp>& sectionEnds, FileProperties& properties)
    : sectionEnds_(sectionEnds), properties_(properties) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const TextRange& range = ranges[i];
        addCharacters(range);
        addParagraphs(range);
        const bool continues =
            i + 1 < ranges.size() && ranges[i + 1].position == range.position + range.length;
        leftOpen_.push_back(open_.length != 0 && !continues);
        if (leftOpen_.back()) {
            leaveOpen();
        }
    }
}

void RangeFormatting::addCharacters(const TextRange& range) {
    Cp end = 0;
    for (const CharacterRun& run : range.story->characters) {
        const Cp begin = std::exchange(end, end + run.length);
        const Cp length = overlap(range, begin, end);
        if (length == 0) {
            continue;
        }
        if (!characters_.empty() && lastCharacters_ == run.properties) {
            characters_.back().length += length;
        } else {
            characters_.push_back({length, properties_.of(run.properties)});
            lastCharacters_ = run.properties;
        }
    }
}

void RangeFormatting::addParagraphs(const TextRange& range) {
    Cp end = 0;
    for (const ParagraphRun& run : range.story->paragraphs) {
        const Cp begin = std::exchange(end, end + run.length);
        const Cp length = overlap(range, begin, end);
        if (length == 0) {
            continue;
        }
        open_ = {open_.length + length, run.style, properties_.of(run.properties)};
        if (endsParagraph(range, end)) {
            finishParagraph();
        }
    }
}

bool RangeFormatting::endsParagraph(const TextRange& range, Cp runEnd) const {
    if (runEnd > range.begin + range.length) {
        return false;
    }
    const char16_t last = range.story->text[runEnd - 1];
    if (last != breakCharacter) {
        return last == paragraphMark || last == cellMark;
    }
    // A break of a page does not end a paragraph by itself; at the end of a fragment nothing but
    // the sections tells it from a break of a section.
    const Cp position = range.position + (runEnd - range.begin);
    return runEnd < range.story->size() || sectionEnds_.count(position) != 0;
}

void RangeFormatting::finishParagraph() { paragraphs_.push_back(std::exchange(open_, {})); }

void RangeFormatting::leaveOpen() {
    ++open_.length;
    ++characters_.back().length;
    finishParagraph();
}

} // namespace qvnd::word
