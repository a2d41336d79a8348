// The targets of fuzz_settings for libFuzzer: a program is called "libfuzzer_" and its target's
// name.

#include "fuzz/SettingsTargets.h"

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

std::unique_ptr<qvnd::test::FuzzTarget> target;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    const std::string program = *argc > 0 ? (*argv)[0] : "";
    target = qvnd::test::settingsTarget(program.substr(program.rfind('_') + 1));
    if (!target) {
        std::abort();
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::uint32_t accepted = 0;
    const std::string fault = qvnd::test::faultWith(*target, {data, size}, &accepted);
    if (!fault.empty()) {
        std::cerr << fault << "\n";
        std::abort();
    }
    return 0;
}
