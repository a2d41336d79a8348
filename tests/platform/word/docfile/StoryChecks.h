#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <string>
#include <vector>

namespace qvnd::test {

// Which promises of Story.h and DocumentContent.h the document breaks; empty when it keeps all.
std::vector<std::string> documentFaults(const word::DocumentContent& document);

} // namespace qvnd::test
