#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/reader/OpenedDocument.h"

// What stands around the text of a document.
namespace qvnd::word {

// Moves the streams of properties out of the document.
DocumentInformation takeInformation(OpenedDocument& document);

// Notes macros, toolbars and key bindings, smart tags, and damaged properties.
void noteWhatIsNotRead(const OpenedDocument& document, UnreadContents& unread);

} // namespace qvnd::word
