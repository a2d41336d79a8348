#include "platform/word/formatting/StyledParagraphs.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/ListNumbers.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qvnd::word {

namespace {

// Reads the paragraphs of a story from its start on.
class SeenText {
public:
    SeenText(const Story& story, FormatResolver& formats) : story_(story), formats_(formats) {}

    struct Seen {
        std::u16string text;
        bool isLeftOut = false; // all of the paragraph is hidden, its mark too
    };

    Seen next(const ParagraphRun& paragraph) {
        Seen seen;
        seen.isLeftOut = true;
        for (const Cp end = at_ + paragraph.length; at_ < end; ++at_) {
            const char16_t c = story_.text[at_];
            if (isFieldCharacter(c)) {
                fields_.take(c);
            }
            const bool isHidden = isHiddenHere(paragraph.style);
            seen.isLeftOut = seen.isLeftOut && isHidden;
            const bool isText = c >= special::firstPrintable || c == special::tab;
            if ((isText || c == special::fixedHyphen) && !isHidden && !fields_.isInside()) {
                seen.text += isText ? c : u'-';
            }
        }
        return seen;
    }

private:
    bool isHiddenHere(StyleIndex style) {
        while (run_ + 1 < story_.characters.size() &&
               runStart_ + story_.characters[run_].length <= at_) {
            runStart_ += story_.characters[run_++].length;
        }
        return formats_.text(style, story_.characters[run_].properties).isUnseen();
    }

    const Story& story_;
    FormatResolver& formats_;
    FieldInstructions fields_;
    Cp at_ = 0;
    std::size_t run_ = 0;
    Cp runStart_ = 0;
};

// The signs of CNS, [MS-DOC] 2.9.36.
char16_t signOf(ResolvedSection::ChapterSign sign) {
    using Sign = ResolvedSection::ChapterSign;
    switch (sign) {
    case Sign::period:
        return u'.';
    case Sign::colon:
        return u':';
    case Sign::emDash:
        return u'—';
    case Sign::enDash:
        return u'–';
    default:
        return u'-';
    }
}

// How many numbers stand in a text.
unsigned levelsIn(std::u16string_view numbers) {
    constexpr std::u16string_view between = u".．-–—、:：()（） /";
    unsigned count = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool isNumber = between.find(numbers[i]) == between.npos;
        const bool wasNumber = i > 0 && between.find(numbers[i - 1]) == between.npos;
        count += isNumber && !wasNumber ? 1 : 0;
    }
    return count;
}

// The styles of headings by their level; one that is no style for a level without.
std::array<StyleIndex, 9> headingsOf(const StyleSheet& sheet) {
    std::array<StyleIndex, 9> headings{};
    headings.fill(static_cast<StyleIndex>(sheet.styles.size()));
    for (std::size_t i = sheet.styles.size(); i-- > 0;) {
        const auto& style = sheet.styles[i];
        if (style && style->sti >= sti::heading1 && style->sti < sti::heading1 + headings.size()) {
            headings.at(style->sti - sti::heading1) = static_cast<StyleIndex>(i);
        }
    }
    return headings;
}

} // namespace

StyledParagraphs::StyledParagraphs(const DocumentTables& tables, const Story& story)
    : paragraphs_(tables.styles.styles.size()), headings_(headingsOf(tables.styles)) {
    FormatResolver formats(tables);
    ListNumbers numbers(tables, formats.levels());
    SeenText text(story, formats);
    Cp at = 0;
    for (const ParagraphRun& run : story.paragraphs) {
        SeenText::Seen seen = text.next(run);
        const Cp begin = std::exchange(at, at + run.length);
        if (seen.isLeftOut) {
            continue;
        }
        StyledParagraph paragraph{begin, std::move(seen.text), {}, {}};
        const ResolvedParagraph& look = formats.paragraph(run.style, run.properties);
        if (const auto label = numbers.next(look.list, look.listLevel)) {
            paragraph.label = label->text;
            paragraph.numbers = label->numbers;
            paragraph.hasAllLevels = levelsIn(label->numbers) > look.listLevel;
        }
        if (run.style < paragraphs_.size()) {
            paragraphs_[run.style].push_back(std::move(paragraph));
        }
    }
}

const std::vector<StyledParagraph>& StyledParagraphs::of(StyleIndex style) const {
    static const std::vector<StyledParagraph> none;
    return style < paragraphs_.size() ? paragraphs_[style] : none;
}

const std::vector<StyledParagraph>& StyledParagraphs::headings(unsigned level) const {
    return of(headings_.at(level - 1));
}

std::u16string StyledParagraphs::chapter(const ResolvedSection& section, PageText page) const {
    for (unsigned level = section.chapterLevel; level > 0; --level) {
        const StyledParagraph* heading = nearest(headings(level), page);
        if (heading != nullptr && !heading->numbers.empty()) {
            return heading->numbers + signOf(section.chapterSign);
        }
    }
    return {};
}

const StyledParagraph* nearest(const std::vector<StyledParagraph>& paragraphs, PageText page,
                               bool last) {
    const auto firstFrom = [&](Cp position) {
        return std::partition_point(
            paragraphs.begin(), paragraphs.end(),
            [&](const StyledParagraph& paragraph) { return paragraph.at < position; });
    };
    const auto first = firstFrom(page.begin);
    const auto behind = firstFrom(page.end + 1);
    if (first < behind) {
        return last ? &*std::prev(behind) : &*first;
    }
    return first == paragraphs.begin() ? nullptr : &*std::prev(first);
}

} // namespace qvnd::word
