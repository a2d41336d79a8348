#pragma once

#include "generate/driver/BidEditScreen.h"
#include "generate/numbering/FormatSwitches.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/ProgressDialog.h"
#include "platform/word/engine/EngineServices.h"
#include "tools/GenerateOptions.h"

// What generation finds around it where there is no screen.
namespace qvnd::tools {

// A terminal has neither pointer nor preview.
class NoScreen : public generate::BidEditScreen {
public:
    void showHourglass() override {}
    void showNormalPointer() override {}
    void turnPreviewOn() override {}
    void turnPreviewOff() override {}
    void removePreview() override {}
    void loadPreview(const QString& /*path*/) override {}
    void updatePreview() override {}
    void activatePreview() override {}
};

// The controls of the format dialog as the options set them.
class GivenControls : public generate::ChildDocumentControls {
public:
    explicit GivenControls(const GenerateOptions& options) : options_(options) {}
    QString cboBianHao() override { return options_.childStyle; }
    QString txtInde() override { return options_.childIndent; }

private:
    const GenerateOptions& options_;
};

// What a document loses on its way in, as a message in place of the progress.
class LossMessages : public word::ImportReport {
public:
    LossMessages(desktop::MessageBoxes& messages, desktop::ProgressDialog& dlgTB)
        : messages_(messages), dlgTB_(dlgTB) {}
    void notCarried(const std::filesystem::path& path, std::u16string_view what) override;

private:
    desktop::MessageBoxes& messages_;
    desktop::ProgressDialog& dlgTB_;
};

// Asks the user about a changed document.
class AskedQuestion : public word::UnsavedChangesQuestion {
public:
    explicit AskedQuestion(desktop::MessageBoxes& messages) : messages_(messages) {}
    bool save(const std::filesystem::path& document) override;

private:
    desktop::MessageBoxes& messages_;
};

} // namespace qvnd::tools
