#include "platform/word/engine/EngineRange.h"

#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/StoryEditor.h"

#include <algorithm>

namespace qvnd::word {

EngineRange& EngineRange::set(Cp start, Cp end) {
    const Cp size = document_.read().main().size();
    start_ = std::min(start, size);
    end_ = std::clamp(end, start_, size);
    return *this;
}

void EngineRange::Select() { document_.selectInMain(start_, end_); }

void EngineRange::changeFont(const FontChange& change) {
    WorkingDocument& content = document_.change();
    content.main().changeCharacters(start_, end_, propertyChange(content.tables(), change));
}

DocumentTables& EngineRange::tables() { return document_.read().tables(); }

void EngineRange::changeLooks(const LookChange& change) {
    WorkingDocument& content = document_.change();
    Insertion range{start_, end_, false, PropertyListId::empty};
    StoryEditor(content.main(), content.tables(), range).changeParagraphs(change);
}

int EngineRange::characterWidth() {
    WorkingDocument& content = document_.read();
    const Cp first = std::min(start_, content.main().size() - 1);
    return characterSize(content.tables(), content.main().characterProperties(first),
                         content.main().paragraphLook(first).style);
}

} // namespace qvnd::word
