#include "platform/word/docfile/document/DocumentContent.h"

#include <span>

namespace qvnd::word {

void forEachTextAside(const DocumentContent& content,
                      const std::function<void(const Story& text)>& visit) {
    const auto visitAll = [&](std::span<const SlicedText> texts) {
        for (const SlicedText& text : texts) {
            for (const StorySlice& slice : text) {
                visit(*slice.fragment);
            }
        }
    };
    for (const HeaderSet& set : content.headers) {
        visitAll(set);
    }
    visitAll(content.separators);
    for (const SideStory& story : content.tables.sideStories) {
        visit(*story.text);
    }
    for (const ShapeText& text : content.tables.shapeTexts) {
        visit(*text.text);
    }
}

} // namespace qvnd::word
