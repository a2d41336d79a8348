#pragma once

#include "platform/word/docfile/container/CompoundFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

namespace qvnd::test {

// A file with changes to it that can be left out one by one, to find those that matter.
class DamagedFile {
public:
    using Change = std::function<void(word::Bytes&)>;

    // The file itself as its only part.
    explicit DamagedFile(word::Bytes file) : parts_{std::move(file)} {}
    // A compound file, whose parts are its streams in the order of its entries. What it holds is
    // put together anew, so that changes may make streams longer or shorter.
    explicit DamagedFile(const word::CompoundFile& file);

    const word::Bytes& part(std::size_t number) const { return parts_[number]; }
    std::size_t parts() const { return parts_.size(); }
    // The part with that path; nothing when there is none.
    std::optional<std::size_t> partAt(std::u16string_view path) const;
    void add(std::size_t part, Change change) { changes_.emplace_back(part, std::move(change)); }

    std::size_t changes() const { return changes_.size(); }
    DamagedFile without(std::size_t change) const;
    // The file with all its changes.
    word::Bytes bytes() const;

private:
    std::vector<word::CompoundFile::Entry> entries_; // of a compound file
    std::vector<word::Bytes> parts_;                 // of a storage: no bytes
    std::vector<std::pair<std::size_t, Change>> changes_;
};

// Damages files at random, the same ones for the same seed.
class Mutation {
public:
    explicit Mutation(std::uint32_t seed) : chance_(seed) {}

    // A document with some of its bytes changed, taken out or put in: in the streams that its
    // structures lie in, in those of its objects, or anywhere in the file, directory and allocation
    // tables included. A file that is no document is changed anywhere.
    DamagedFile damaged(word::ByteView file);
    std::uint32_t below(std::size_t limit);

private:
    void changeStreams(DamagedFile& file, std::size_t main);
    void changePart(DamagedFile& file, std::size_t part);
    DamagedFile::Change change(std::size_t size);
    DamagedFile::Change changeOfSize(std::size_t size);

    std::mt19937 chance_;
};

} // namespace qvnd::test
