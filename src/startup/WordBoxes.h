#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/word/engine/EngineServices.h"
#include "platform/word/engine/ImportReport.h"

// What our Word engine tells and asks, as message boxes.
namespace qvnd::startup {

// One box for each thing that a document loses on its way in. The boxes outlive the object.
class LossBoxes : public word::ImportReport {
public:
    explicit LossBoxes(desktop::MessageBoxes& messages) : messages_(messages) {}
    void notCarried(const std::filesystem::path& path, std::u16string_view what) override;

private:
    desktop::MessageBoxes& messages_;
};

// Asks whether a changed document is to be saved at its closing. The boxes outlive the object.
class UnsavedChangesBox : public word::UnsavedChangesQuestion {
public:
    explicit UnsavedChangesBox(desktop::MessageBoxes& messages) : messages_(messages) {}
    bool save(const std::filesystem::path& document) override;

private:
    desktop::MessageBoxes& messages_;
};

} // namespace qvnd::startup
