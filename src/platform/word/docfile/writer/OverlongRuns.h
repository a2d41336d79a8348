#pragma once

#include "platform/word/docfile/text/PieceTable.h"

#include <map>
#include <vector>

namespace qvnd::word {

// Characters with more properties than a page has room for. The rest of their list
// (FittedList::rest) becomes a modifier of the pieces that hold them (Prc, [MS-DOC] 2.9.209).
class OverlongRuns {
public:
    // The modifier (Prm1) that says `rest`. A file holds 32,768 different lists; for further ones
    // it is 0, which says nothing.
    std::uint16_t modifierOf(ByteView rest);
    // How many different lists have no modifier.
    std::size_t withoutRoom() const { return known_.size() - modifiers_.size(); }
    // Gives the characters at [fc, limitFc) that modifier. They lie behind all that were added
    // before.
    void add(std::uint32_t fc, std::uint32_t limitFc, std::uint16_t modifier);
    // Cuts UTF-16 pieces without modifiers where such characters begin and end, and sets them.
    std::vector<Piece> modified(const std::vector<Piece>& pieces) const;
    const std::vector<Bytes>& modifiers() const { return modifiers_; }

private:
    struct Run {
        std::uint32_t limitFc = 0;
        std::uint16_t modifier = 0; // Prm1
    };

    std::map<std::uint32_t, Run> runs_; // by where they begin
    std::vector<Bytes> modifiers_;
    std::map<Bytes, std::uint16_t> known_;
};

} // namespace qvnd::word
