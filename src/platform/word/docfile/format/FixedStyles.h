#pragma once

#include <array>
#include <cstdint>

namespace qvnd::word {

// The built-in styles that every style sheet has at the same place: their numbers (sti) by place
// (istd), [MS-DOC] 2.4.6.5.
inline constexpr std::array<std::uint16_t, 13> fixedStyles{0, 1, 2, 3,  4,   5,  6,
                                                           7, 8, 9, 65, 105, 107};

} // namespace qvnd::word
