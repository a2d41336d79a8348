#pragma once

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace qvnd::word {

// The self-contained piece of the Data stream at `offset` (PICFAndOfficeArtData or
// NilPICFAndBinData, [MS-DOC] 2.9.192 and 2.9.162): as many bytes as it says itself.
// Nothing when its lengths contradict themselves or reach past the end.
std::optional<ByteView> dataBlobAt(ByteView dataStream, std::uint32_t offset);

// Turns offsets into the Data stream into indexes of a table of blobs, each offset once.
class DataBlobCollector {
public:
    // `blobs` is appended to and outlives the collector.
    DataBlobCollector(ByteView dataStream, std::vector<DataBlob>& blobs)
        : dataStream_(dataStream), blobs_(blobs), budget_(2 * dataStream.size()) {}

    // Nothing when there is no whole blob at `offset`, or when too many lie over each other.
    std::optional<std::uint32_t> indexOf(std::uint32_t offset);

private:
    ByteView dataStream_;
    std::vector<DataBlob>& blobs_;
    std::unordered_map<std::uint32_t, std::optional<std::uint32_t>> known_;
    CopyBudget budget_;
};

// The name of a form field, which is that of its bookmark; nothing for what is no data of one
// (FFData, [MS-DOC] 2.9.78).
std::optional<std::u16string> formFieldName(ByteView blob);
// The data with another name; with none where the name is longer than a form field's may be.
// `blob` is data of a form field.
Bytes withFormFieldName(ByteView blob, std::u16string_view name);

// Appends the blobs to a Data stream whose length so far is `start`; an entry of the answer is the
// offset of the blob of that index.
std::vector<std::uint32_t> encodeDataBlobs(const std::vector<DataBlob>& blobs, std::size_t start,
                                           LittleEndianWriter& dataStream);

} // namespace qvnd::word
