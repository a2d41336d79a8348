#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <array>
#include <cstdint>

namespace qvnd::word {

// The MD4 digest (RFC 1320), by which OfficeArt knows a picture. It guards nothing.
std::array<std::uint8_t, 16> md4(ByteView message);

} // namespace qvnd::word
