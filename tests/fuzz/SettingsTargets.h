#pragma once

#include "fuzz/FuzzRun.h"

#include <memory>
#include <string>
#include <vector>

namespace qvnd::test {

// Readers of what stands around documents: "registry" (regedit's text), "profile" (an ini file),
// "jet" (a database of an older installation, in its child process) and "pipe" (what that process
// hands back).
std::vector<std::string> settingsTargets();

// The target of that name; null when there is none.
std::unique_ptr<FuzzTarget> settingsTarget(const std::string& name);

} // namespace qvnd::test
