#pragma once

#include "platform/word/docfile/WordFileBuilder.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <utility>
#include <vector>

namespace qvnd::test {

// A file with changes to it that can be left out one by one, to find those that matter.
class DamagedFile {
public:
    using Change = std::function<void(word::Bytes&)>;

    // A document's WordDocument, table and Data streams, or another file as its only part.
    using Parts = std::vector<word::Bytes>;
    explicit DamagedFile(Parts parts) : parts_(std::move(parts)) {}

    const word::Bytes& part(std::size_t number) const { return parts_[number]; }
    bool isDocument() const { return parts_.size() > 1; }
    void add(std::size_t part, Change change) { changes_.emplace_back(part, std::move(change)); }

    std::size_t changes() const { return changes_.size(); }
    DamagedFile without(std::size_t change) const;
    // The file with all its changes.
    word::Bytes bytes() const;

private:
    Parts parts_;
    std::vector<std::pair<std::size_t, Change>> changes_;
};

// Damages files at random, the same ones for the same seed.
class Mutation {
public:
    explicit Mutation(std::uint32_t seed) : chance_(seed) {}

    // A document with some of its bytes changed: in the streams that its structures lie in, or
    // anywhere in the file. A file that is no document is changed anywhere.
    DamagedFile damaged(word::ByteView file);
    std::uint32_t below(std::size_t limit);

private:
    DamagedFile::Change change(std::size_t size);

    std::mt19937 chance_;
};

} // namespace qvnd::test
