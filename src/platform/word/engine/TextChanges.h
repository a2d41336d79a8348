#pragma once

#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/StoryEdits.h"
#include "platform/word/engine/TextImport.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qvnd::word {

using NewNames = std::unordered_map<std::u16string, std::u16string>; // by folded old name
// The new name of a list; nothing where it stays.
using NewListName = std::function<std::optional<std::u16string>(std::u16string_view)>;

// Works out what changes in the text of a story that comes in.
class TextChanges {
public:
    // All outlive the object. In a text of its own, that of a note or a comment, the characters
    // that repeat the reference stay.
    TextChanges(const Story& story, bool ofItsOwn, TextImport& text, ImportLosses& losses);

    // The characters that stand for what does not come along.
    void removeAnchors();
    // A cell's mark outside of any table only ends its paragraph; readers differ in what they make
    // of it.
    void repairCellMarks(const PropertyLists& lists);
    // An object without its data leaves its picture behind: the field around it goes.
    void unwrapObjects();
    // References to bookmarks and lists that got new names.
    void rename(const NewNames& bookmarks, const NewListName& newListName);

    StoryEdits edits;

private:
    void removeAnchor(Cp at, const RunFacts& facts);
    bool lacksObject(const FieldPlace& field);
    struct Stretch {
        Cp begin = 0;
        Cp end = 0;
    };
    void removeHyperlinkData(Cp begin, Cp end);
    bool isInFormField(Cp at);
    const RunFacts& factsAt(Cp at);

    const Story& story_;
    TextImport& text_;
    ImportLosses& losses_;
    bool ofItsOwn_;
    std::unordered_map<PropertyListId, bool> inTable_; // what lists of paragraphs say
    std::unordered_set<Cp> kept_;                      // anchors of what comes along
    std::vector<Cp> ends_;                             // of the runs
    Cp dataSought_ = 0;                                // how far data of links were sought
    std::optional<std::vector<Stretch>> formFields_;   // that lie in no other; when asked for
    std::size_t nextForm_ = 0;                         // the first that may hold the next place
};

} // namespace qvnd::word
