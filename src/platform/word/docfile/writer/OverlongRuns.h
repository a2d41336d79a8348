#pragma once

#include "platform/word/docfile/text/PieceTable.h"

#include <map>
#include <vector>

namespace qvnd::word {

// Characters whose properties no page has room for: what stays over (FittedList::rest) becomes a
// modifier of the pieces that hold them (Prc, [MS-DOC] 2.9.209).
class OverlongRuns {
public:
    // The characters at [fc, limitFc), behind all that were added, have `rest` besides. A file has
    // room for 32,768 different ones; further ones stay out.
    void add(std::uint32_t fc, std::uint32_t limitFc, ByteView rest);
    // The pieces cut where such characters begin and end. UTF-16 only, without modifiers.
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
