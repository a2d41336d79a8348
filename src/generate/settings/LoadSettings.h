#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Loads what the walk needs into the window's state: the body font from the chosen page table
// ("宋体" and "小四" without a record), the number words from 序号表, the heading levels from
// 章节设置表, which no library replaces. A row too many raises error 9 for that row, and the
// loading goes on.
void loadSettings(GenerationRun& run);

} // namespace qvnd::generate
