#pragma once

#include "platform/word/docfile/container/AllocationTable.h"
#include "platform/word/docfile/container/CompoundDirectory.h"
#include "platform/word/docfile/container/OutputFile.h"

#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

namespace qvnd::word {

// Writes a compound file ([MS-CFB], version 3) that grows by commits. Whatever is written between
// two commits goes to sectors that the committed state does not use; commit() makes it the state
// of the file by writing the 512 bytes of the header, last and at once. So at any moment, however
// the program ends, the file is wholly in the state of the last commit, and a commit costs what
// has changed since.
// After an exception out of any operation the object is of no further use: the file stands as
// committed last, except that a failing commit() may already have taken effect.
class CompoundStore {
public:
    using Stream = CompoundDirectory::Number;
    static constexpr std::size_t sectorSize = AllocationTable::sectorSize;

    // Starts a compound file without streams in an empty file.
    CompoundStore(std::unique_ptr<OutputFile> file, const ClassId& rootClass);

    // In between, other programs may use the file. What is not committed by then must be dropped.
    void detach();
    void attach(std::unique_ptr<OutputFile> file);

    Stream addStream(std::u16string_view name);
    Stream addStream(Stream storage, std::u16string_view name);
    Stream addStorage(Stream storage, std::u16string_view name, const ClassId& classId);

    std::uint32_t size(Stream stream) const { return streams_.at(stream).size; }
    void append(Stream stream, ByteView bytes);
    // `offset` is a multiple of sectorSize; `bytes` are whole sectors, or reach the end of the
    // stream, and lie within it. The stream has at least 4096 bytes.
    void overwrite(Stream stream, std::uint32_t offset, ByteView bytes);
    void replace(Stream stream, ByteView bytes);
    // Gives back what lies behind the first `size` bytes: whole sectors of a stream that keeps at
    // least 4096 bytes.
    void shrink(Stream stream, std::uint32_t size);

    enum class Durability {
        killedProcess, // the state survives the end of the program
        lostPower      // and that of the machine: waits for the device
    };
    void commit(Durability durability);
    // Gives back what was written since the last commit; the object is of no further use.
    void abandon() noexcept;

private:
    // A chain of sectors; `tail` is the part of the last sector that is in use, when not all is.
    struct Chain {
        std::vector<std::uint32_t> sectors;
        std::uint32_t size = 0;
        Bytes tail;
    };
    // Streams below 4096 bytes are kept whole and go to the mini stream with the commit.
    struct StreamState : Chain {
        bool small = true;
        bool changed = false; // of a small one
        Bytes content;        // of a small one
        std::vector<std::uint32_t> miniSectors;
    };
    void appendToChain(Chain& chain, ByteView bytes);
    void overwriteSectors(Chain& chain, std::size_t index, ByteView bytes);
    void releaseChain(Chain& chain);
    void writeSectors(const std::vector<std::uint32_t>& sectors, std::size_t first, ByteView bytes);
    void growOutOfMiniStream(StreamState& stream);
    void placeInMiniStream(StreamState& stream);
    void releaseMini(StreamState& stream);
    void setMini(std::size_t sector, std::uint32_t next);
    // Write what has changed of the mini stream, of its table and of the directory.
    void updateMiniStream();
    void updateMiniFat();
    void updateDirectory();
    void placeStreams();
    void writeTable(std::vector<SectorWrite> writes);
    Bytes header() const;

    std::unique_ptr<OutputFile> file_;
    std::uint64_t committedSize_ = 0; // of the file
    bool committing_ = false;         // the header may have been written
    AllocationTable table_;
    CompoundDirectory directory_;
    std::map<Stream, StreamState> streams_; // without storages
    Chain directoryChain_;
    std::set<Stream> touched_; // streams that have changed since the last commit
    Chain miniStreamChain_;
    Bytes miniStream_;
    std::set<std::size_t> changedOfMiniStream_; // its sectors since the last commit
    std::vector<std::uint32_t> miniFat_;
    Chain miniFatChain_;
    std::set<std::size_t> changedOfMiniFat_; // its sectors since the last commit
    std::size_t firstFreeMini_ = 0;          // no sector before it is free
};

} // namespace qvnd::word
