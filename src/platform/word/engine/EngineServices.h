#pragma once

#include "platform/word/engine/ImportReport.h"
#include "platform/word/layout/PageNumberSource.h"

#include <filesystem>

namespace qvnd::word {

// Asked when a document is closed with changes that nobody decided about.
class UnsavedChangesQuestion {
public:
    virtual ~UnsavedChangesQuestion() = default;
    // Whether to save. The path is empty for a document that was never saved.
    virtual bool save(const std::filesystem::path& document) = 0;
};

// What the engine needs from outside; all must outlive it.
struct EngineServices {
    PageNumberSource& pages;
    ImportReport& report;
    UnsavedChangesQuestion& unsaved;
};

} // namespace qvnd::word
