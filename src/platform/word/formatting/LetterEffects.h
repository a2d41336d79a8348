#pragma once

#include <cstdint>

namespace qvnd::word {

// What makes letters look other than plain, apart from their face and their colour.
struct LetterEffects {
    enum class Relief : std::uint8_t { none, raised, sunken };

    bool shadowed = false;
    bool outlined = false; // their edges alone are seen
    Relief relief = Relief::none;
    bool operator==(const LetterEffects&) const = default;
};

} // namespace qvnd::word
