#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/StyleReferences.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::layout {

// The results of page fields on the current page.
struct PageFields {
    int page = 1;
    // The page number in the number form of the section, with its chapter.
    std::u16string number = u"1";
    int totalPages = 1;
    int section = 1; // counted from 1
    int sectionPages = 1;
    // The text that STYLEREF fields go by: that of the page in its headers, the place of the field
    // in the main text. Nothing elsewhere: they show what they stored.
    std::optional<word::PageText> text{};
};

// What is seen of the fields of a story. Instructions are hidden. The results of page fields are
// counted anew, and so are formulas and conditions that hold them; others where resultAnew() tells
// one; the rest show what is stored.
class FieldResults {
public:
    // Text that is hidden or replaced.
    struct Span {
        enum class Shows : std::uint8_t {
            nothing,
            pageNumber,
            pageCount,
            section,
            sectionPages,
            styledText,
            formula,
            condition,
            text
        };
        word::Cp begin = 0;
        word::Cp end = 0;
        Shows shows = Shows::nothing;
        std::optional<unsigned> form{}; // the number form that the field asks for
        std::u16string text{};          // or what is stored
        std::optional<StyleReference> reference{};
        std::vector<Span> parts{}; // of the instruction of a formula or condition
    };

    // `office`: as in the office suite a field of unknown kind shows nothing, and formulas,
    // conditions and STYLEREF fields show what they stored.
    FieldResults(const word::Story& story, const LayoutSource& source, bool office);

    // The span at a position; null for text that is shown as it is.
    const Span* spanAt(word::Cp at) const;
    // The first position from there on that lies in a span; behind all text where none follows.
    word::Cp nextSpan(word::Cp at) const;
    // Of styled text what is stored.
    static std::u16string shownBy(const Span& span, const PageFields& fields);

private:
    std::vector<Span> spans_; // ascending, without overlap
};

} // namespace qvnd::layout
