#include "platform/word/docfile/writer/RangeFormatting.h"

#include "platform/word/docfile/format/SpecialCharacters.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

// How much of the run [runBegin, runEnd) lies in the range.
Cp overlap(const TextRange& range, Cp runBegin, Cp runEnd) {
    const Cp begin = std::max(range.begin, runBegin);
    const Cp end = std::min(range.begin + range.length, runEnd);
    return end > begin ? end - begin : 0;
}

} // namespace

RangeFormatting::RangeFormatting(const std::vector<TextRange>& ranges,
                                 const std::vector<Cp>& sectionEnds, FileProperties& properties)
    : ranges_(ranges), sectionEnds_(sectionEnds), properties_(properties),
      leftOpen_(walkParagraphs([](const ParagraphRun&) {})) {}

void RangeFormatting::tellCharacters(
    const std::function<void(const FormattedCharacters&)>& take) const {
    CharacterRun joined;
    const auto tell = [&] { take({joined.length, properties_.of(joined.properties)}); };
    for (std::size_t i = 0; i < ranges_.size(); ++i) {
        Cp end = 0;
        for (const CharacterRun& run : ranges_[i].story->characters) {
            const Cp begin = std::exchange(end, end + run.length);
            const Cp length = overlap(ranges_[i], begin, end);
            if (length != 0 && joined.length != 0 && joined.properties != run.properties) {
                tell();
                joined.length = 0;
            }
            joined = length == 0 ? joined : CharacterRun{joined.length + length, run.properties};
        }
        joined.length += leftOpen_[i] ? 1 : 0;
    }
    if (joined.length != 0) {
        tell();
    }
}

void RangeFormatting::tellParagraphs(
    const std::function<void(const FormattedParagraph&)>& take) const {
    walkParagraphs([&](const ParagraphRun& paragraph) {
        take({paragraph.length, paragraph.style, properties_.of(paragraph.properties)});
    });
}

std::vector<bool>
RangeFormatting::walkParagraphs(const std::function<void(const ParagraphRun&)>& take) const {
    std::vector<bool> leftOpen;
    ParagraphRun open;
    for (std::size_t i = 0; i < ranges_.size(); ++i) {
        Cp end = 0;
        for (const ParagraphRun& run : ranges_[i].story->paragraphs) {
            const Cp begin = std::exchange(end, end + run.length);
            const Cp length = overlap(ranges_[i], begin, end);
            if (length == 0) {
                continue;
            }
            open = {open.length + length, run.style, run.properties};
            if (endsParagraph(ranges_[i], end)) {
                take(std::exchange(open, {}));
            }
        }
        leftOpen.push_back(open.length != 0 && !continues(i));
        if (leftOpen.back()) {
            ++open.length;
            take(std::exchange(open, {}));
        }
    }
    return leftOpen;
}

bool RangeFormatting::continues(std::size_t range) const {
    return range + 1 < ranges_.size() &&
           ranges_[range + 1].position == ranges_[range].position + ranges_[range].length;
}

bool RangeFormatting::endsParagraph(const TextRange& range, Cp runEnd) const {
    if (runEnd > range.begin + range.length) {
        return false;
    }
    const char16_t last = range.story->text[runEnd - 1];
    if (last != special::pageBreak) {
        return last == special::paragraphMark || last == special::cellMark;
    }
    // A break of a page does not end a paragraph by itself; at the end of a fragment nothing but
    // the sections tells it from a break of a section.
    const Cp position = range.position + (runEnd - range.begin);
    return runEnd < range.story->size() ||
           std::binary_search(sectionEnds_.begin(), sectionEnds_.end(), position);
}

} // namespace qvnd::word
