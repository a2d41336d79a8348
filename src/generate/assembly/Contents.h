#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Types "目录" at the insertion point, centred, bold, 16 points. No paragraph follows it.
void typeContentsHeading(GenerationRun& run);

// Adds the table of contents at the insertion point, as a row of the shape of 页眉页脚表 says:
// lowest level, right-aligned numbers, numbers at all, leader. Without a row there is none.
void addContentsTable(GenerationRun& run, const SettingsRow& headerFooter);

} // namespace qvnd::generate
