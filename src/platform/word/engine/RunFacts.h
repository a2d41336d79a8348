#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>
#include <vector>

namespace qvnd::word {

// What a list of character properties says of its characters.
struct RunFacts {
    bool special = false;      // sprmCFSpec: characters below U+0020 bear meaning
    bool data = false;         // sprmCFData: no picture but data of a field
    bool object = false;       // sprmCFOle2, sprmCFObj: an embedded object
    bool objectThere = false;  // sprmCObjLocation names an object of the tables
    bool pictureThere = false; // sprmCPicLocation names a blob of the tables
    std::uint32_t blob = 0;    // which one
    StyleIndex characterStyle = StyleDefinition::none;
};

// The facts of the lists of a document, each read once.
class RunFactsTable {
public:
    // Both outlive the object, and `lists` does not grow meanwhile. `lists` is the pool that the
    // document was read with, where `tables` have another one by now.
    RunFactsTable(const DocumentTables& tables, const PropertyLists& lists)
        : tables_(tables), lists_(lists), facts_(lists.size()) {}

    const RunFacts& of(PropertyListId list);

private:
    RunFacts read(ByteView list) const;

    const DocumentTables& tables_;
    const PropertyLists& lists_;
    std::vector<std::optional<RunFacts>> facts_; // by list
};

// What a special character stands for and the document does not have.
enum class Missing : std::uint8_t {
    nothing,
    picture,
    object,
    fieldData,
    drawing,
    note // or comment
};

// `anchored`: whether an anchor stands at the character.
Missing missingAt(char16_t character, const RunFacts& facts, bool anchored);

} // namespace qvnd::word
