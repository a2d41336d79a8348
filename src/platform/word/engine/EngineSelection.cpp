#include "platform/word/engine/EngineSelection.h"

#include "platform/word/engine/EngineApplication.h"
#include "platform/word/engine/EngineErrors.h"

#include <algorithm>

namespace qvnd::word {

EngineSelection::EngineSelection(EngineApplication& application)
    : application_(application),
      font_([this](const FontChange& change) { document().editor().changeFont(change); }) {}

EngineSelection::~EngineSelection() = default;

EngineDocument& EngineSelection::document() { return application_.active(); }

void EngineSelection::TypeText(std::u16string_view text) { document().editor().typeText(text); }

void EngineSelection::TypeParagraph() { document().editor().typeParagraph(); }

void EngineSelection::InsertBreak(BreakType /*type*/) {
    EngineDocument& active = document();
    if (active.seekView() != SeekView::mainDocument) {
        throw RunTimeError(error::invalidCall, u"页眉和页脚中不能插入分页符。");
    }
    active.editor().breakPage();
}

void EngineSelection::InsertFile(const std::filesystem::path& path) { document().insertFile(path); }

void EngineSelection::Delete(int count) {
    document().editor().erase(static_cast<Cp>(std::max(count, 0)));
}

void EngineSelection::MoveLeftExtending() { document().editor().moveLeftExtending(); }

void EngineSelection::MoveRightExtending() { document().editor().moveRightExtending(); }

void EngineSelection::setStyle(Style& style) {
    const auto* own = dynamic_cast<EngineStyle*>(&style);
    if (own == nullptr) {
        throw memberNotFound();
    }
    document().editor().applyStyle(own->index());
}

Range& EngineSelection::Range() {
    EngineDocument& active = document();
    auto& range = ranges_[&active];
    if (!range) {
        range = std::make_unique<EngineRange>(active);
    }
    return range->set(active.mainInsertion().start, active.mainInsertion().end);
}

InlineShapes& EngineSelection::InlineShapes() { return document().inlineShapes(); }

Section& EngineSelection::Sections(int index) {
    if (index != 1) {
        throw memberNotFound();
    }
    return document().section();
}

HeaderFooter& EngineSelection::HeaderFooter() {
    EngineDocument& active = document();
    if (active.seekView() == SeekView::mainDocument) {
        throw memberNotFound();
    }
    return active.headerKind() == HeaderKind::oddHeader ? active.section().Headers(1)
                                                        : active.section().Footers(1);
}

DocumentTables& EngineSelection::tables() { return document().read().tables(); }

void EngineSelection::changeLooks(const LookChange& change) {
    document().editor().changeParagraphs(change);
}

int EngineSelection::characterWidth() {
    EngineDocument& active = document();
    const WorkingStory& story = active.story();
    const Cp at = std::min(active.insertion().start, story.size() - 1);
    return characterSize(active.read().tables(), active.insertion().typing,
                         story.paragraphLook(at).style);
}

} // namespace qvnd::word
