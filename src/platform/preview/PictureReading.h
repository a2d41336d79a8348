#pragma once

#include "platform/preview/DocumentReading.h"
#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>

namespace qvnd::preview {

// The picture that a blob of the Data stream holds; nothing when it holds none.
std::optional<Picture> pictureOf(const word::DataBlob& blob);

} // namespace qvnd::preview
