#include "platform/word/engine/EngineParagraphs.h"

#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"

namespace qvnd::word {

EngineParagraphs::EngineParagraphs(EngineDocument& document)
    : document_(document), first_(document,
                                  [&document] {
                                      const WorkingStory& story = document.read().main();
                                      return ParagraphSpan{0, story.paragraphEnd(0)};
                                  }),
      last_(document, [&document] {
          const WorkingStory& story = document.read().main();
          return ParagraphSpan{story.paragraphStart(story.size() - 1), story.size()};
      }) {}

ParagraphSpan EngineParagraphs::numbered(int index) {
    const WorkingStory& story = document_.read().main();
    ParagraphSpan span;
    for (int number = 1; span.end < story.size(); ++number) {
        span = {span.end, story.paragraphEnd(span.end)};
        if (number == index) {
            return span;
        }
    }
    throw memberNotFound();
}

Paragraph& EngineParagraphs::Item(int index) {
    numbered(index);
    auto& item = items_[index];
    if (!item) {
        item =
            std::make_unique<EngineParagraph>(document_, [this, index] { return numbered(index); });
    }
    return *item;
}

} // namespace qvnd::word
