#pragma once

#include "fuzz/Mutation.h"

#include <filesystem>
#include <string>
#include <vector>

namespace qvnd::test {

// What is fuzzed: one reader of files.
class FuzzTarget {
public:
    struct Outcome {
        bool accepted = false; // a refusal is no fault
        std::string fault;     // what is wrong with what came of it; empty when nothing is
    };

    virtual ~FuzzTarget() = default;
    // Anything thrown is a fault too.
    virtual Outcome run(word::ByteView file) = 0;
    // Damaged when no files are named.
    virtual std::vector<word::Bytes> ownFiles() const = 0;
};

struct FuzzOptions {
    std::uint32_t seed = 1;
    std::uint32_t count = 1000;
    std::filesystem::path keep; // inputs that break something; empty: nowhere
    std::string target;
    std::vector<std::filesystem::path> files;
};

// Of "[--seed N] [--count N] [--keep FOLDER] [--target NAME] [FILE...]".
FuzzOptions fuzzOptions(const std::vector<std::string>& arguments);

// What is wrong with what comes of the input, or with what it takes; empty when nothing is. More
// than a second of the processor's time, and ten more for each 100 MB, are a fault (under a
// sanitizer ten times as much), so are more bytes of operator new than 20 times the input's size
// and 50 MB.
// `*accepted` grows by one when the target accepts the input.
std::string faultWith(FuzzTarget& target, word::ByteView input, std::uint32_t* accepted);

// Damages files at random and hands each to the target. Prints a line for each fault with the
// number of the input, and at the end what was done. With a folder to keep, an input that breaks
// something lies there with as few changes as do it; that which ends the process lies there as
// "current". Each input is measured by itself, see faultWith(). True when there was no fault.
bool fuzz(FuzzTarget& target, const FuzzOptions& options);

} // namespace qvnd::test
