#pragma once

#include <stdexcept>
#include <string>

namespace qvnd::word {

// Why a file is not read. Only the door of the engine turns this into words for the user.
class FormatError : public std::runtime_error {
public:
    enum class Kind {
        unreadable,      // the operating system refuses the file
        notCompoundFile, // no compound file at all (plain text, RTF, a picture, ...)
        notWord,         // a compound file without a Word document in it
        olderThanWord97, // Word 6, Word 95 and before
        encrypted,       // needs a password
        damaged,         // a structure contradicts itself or ends too early
    };

    FormatError(Kind kind, const std::string& detail) : std::runtime_error(detail), kind_(kind) {}

    Kind kind() const { return kind_; }

private:
    Kind kind_;
};

} // namespace qvnd::word
