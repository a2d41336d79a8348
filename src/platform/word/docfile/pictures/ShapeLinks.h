#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Drawing.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

// Links that lead to a bookmark of their own document by its name: those of shapes (pihlShape,
// [MS-ODRAW] 2.3.4.5) and those in the data of a field (HFD, [MS-DOC] 2.9.118).
namespace qvnd::word {

// The new name of a bookmark; nothing for one that keeps its name.
using NewBookmarkName = std::function<std::optional<std::u16string>(std::u16string_view)>;

// Gives the links of a drawing's shapes the new names.
void renameLinks(Drawing& drawing, const NewBookmarkName& newName);

// The blob of a picture in line or of a field with the new names; nothing where none changes.
std::optional<Bytes> withRenamedLinks(ByteView blob, const NewBookmarkName& newName);

} // namespace qvnd::word
