#include "platform/word/engine/StoryBuilder.h"

namespace qvnd::word {

void StoryBuilder::text(std::u16string_view text, PropertyListId properties) {
    if (text.empty()) {
        return;
    }
    const Cp length = static_cast<Cp>(text.size());
    unendedParagraph(length);
    story_.text += text;
    if (!story_.characters.empty() && story_.characters.back().properties == properties) {
        story_.characters.back().length += length;
    } else {
        story_.characters.push_back({length, properties});
    }
}

void StoryBuilder::mark(char16_t character, ParagraphLook look, PropertyListId properties) {
    text(std::u16string_view(&character, 1), properties);
    story_.paragraphs.back().style = look.style;
    story_.paragraphs.back().properties = look.properties;
}

void StoryBuilder::fieldBegin(std::uint8_t type, PropertyListId properties) {
    fieldMark(u'\x13', type, properties);
}

void StoryBuilder::fieldSeparator(PropertyListId properties) { fieldMark(u'\x14', 0, properties); }

void StoryBuilder::fieldEnd(std::uint8_t flags, PropertyListId properties) {
    fieldMark(u'\x15', flags, properties);
}

void StoryBuilder::fieldMark(char16_t character, std::uint8_t data, PropertyListId properties) {
    story_.fields.push_back({story_.size(), static_cast<std::uint8_t>(character), data});
    text(std::u16string_view(&character, 1), properties);
}

// Called before the text grows: the last run goes on unless it has its mark.
void StoryBuilder::unendedParagraph(Cp length) {
    if (story_.paragraphs.empty() || endsParagraph(story_.text.back())) {
        story_.paragraphs.push_back({length, 0, PropertyListId::empty});
    } else {
        story_.paragraphs.back().length += length;
    }
}

} // namespace qvnd::word
