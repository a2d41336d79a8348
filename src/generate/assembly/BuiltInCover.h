#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Types the built-in cover from a row of the shape of 封面表 at the selection: project name,
// picture, organisation, date, with empty paragraphs between. The size of the organisation's line
// is set on the document's third paragraph, so that the line itself keeps the project name's.
// A 图片 of Null shows no picture and yet spaces as if there were one.
void typeBuiltInCover(GenerationRun& run, const SettingsRow& cover);

} // namespace qvnd::generate
