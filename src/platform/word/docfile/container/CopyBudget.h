#pragma once

#include <cstddef>

namespace qvnd::word {

// How many bytes may still be copied out of a file. Structures of a sound file do not overlap, so
// all copies together are about as large as the file; those of a damaged one may name the same
// bytes over and over, until no memory holds the copies.
class CopyBudget {
public:
    explicit CopyBudget(std::size_t bytes) : left_(bytes) {}

    // Takes that much off; false, and nothing taken, when there is not so much left.
    bool take(std::size_t bytes) {
        const bool fits = bytes <= left_;
        left_ -= fits ? bytes : 0;
        return fits;
    }

private:
    std::size_t left_;
};

} // namespace qvnd::word
