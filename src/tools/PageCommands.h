#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "tools/Command.h"

namespace qvnd::tools {

// The commands that lay a Word document out: "doc pdf", "doc png" and "doc pages".
std::vector<Command> pageCommands();

// How many pages a document fills with the fonts that it names.
int pagesOf(word::DocumentContent document);

} // namespace qvnd::tools
