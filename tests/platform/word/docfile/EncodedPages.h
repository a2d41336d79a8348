#pragma once

#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"

#include <span>
#include <vector>

// All pages of some runs at once.
namespace qvnd::test {

inline std::vector<word::FormattingPage>
encodeCharacterPages(std::span<const word::FormattedCharacters> runs, std::uint32_t fc) {
    std::vector<word::FormattingPage> result;
    word::CharacterPages pages(fc,
                               [&](const word::FormattingPage& page) { result.push_back(page); });
    for (const word::FormattedCharacters& run : runs) {
        pages.add(run);
    }
    pages.finish();
    return result;
}

inline std::vector<word::FormattingPage>
encodeParagraphPages(std::span<const word::FormattedParagraph> paragraphs, std::uint32_t fc,
                     const word::StoreInDataStream& store) {
    std::vector<word::FormattingPage> result;
    word::ParagraphPages pages(fc, store,
                               [&](const word::FormattingPage& page) { result.push_back(page); });
    for (const word::FormattedParagraph& paragraph : paragraphs) {
        pages.add(paragraph);
    }
    pages.finish();
    return result;
}

} // namespace qvnd::test
