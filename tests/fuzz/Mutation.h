#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <random>

namespace qvnd::test {

// Damages files at random, the same ones for the same seed.
class Mutation {
public:
    explicit Mutation(std::uint32_t seed) : chance_(seed) {}

    // A document with some of its bytes changed: in the streams that its structures lie in, or
    // anywhere in the file. A file that is no document is changed anywhere.
    word::Bytes mutated(word::ByteView file);
    std::uint32_t below(std::size_t limit);

private:
    void change(word::Bytes& bytes);
    void changeOnce(word::Bytes& bytes);

    std::mt19937 chance_;
};

} // namespace qvnd::test
