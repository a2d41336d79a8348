// The same for libFuzzer, which finds its way through the code itself.

#include "fuzz/DocumentTarget.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!qvnd::test::insertAndCheck({data, size}).broken.empty()) {
        std::abort();
    }
    return 0;
}
