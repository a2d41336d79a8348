#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/reader/OpenedDocument.h"

// What stands around the text of a document.
namespace qvnd::word {

// Moves the streams of properties out of the document.
DocumentInformation takeInformation(OpenedDocument& document, Remarks& remarks);

// Notes what stands there and is not read: UnreadContents::kinds, smart tags, damaged properties.
void noteWhatIsNotRead(const OpenedDocument& document, UnreadContents& unread);

} // namespace qvnd::word
