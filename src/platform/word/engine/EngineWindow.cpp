#include "platform/word/engine/EngineWindow.h"

#include "platform/word/engine/EngineApplication.h"
#include "platform/word/engine/EngineErrors.h"

namespace qvnd::word {

Pane& EngineWindow::Panes(int index) {
    if (index != 1) {
        throw memberNotFound();
    }
    return *this;
}

void EngineWindow::setSeekView(word::SeekView story) { application_.active().seek(story); }

// The only pane stays; its window goes with the document.
void EngineWindow::Close() { application_.active().Close(std::nullopt); }

} // namespace qvnd::word
