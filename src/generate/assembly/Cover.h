#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Types the cover over the first paragraph of the document and breaks the page behind it: the
// custom page when one is wanted, else the built-in cover from the chosen table. Without a row in
// 当前自定义 the file that the run dealt with last stands in for the custom page. A cover table
// without a row is not tested for; each read fails by itself.
void typeCover(GenerationRun& run);

} // namespace qvnd::generate
