#pragma once

#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/document/DocumentTables.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

// The Data stream of a document that is saved repeatedly. What it holds never moves, and each blob
// and each record is in it once. The stream is created with the first addition.
class DataStream {
public:
    // `store` outlives the object.
    explicit DataStream(CompoundStore& store) : store_(store) {}

    // Both answer the offset in the stream. What they add is in the file after flush().
    std::uint32_t offsetOf(const DataBlob& blob);
    std::uint32_t offsetOfRecord(ByteView record);

    void flush();
    bool holdsBlobs() const { return !offsets_.empty(); }

private:
    std::uint32_t append(ByteView bytes);

    CompoundStore& store_;
    std::optional<CompoundStore::Stream> stream_;
    Bytes pending_;
    std::uint32_t size_ = 0; // with what is pending
    // By identity; the blob is kept so that no other can take its address.
    std::unordered_map<const Bytes*, std::pair<DataBlob, std::uint32_t>> offsets_;
    std::map<Bytes, std::uint32_t> records_; // by contents
};

} // namespace qvnd::word
