#pragma once

#include <cstdlib>
#include <filesystem>

namespace qvnd::test {

// The top folder of the repository: what QVND_SOURCE_DIR names (ctest sets it), else the nearest
// folder above the present one that holds the build's presets. Not compiled in, so that a compiler
// cache serves every clone.
inline std::filesystem::path sourceFolder() {
    if (const char* named = std::getenv("QVND_SOURCE_DIR")) {
        return named;
    }
    auto folder = std::filesystem::current_path();
    while (!exists(folder / "CMakePresets.json") && folder != folder.root_path()) {
        folder = folder.parent_path();
    }
    return folder;
}

} // namespace qvnd::test
