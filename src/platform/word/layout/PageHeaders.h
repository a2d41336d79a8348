#pragma once

#include "platform/word/layout/HeaderStrips.h"
#include "platform/word/layout/PageFieldValues.h"
#include "platform/word/layout/PageLook.h"

namespace qvnd::layout {

// Puts headers, footers and borders on pages.
class PageHeaders {
public:
    // All must outlive the object.
    PageHeaders(const DocumentRules& rules, PageFieldValues& fields, StoryReader::Shared& shared)
        : rules_(rules), fields_(fields), strips_(shared) {}

    // On an empty page whose number and size are set. `ahead`: where its text will begin, as far as
    // that is known. Returns the room that they leave to the text.
    TextRoom begin(const HeaderStrips::Of& of, bool isFirstOfSection, word::PageText ahead,
                   Page& page);
    // On a full page, those that show what its text says. They have the room that they took when
    // the page began.
    void finish(const HeaderStrips::Of& of, word::PageText text, Page& page);

private:
    HeaderStrips::Both with(const HeaderStrips::Of& of, word::PageText text, Page& page);

    const DocumentRules& rules_;
    PageFieldValues& fields_;
    HeaderStrips strips_;
};

} // namespace qvnd::layout
