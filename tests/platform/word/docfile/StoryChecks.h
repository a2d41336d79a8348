#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <string>
#include <vector>

namespace qvnd::test {

// Which promises of Story.h and DocumentData.h the document breaks; empty when it keeps all.
std::vector<std::string> documentFaults(const word::DocumentData& document);

} // namespace qvnd::test
