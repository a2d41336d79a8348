#include "platform/word/layout/LayoutSource.h"

namespace qvnd::layout {

LayoutOptions officeOptions() {
    LayoutOptions options;
    options.latinGap = 0.2;
    options.marksCount = false;
    options.officeLines = true;
    return options;
}

LayoutSource sourceOf(const word::DocumentContent& document) {
    return {&document.tables, word::joined(document.main), document.sections, document.headers,
            document.settings};
}

} // namespace qvnd::layout
