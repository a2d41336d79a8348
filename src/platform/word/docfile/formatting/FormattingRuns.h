#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/formatting/FormattingPage.h"

#include <functional>
#include <vector>

namespace qvnd::word {

// Formatting of the text between two offsets in the WordDocument stream.
struct FormattingRun {
    std::uint32_t firstFc = 0;
    std::uint32_t limitFc = 0;
    StyleIndex style = 0; // of paragraphs
    PropertyListId properties = PropertyListId::empty;
    bool known = true; // false: no page says anything of this text
};

// All runs of one page; `sound` is set to false when something had to be left out.
// Throws FormatError (damaged) for what is no page.
using PageDecoder = std::function<std::vector<FormattingRun>(ByteView page, bool& sound)>;

struct FormattingRuns {
    std::vector<FormattingRun> runs; // ascending, none empty, none overlapping
    int damagedPages = 0;            // unreadable wholly or in part
};

// The runs of all pages that the bin table names, each page for the text that the table gives it.
// A bin table out of order is taken as a mere list of pages.
FormattingRuns readFormattingRuns(ByteView wordDocument, const BinTable& table,
                                  const PageDecoder& decode);

// Finds runs by offset; fast for offsets that mostly ascend.
class FormattingLookup {
public:
    // `runs` must outlive the lookup.
    explicit FormattingLookup(const std::vector<FormattingRun>& runs) : runs_(runs) {}

    // The run with that offset, or a run without properties up to the next one (or up to the
    // highest offset) where the pages say nothing.
    FormattingRun at(std::uint32_t fc);

private:
    const std::vector<FormattingRun>& runs_;
    std::size_t hint_ = 0; // the last answer
};

} // namespace qvnd::word
