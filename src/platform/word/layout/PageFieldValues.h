#pragma once

#include "platform/word/layout/DocumentRules.h"
#include "platform/word/layout/StoryReader.h"

namespace qvnd::layout {

// Tells what page fields show.
class PageFieldValues {
public:
    // All must outlive the object.
    PageFieldValues(const DocumentRules& rules, const LayoutOptions& options,
                    StoryReader::Shared& shared)
        : rules_(rules), options_(options), shared_(shared) {}

    // On a page of that section and number. `text`: what STYLEREF fields and chapters go by.
    PageFields of(std::size_t section, int number, word::PageText text);
    // The number of the chapter at a position, with the sign behind it; empty where its section
    // shows none.
    std::u16string chapterAt(word::Cp position);

private:
    std::u16string chapter(const word::ResolvedSection& section, word::PageText text);

    const DocumentRules& rules_;
    const LayoutOptions& options_;
    StoryReader::Shared& shared_;
};

} // namespace qvnd::layout
