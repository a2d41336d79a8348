#pragma once

#include "platform/word/layout/BlockComposer.h"

#include <map>
#include <memory>

namespace qvnd::layout {

// Composes the headers and footers of pages.
class HeaderStrips {
public:
    // Selects the header or footer of a page.
    struct Of {
        std::size_t section = 0;
        bool firstPage = false; // uses the header of the title page
        bool evenPage = false;
    };
    // Positions are relative to the upper left corner of the header or footer.
    using Set = Stack;
    struct Both {
        Set header;
        Set footer;
    };

    explicit HeaderStrips(StoryReader::Shared& shared);

    Both of(const Of& page, const PageFields& fields, const LineSetting& setting);
    // Whether those of a section may show chapters or paragraphs of a style, which are known once
    // the page is full.
    bool follow(const word::ResolvedSection& section) const {
        return showStyles_ || section.chapterLevel > 0;
    }

private:
    Set set(const Of& page, word::HeaderKind first, word::HeaderKind even, word::HeaderKind odd,
            const PageFields& fields, const LineSetting& setting);
    const word::SlicedText* shown(std::size_t section, word::HeaderKind kind) const;

    StoryReader::Shared& shared_;
    bool facingPages_;
    bool showStyles_;
    struct Header {
        std::shared_ptr<const word::Story> story;
        std::unique_ptr<BlockComposer> composer;
    };
    std::map<const word::SlicedText*, Header> headers_;
};

// Puts them on a page of that section.
void putOn(Page& page, const HeaderStrips::Both& set, const word::ResolvedSection& section,
           const word::SectionPaper& paper);

} // namespace qvnd::layout
