#include "platform/word/docfile/reader/SideContents.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/TextParts.h"
#include "platform/word/docfile/pictures/TextBoxes.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// How many anchors stand for texts of the part.
int references(const OpenedDocument& document, TextPart part) {
    const auto& table = factsOf(part).references;
    return table
               ? static_cast<int>(decodePlc(document.part(table->pair), table->elementSize).count())
               : 0;
}

// An embedded object is a storage of its own in the storage ObjectPool.
bool isEmbeddedObject(const CompoundFile::Entry& entry) {
    constexpr std::u16string_view pool = u"ObjectPool/";
    return entry.storage && entry.path.starts_with(pool) &&
           entry.path.find(u'/', pool.size()) == std::u16string::npos;
}

bool isMacroStorage(const CompoundFile::Entry& entry) {
    return entry.storage && (entry.path == u"Macros" || entry.path == u"_VBA_PROJECT_CUR");
}

} // namespace

SideContents countSideContents(const OpenedDocument& document) {
    SideContents side;
    side.footnotes = references(document, TextPart::footnotes);
    side.endnotes = references(document, TextPart::endnotes);
    side.comments = references(document, TextPart::comments);
    side.textBoxes = countTextBoxes(document.part(FibPair::PlcftxbxTxt));
    side.drawings = references(document, TextPart::textBoxes);
    side.embeddedObjects = static_cast<int>(
        std::count_if(document.entries.begin(), document.entries.end(), isEmbeddedObject));
    side.macros = std::any_of(document.entries.begin(), document.entries.end(), isMacroStorage);
    return side;
}

} // namespace qvnd::word
