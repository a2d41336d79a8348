#include "platform/word/docfile/writer/DataStream.h"

namespace qvnd::word {

namespace {

constexpr std::size_t flushFrom = std::size_t{1} << 20;

} // namespace

std::uint32_t DataStream::offsetOf(const DataBlob& blob) {
    if (const auto known = offsets_.find(blob.get()); known != offsets_.end()) {
        return known->second.second;
    }
    const std::uint32_t offset = append(*blob);
    offsets_.emplace(blob.get(), std::pair(blob, offset));
    return offset;
}

std::uint32_t DataStream::offsetOfRecord(ByteView record) {
    const auto [known, isNew] = records_.try_emplace(Bytes(record.begin(), record.end()), size_);
    if (isNew) {
        append(record);
    }
    return known->second;
}

std::uint32_t DataStream::append(ByteView record) {
    const std::uint32_t offset = size_;
    pending_.insert(pending_.end(), record.begin(), record.end());
    size_ += static_cast<std::uint32_t>(record.size());
    if (pending_.size() >= flushFrom) {
        flush();
    }
    return offset;
}

void DataStream::flush() {
    if (pending_.empty()) {
        return;
    }
    if (!stream_) {
        stream_ = store_.addStream(u"Data");
    }
    store_.append(*stream_, pending_);
    pending_.clear();
}

} // namespace qvnd::word
