#pragma once

#include "platform/word/docfile/document/Story.h"

#include <map>
#include <utility>

namespace qvnd::word {

// Takes paragraphs out of tables that do not hold together: of rows without an end (then one level
// up, an ordinary paragraph at the outermost), and cell marks outside of any table, which become
// paragraph marks. No text is lost. Answers how many paragraphs there were; 0 for sound tables,
// which stay as they are.
int repairTables(Story& story, PropertyLists& lists);

// The properties of paragraphs of tables as those of text; each list is worked out once.
class TextLists {
public:
    // `lists` outlives the object.
    explicit TextLists(PropertyLists& lists) : lists_(lists) {}

    // The list for text in a cell at `depth`; outside of tables for 0.
    PropertyListId at(int depth, PropertyListId properties);

private:
    PropertyListId made(int depth, PropertyListId properties);

    PropertyLists& lists_;
    std::map<std::pair<int, PropertyListId>, PropertyListId> known_;
};

} // namespace qvnd::word
