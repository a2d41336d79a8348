#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

// The lists of a document: their definitions (PlfLst, [MS-DOC] 2.9.185, with the levels right
// behind it), the places that use them (PlfLfo, 2.9.184) and their names (SttbListNames).

// `plfLst` starts at fcPlfLst and reaches to the end of the table stream, since the levels (LVL)
// lie behind the lcbPlfLst bytes of PlfLst itself. Definitions whose levels cannot be read keep
// their place with levels without a number, named in `remarks`.
std::vector<ListDefinition> decodeListDefinitions(ByteView plfLst, PropertyLists& lists,
                                                  Remarks& remarks);

struct EncodedListDefinitions {
    Bytes bytes;          // PlfLst and the levels
    std::size_t size = 0; // lcbPlfLst: without the levels
};
EncodedListDefinitions encodeListDefinitions(const std::vector<ListDefinition>& definitions,
                                             const PropertyLists& lists);

// An index of the answer plus 1 is the operand of sprmPIlfo. Overrides whose levels cannot be read
// keep their place without levels of their own, named in `remarks`; so are those beyond the 2,046
// that paragraphs can name. Each level is changed once at most.
std::vector<ListOverride> decodeListOverrides(ByteView plfLfo, PropertyLists& lists,
                                              Remarks& remarks);
Bytes encodeListOverrides(const std::vector<ListOverride>& overrides, const PropertyLists& lists);

// Of more definitions than a document holds (2,046), leaves out those that no override names, and
// answers how many. Names must have been read before.
int leaveOutUnnamedLists(std::vector<ListDefinition>& definitions,
                         const std::vector<ListOverride>& overrides);

// Gives every override without a definition one whose levels show no number, as it stands there.
void completeListDefinitions(std::vector<ListDefinition>& definitions,
                             const std::vector<ListOverride>& overrides);

// Names belong to the definitions in order; what is longer than longestListName is cut.
// [MS-DOC] 2.9.292.
inline constexpr std::size_t longestListName = 255;
void decodeListNames(ByteView sttbListNames, std::vector<ListDefinition>& definitions);
Bytes encodeListNames(const std::vector<std::u16string>& names);

} // namespace qvnd::word
