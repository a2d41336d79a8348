#include "platform/word/layout/FieldResults.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/NumberForms.h"
#include "platform/word/layout/FieldExpressions.h"
#include "platform/word/layout/PageCounts.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace qvnd::layout {

namespace {

using Span = FieldResults::Span;

// Types of fields (flt), [MS-DOC] 2.9.90.
constexpr std::uint8_t unknownField = 0x01;
constexpr std::uint8_t conditionField = 0x07;
constexpr std::uint8_t pageField = 0x21;
constexpr std::uint8_t formulaField = 0x22;
constexpr std::uint8_t sectionField = 0x41;

constexpr std::size_t deepestReckoned = 10; // fields within fields that are counted anew

// A field whose end is not read yet.
struct Field {
    word::Cp begin = 0;
    word::Cp separator = 0;
    std::uint8_t type = 0;
    std::vector<Span> inner{}; // of the fields within its instruction
};

std::u16string_view instructionOf(const word::Story& story, const Field& field) {
    return std::u16string_view(story.text)
        .substr(field.begin + 1, field.separator - field.begin - 1);
}

// The stored result, as far as it is text.
std::u16string storedText(const word::Story& story, const Field& field, word::Cp end) {
    std::u16string text;
    word::FieldInstructions inner;
    for (word::Cp at = field.separator + 1; at < end; ++at) {
        const char16_t c = story.text[at];
        if (word::isFieldCharacter(c)) {
            inner.take(c);
        } else if (c >= u' ' && !inner.isInside()) {
            text += c;
        }
    }
    return text;
}

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

bool isReckoned(std::uint8_t type) { return type == formulaField || type == conditionField; }

bool isOfPage(const Span& span) {
    using Shows = Span::Shows;
    return span.shows == Shows::pageNumber || span.shows == Shows::pageCount ||
           span.shows == Shows::section || span.shows == Shows::sectionPages ||
           span.shows == Shows::formula || span.shows == Shows::condition;
}

// The instruction of a formula or condition in its parts: texts, and the fields within it. Nothing
// where none of them is of the page, or where it holds more than text.
std::vector<Span> partsOf(const word::Story& story, Field& field) {
    std::vector<Span> parts;
    bool isSound = std::any_of(field.inner.begin(), field.inner.end(), isOfPage);
    word::Cp at = field.begin + 1;
    const auto addText = [&](word::Cp end) {
        Span text;
        text.shows = Span::Shows::text;
        text.text = story.text.substr(at, end - at);
        isSound = isSound && std::all_of(text.text.begin(), text.text.end(),
                                         [](char16_t c) { return c >= u' '; });
        parts.push_back(std::move(text));
    };
    for (Span& span : field.inner) {
        addText(span.begin);
        at = span.end;
        parts.push_back(std::move(span));
    }
    addText(field.separator);
    return isSound ? std::move(parts) : std::vector<Span>();
}

// What a formula or condition comes to on a page; nothing where it is not understood.
std::optional<std::u16string> reckoned(const Span& span, const PageFields& fields) {
    const bool isFormula = span.shows == Span::Shows::formula;
    std::u16string instruction;
    for (const Span& part : span.parts) {
        const bool inDigits = isFormula && part.shows == Span::Shows::pageNumber && !part.form;
        instruction +=
            inDigits ? word::numberInForm(fields.page, 0) : FieldResults::shownBy(part, fields);
    }
    return isFormula ? formulaShown(instruction) : conditionShown(instruction);
}

void setReckoned(const word::Story& story, Field& field, Span& span) {
    span.parts = partsOf(story, field);
    const bool isFormula = field.type == formulaField;
    span.shows = isFormula ? Span::Shows::formula : Span::Shows::condition;
    if (span.parts.empty() || !reckoned(span, {})) {
        span.shows = Span::Shows::nothing;
    }
}

// The references of STYLEREF fields to styles that the text has. A damaged document may have as
// many of them as paragraphs.
class References {
public:
    explicit References(const LayoutSource& source) : source_(source) {}

    std::optional<StyleReference> of(std::u16string_view instruction) {
        const auto [known, isNew] = known_.try_emplace(std::u16string(instruction));
        if (isNew) {
            const auto reference = styleReferenceOf(instruction, source_.tables->styles);
            known->second = reference && isUsed(reference->style) ? reference : std::nullopt;
        }
        return known->second;
    }

private:
    bool isUsed(word::StyleIndex style) {
        if (!used_) {
            used_.emplace();
            for (const word::ParagraphRun& run : source_.main->paragraphs) {
                used_->insert(run.style);
            }
        }
        return used_->contains(style);
    }

    const LayoutSource& source_;
    std::map<std::u16string, std::optional<StyleReference>> known_; // by instruction
    std::optional<std::set<word::StyleIndex>> used_;
};

// The replacement for the result of a field.
Span spanOf(const word::Story& story, Field& field, word::Cp end, const LayoutSource& source,
            References& references, bool office) {
    Span span;
    span.begin = field.begin;
    span.end = end + 1;
    span.shows = shownBy(field.type);
    if (field.separator <= field.begin) {
        return span;
    }
    const std::u16string_view instruction = instructionOf(story, field);
    span.form = word::numberFormOf(instruction);
    if (auto shown = resultAnew(source, field.type, instruction)) {
        span.shows = Span::Shows::text;
        span.text = std::move(*shown);
    } else if (isReckoned(field.type) && !office) {
        setReckoned(story, field, span);
    } else if (field.type == styleReferenceField && !office) {
        span.reference = references.of(instruction);
        span.shows = span.reference ? Span::Shows::styledText : Span::Shows::nothing;
    }
    if (span.reference || !span.parts.empty()) {
        span.text = storedText(story, field, end);
    }
    return span;
}

} // namespace

// Instructions are not seen; the result of a page field is counted anew. What lies within a span
// that is already unseen needs no span of its own.
FieldResults::FieldResults(const word::Story& story, const LayoutSource& source, bool office) {
    std::vector<Field> open;
    References references(source);
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
            Field& field = open.back();
            field.separator = mark.at;
            if (isReckoned(field.type) && open.size() <= deepestReckoned) {
                const auto inner =
                    std::partition_point(spans_.begin(), spans_.end(), [&](const Span& span) {
                        return span.begin < field.begin;
                    });
                field.inner.assign(std::make_move_iterator(inner),
                                   std::make_move_iterator(spans_.end()));
                spans_.erase(inner, spans_.end());
            }
            add({field.begin, mark.at + 1, Span::Shows::nothing});
        } else {
            Field field = std::move(open.back());
            open.pop_back();
            Span anew = spanOf(story, field, mark.at, source, references, office);
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
    case Span::Shows::formula:
    case Span::Shows::condition:
        return reckoned(span, fields).value_or(span.text);
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
