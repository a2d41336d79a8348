#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/ImportTables.h"

#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// Rewrites stories in terms of the target's tables: the same text with styles and property lists of
// the target.
class TextImport {
public:
    TextImport(ImportTables& tables, DocumentTables& target, const DocumentTables& source)
        : tables_(tables), target_(target), source_(source), facts_(source.lists.size()) {}

    Story imported(const Story& story);

    // How many property lists were cut, because no file has room for them.
    int longFormats() const { return longFormats_; }

    // What a list of character properties of the source says of its characters.
    struct RunFacts {
        bool special = false;      // sprmCFSpec: characters below U+0020 bear meaning
        bool data = false;         // sprmCFData: no picture but data of a field
        bool object = false;       // sprmCFOle2, sprmCFObj: an embedded object
        bool objectThere = false;  // sprmCObjLocation names an object of the source
        bool pictureThere = false; // sprmCPicLocation names a blob of the source
        StyleIndex characterStyle = StyleDefinition::none;
    };
    const RunFacts& facts(PropertyListId list);

private:
    ParagraphRun imported(const ParagraphRun& paragraph);
    PropertyListId importedRun(StyleIndex paragraphStyle, PropertyListId list);
    PropertyListId fitted(PropertyListId list);
    PropertyListId withTableStyle(PropertyListId list, PropertyListId rewritten);
    RunFacts read(ByteView list) const;
    Story importedText(const Story& story);
    StyleIndex effectiveStyle(StyleIndex style) const;

    ImportTables& tables_;
    DocumentTables& target_;
    const DocumentTables& source_;
    std::vector<std::optional<RunFacts>> facts_;
    std::unordered_map<PropertyListId, PropertyListId> directs_; // of paragraphs, by source list
    std::map<PropertyListId, PropertyListId> fitted_;            // of lists that are too long
    int longFormats_ = 0;
};

} // namespace qvnd::word
