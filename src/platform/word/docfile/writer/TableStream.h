#pragma once

#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/format/Fib.h"

#include <array>
#include <map>

namespace qvnd::word {

// The table stream of a document that is saved repeatedly. Every structure has sectors of its own,
// and only sectors whose bytes change are written. A structure that outgrows its place leaves it to
// others, so the stream is at most a few times as large as its structures.
class TableStream {
public:
    // `stream` is an empty stream of `store`, which outlives the object.
    TableStream(CompoundStore& store, CompoundStore::Stream stream)
        : store_(store), stream_(stream) {}

    // Writes `bytes` as the structure. Without bytes the document has no such structure.
    void put(FibPair pair, ByteView bytes) { put(pair, std::array{bytes, ByteView{}}); }
    // The same for a structure in two parts, one right behind the other.
    void put(FibPair pair, const std::array<ByteView, 2>& parts);
    // Writes a structure that grows at its front: `front`, and behind it the last `kept` bytes that
    // the structure had, which are not written again. `counted` is the length that the FIB gets
    // (lcb). Such a structure is written with this function alone.
    void putFront(FibPair pair, ByteView front, std::size_t kept, std::size_t counted);
    // What a structure keeps of what it was: `count` bytes from `from` on.
    struct Kept {
        std::size_t from = 0;
        std::size_t count = 0;
    };
    // Brings a structure that grows at both ends to `front`, what is kept, and `back`. What is kept
    // stays where it is while there is room around it. Such a structure is written with this alone.
    void putAround(FibPair pair, ByteView front, const Kept& kept, ByteView back);
    // Gives back what is free at the end of the stream, and brings it to the size from which on it
    // may be changed by parts.
    void finish();

    FcLcb place(FibPair pair) const;

private:
    // The place of a structure: whole sectors. It fills them from the front; one that grows at its
    // front fills them from the end, one that grows at both ends lies between.
    struct Extent {
        std::uint32_t offset = 0;
        Bytes bytes;           // as in the file
        std::size_t begin = 0; // of the structure
        std::uint32_t counted = 0;
    };

    void move(Extent& extent, Bytes bytes);
    std::uint32_t takeFree(std::uint32_t size);
    void addFree(std::uint32_t offset, std::uint32_t size);
    void change(Extent& extent, std::size_t at, const std::array<ByteView, 2>& parts);
    void write(const Extent& extent, std::size_t begin, std::size_t end);

    CompoundStore& store_;
    CompoundStore::Stream stream_;
    std::map<FibPair, Extent> extents_;
    std::map<std::uint32_t, std::uint32_t> free_; // sizes by offset; none right behind another
};

} // namespace qvnd::word
