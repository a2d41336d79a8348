#pragma once

#include "generate/GenerationReport.h"
#include "generate/driver/GenerationServices.h"
#include "generate/driver/ProgramState.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "startup/WordBoxes.h"
#include "tools/CollectedMessages.h"
#include "tools/GenerateOptions.h"
#include "tools/PageNumberChoice.h"
#include "tools/TerminalProgress.h"
#include "tools/TerminalServices.h"

// The services of generation for a terminal.
namespace qvnd::tools {

class Session;

// A terminal has neither pointer nor preview: does nothing.
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
class GivenControls : public format::ChildDocumentControls {
public:
    explicit GivenControls(const GenerateOptions& options) : options_(options) {}
    QString cboBianHao() override { return options_.childStyle; }
    QString txtInde() override { return options_.childIndent; }

private:
    const GenerateOptions& options_;
};

// Shows what a document loses when it is inserted as a message, with the progress hidden, and keeps
// it for the report.
class LossMessages : public word::ImportReport {
public:
    LossMessages(desktop::MessageBoxes& messages, desktop::ProgressDialog& dlgTB)
        : messages_(messages), dlgTB_(dlgTB) {}
    const generate::CollectedLosses& collected() const { return collected_; }
    void notCarried(const std::filesystem::path& path, std::u16string_view what) override;
    void converted(const std::filesystem::path& path, std::u16string_view what) override;
    // Is kept alone.
    void changed(const std::filesystem::path& path, std::u16string_view what) override;

private:
    void tell(const std::filesystem::path& path, std::u16string_view what);

    desktop::MessageBoxes& messages_;
    desktop::ProgressDialog& dlgTB_;
    generate::CollectedLosses collected_;
};

// Owns all services of one run of a generation command.
class TerminalGeneration {
public:
    // The options must outlive the object.
    TerminalGeneration(Session& session, const GenerateOptions& options);
    TerminalGeneration(const TerminalGeneration&) = delete;
    TerminalGeneration& operator=(const TerminalGeneration&) = delete;

    PageNumberChoice& pages() { return pages_; }
    desktop::ProgressDialog& dlgTB();
    const generate::CollectedLosses& losses() const { return losses_.collected(); }
    const QStringList& messages() const { return messages_.texts(); }
    generate::GenerationServices services();
    // Starts the program if it does not run yet.
    generate::ProgramState program();

private:
    Session& session_;
    const GenerateOptions& options_;
    CollectedMessages messages_;
    TerminalProgress bar_;
    NoProgress noBar_;
    PageNumberChoice pages_;
    pictures::PictureDecoder pictures_;
    office::SuiteDocumentConverter documents_;
    LossMessages losses_;
    startup::UnsavedChangesBox unsaved_;
    GivenControls controls_;
    NoEvents events_;
    NoScreen screen_;
    desktop::SystemProcesses processes_;
    desktop::LockFiles locks_;
    word::EngineApplicationFactory factory_;
    generate::WordSession word_;
};

} // namespace qvnd::tools
