#pragma once

#include "platform/word/docfile/CompoundStore.h"
#include "platform/word/docfile/Fib.h"

#include <map>

namespace qvnd::word {

// The table stream of a document that is saved again and again: every structure has sectors of its
// own, and only sectors whose bytes change are written.
class TableStream {
public:
    // `stream` is an empty stream of `store`, which outlives the object.
    TableStream(CompoundStore& store, CompoundStore::Stream stream)
        : store_(store), stream_(stream) {}

    // Brings the structure to `bytes`; `counted` of them count as its length (lcb), all where
    // nothing is said. No bytes: the document does without the structure.
    void put(FibPair pair, const Bytes& bytes);
    void put(FibPair pair, const Bytes& bytes, std::size_t counted);
    // Brings the stream to the size from which on it may be changed by parts.
    void finish();

    FcLcb place(FibPair pair) const;

private:
    struct Extent {
        std::uint32_t offset = 0;
        Bytes bytes; // as in the file, whole sectors
        std::uint32_t counted = 0;
    };

    void appendExtent(Extent& extent, const Bytes& bytes);
    void changeExtent(Extent& extent, const Bytes& bytes);

    CompoundStore& store_;
    CompoundStore::Stream stream_;
    std::map<FibPair, Extent> extents_;
};

} // namespace qvnd::word
