#include "platform/word/layout/PageFieldValues.h"

#include "platform/word/formatting/NumberForms.h"

namespace qvnd::layout {

PageFields PageFieldValues::of(std::size_t section, int number, word::PageText text) {
    const word::ResolvedSection& own = rules_.sections()[section];
    PageFields fields;
    fields.page = number;
    fields.number = chapter(own, text) + word::numberInForm(number, own.numberForm);
    fields.totalPages = options_.counts.total;
    fields.section = static_cast<int>(section) + 1;
    fields.sectionPages = options_.counts.ofSection(section);
    fields.text = text;
    return fields;
}

std::u16string PageFieldValues::chapterAt(word::Cp position) {
    return chapter(rules_.sectionAt(position), {position, position});
}

std::u16string PageFieldValues::chapter(const word::ResolvedSection& section, word::PageText text) {
    return section.chapterLevel > 0 ? shared_.styledParagraphs().chapter(section, text)
                                    : std::u16string();
}

} // namespace qvnd::layout
