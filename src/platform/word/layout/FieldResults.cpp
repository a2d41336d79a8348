#include "platform/word/layout/FieldResults.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/NumberForms.h"
#include "platform/word/layout/PageCounts.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace qvnd::layout {

namespace {

using Span = FieldResults::Span;

// Types of fields (flt), [MS-DOC] 2.9.90.
constexpr std::uint8_t unknownField = 0x01;
constexpr std::uint8_t pageField = 0x21;
constexpr std::uint8_t sectionField = 0x41;

// A field whose end is not read yet.
struct Field {
    word::Cp begin = 0;
    word::Cp separator = 0;
    std::uint8_t type = 0;
};

// What a page field shows.
Span::Shows shownBy(std::uint8_t type) {
    switch (type) {
    case pageField:
        return Span::Shows::pageNumber;
    case pageCountField:
        return Span::Shows::pageCount;
    case sectionField:
        return Span::Shows::section;
    case sectionPagesField:
        return Span::Shows::sectionPages;
    default:
        return Span::Shows::nothing;
    }
}

// The replacement for the result of a field.
Span spanOf(const word::Story& story, const Field& field, const LayoutSource& source) {
    Span span;
    span.begin = field.begin;
    span.shows = shownBy(field.type);
    if (field.separator > field.begin) {
        const std::u16string_view instruction =
            std::u16string_view(story.text)
                .substr(field.begin + 1, field.separator - field.begin - 1);
        span.form = word::numberFormOf(instruction);
        if (auto shown = resultAnew(source, field.type, instruction)) {
            span.shows = Span::Shows::text;
            span.text = std::move(*shown);
        }
    }
    return span;
}

} // namespace

// Instructions are not seen; the result of a page field is counted anew. What lies within a span
// that is already unseen needs no span of its own.
FieldResults::FieldResults(const word::Story& story, const LayoutSource& source, bool office) {
    std::vector<Field> open;
    const auto add = [&](Span span) {
        while (!spans_.empty() && spans_.back().begin >= span.begin) {
            spans_.pop_back();
        }
        spans_.push_back(std::move(span));
    };
    for (const word::FieldMark& mark : story.fields) {
        if (mark.character == word::fieldBegin) {
            open.push_back({mark.at, 0, mark.data});
        } else if (open.empty()) {
            continue;
        } else if (mark.character == word::fieldSeparator) {
            open.back().separator = mark.at;
            add({open.back().begin, mark.at + 1, Span::Shows::nothing});
        } else {
            const Field field = open.back();
            open.pop_back();
            Span anew = spanOf(story, field, source);
            anew.end = mark.at + 1;
            const bool isUnseen = field.separator == 0 || (office && field.type == unknownField);
            if (anew.shows != Span::Shows::nothing || isUnseen) {
                add(std::move(anew));
            } else {
                spans_.push_back({mark.at, mark.at + 1, Span::Shows::nothing});
            }
        }
    }
}

std::u16string FieldResults::shownBy(const Span& span, const PageFields& fields) {
    const auto inForm = [&](int number) {
        return word::numberOfField(number, span.form.value_or(0));
    };
    switch (span.shows) {
    case Span::Shows::pageNumber:
        return span.form ? inForm(fields.page) : fields.number;
    case Span::Shows::pageCount:
        return inForm(fields.totalPages);
    case Span::Shows::section:
        return inForm(fields.section);
    case Span::Shows::sectionPages:
        return inForm(fields.sectionPages);
    default:
        return span.text;
    }
}

word::Cp FieldResults::nextSpan(word::Cp at) const {
    const auto next = std::upper_bound(spans_.begin(), spans_.end(), at,
                                       [](word::Cp p, const Span& span) { return p < span.end; });
    return next == spans_.end() ? std::numeric_limits<word::Cp>::max() : std::max(at, next->begin);
}

const FieldResults::Span* FieldResults::spanAt(word::Cp at) const {
    auto behind = std::upper_bound(spans_.begin(), spans_.end(), at,
                                   [](word::Cp p, const Span& span) { return p < span.begin; });
    if (behind == spans_.begin()) {
        return nullptr;
    }
    --behind;
    return at < behind->end ? &*behind : nullptr;
}

} // namespace qvnd::layout
