#pragma once

#include "platform/word/docfile/text/PieceTable.h"

#include <map>
#include <vector>

namespace qvnd::word {

// Characters with more properties than a page has room for. The rest of their list
// (FittedList::rest) becomes a modifier of the pieces that hold them (Prc, [MS-DOC] 2.9.209).
class OverlongRuns {
public:
    // Gives the characters at [fc, limitFc) the further properties `rest`. They lie behind all that
    // were added before. A file holds 32,768 different lists; further ones are left out.
    void add(std::uint32_t fc, std::uint32_t limitFc, ByteView rest);
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
