#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Adds the table of contents at the insertion point, as a row of the shape of 页眉页脚表 says:
// lowest level, right-aligned numbers, numbers at all, leader. Without a row there is none.
void addContentsTable(GenerationRun& run, const SettingsRow& headerFooter);

} // namespace qvnd::generate
