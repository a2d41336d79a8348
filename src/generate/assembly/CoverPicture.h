#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Inserts the cover's picture, when 图片 names one, from sys/图片库 of the program folder, in the
// size of 图片高度 and 图片宽度 (centimetres), centred. The insertion point ends behind it.
void insertCoverPicture(GenerationRun& run, const SettingsRow& cover);

} // namespace qvnd::generate
