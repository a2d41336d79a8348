// The same for libFuzzer, which finds its way through the code itself.

#include "fuzz/DocumentTarget.h"

#include <cstdlib>
#include <iostream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static qvnd::test::DocumentTarget target;
    std::uint32_t accepted = 0;
    const std::string fault = qvnd::test::faultWith(target, {data, size}, &accepted);
    if (!fault.empty()) {
        std::cerr << fault << "\n";
        std::abort();
    }
    return 0;
}
