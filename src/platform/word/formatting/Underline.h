#pragma once

#include <cstdint>
#include <optional>

namespace qvnd::word {

// The line below text.
struct Underline {
    enum class Kind : std::uint8_t {
        none,
        plain,
        twofold,
        dotted,
        dashed,
        longDashed,
        dotDash,
        dotDotDash,
        wavy,
        twofoldWavy
    };

    Kind kind = Kind::none;
    bool isThick = false;
    bool skipsBlanks = false;                 // stands below words alone
    std::optional<std::uint32_t> colour = {}; // else that of the text

    bool isSeen() const { return kind != Kind::none; }
    bool operator==(const Underline&) const = default;
};

// The line that a value of Kul says of [MS-DOC]; a plain one for a value that is not known.
Underline underlineOf(std::uint32_t kul);

} // namespace qvnd::word
