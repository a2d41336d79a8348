#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Sets margins, gutter and the distances of header and footer from a row of the shape of
// 页面设置表, in centimetres. Page size and orientation stay. Without a row nothing is set.
void setPageFormat(GenerationRun& run, const SettingsRow& page);

} // namespace qvnd::generate
