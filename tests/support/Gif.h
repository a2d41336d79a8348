#pragma once

#include "support/ByteText.h"

namespace qvnd::test {

// An animation of two frames, each of one pixel: red, then blue.
inline word::Bytes gifOfRedThenBlue() {
    return joined({ascii("GIF89a"), hex("0100 0100 80 00 00"), hex("FF0000 0000FF"),
                   hex("2C 0000 0000 0100 0100 00 02 02 4401 00"), hex("21F904 00 0A00 00 00"),
                   hex("2C 0000 0000 0100 0100 00 02 02 4C01 00"), hex("3B")});
}

} // namespace qvnd::test
