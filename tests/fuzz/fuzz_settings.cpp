// Damages at random what stands around documents: registry, profile and databases of older
// installations.
//
//   fuzz_settings [--seed N] [--count N] [--keep FOLDER] [--target NAME] [FILE...]
//
// Without a target all of them take their turn, each on its own small files. Ends with 1 when there
// was a fault.

#include "fuzz/SettingsTargets.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace qvnd::test;
    FuzzOptions options = fuzzOptions({argv + 1, argv + argc});
    const std::vector<std::string> wanted =
        options.target.empty() ? settingsTargets() : std::vector{options.target};
    bool sound = true;
    for (const std::string& name : wanted) {
        const auto target = settingsTarget(name);
        if (!target) {
            std::cerr << "no target is called " << name << "\n";
            return 2;
        }
        options.target = name;
        sound = fuzz(*target, options) && sound;
    }
    return sound ? 0 : 1;
}
