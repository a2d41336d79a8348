#pragma once

#include "generate/SettingsTables.h"
#include "generate/driver/BuildBid.h"
#include "generate/driver/RebuildContents.h"
#include "platform/jet/Workspace.h"
#include "support/FakeWordProcessorWindows.h"
#include "support/RecordingWord.h"
#include "support/recording/RecordingDesk.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace qvnd::test {

class FakeChildDocumentControls : public format::ChildDocumentControls {
public:
    QString cboBianHao() override { return style; }
    QString txtInde() override { return indent; }

    QString style;
    QString indent = QStringLiteral("2");
};

// What the log holds behind an error or a stop: generation lets go of the word processor.
inline constexpr const char* stopPath = R"(events
ActiveDocument.Close
Application.Quit
Application dropped
pointer normal
)";

// A plan 工程 in a temporary work space, settings of a first installation, and everything that
// generation reaches for, all writing into one log. Paths in the log are relative to the work
// space: app, work, plans.
class GenerationWorld : public testing::Test {
protected:
    GenerationWorld();

    void folder(const QString& key, const QString& text);
    void document(const QString& key, const QString& text);
    // A folder and a document: the smallest plan that shows both.
    void smallPlan();

    generate::BuildOutcome build();
    generate::ProgramState state() { return {program, switches, word}; }
    generate::GenerationServices services() {
        return {factory, messages, dlgTB, events, windows, screen, controls};
    }

    std::string wholeLog() const { return joined(0, log.lines.size()); }
    // The lines behind the first that begins with `after`, up to and without the next that begins
    // with `until`.
    std::string linesBetween(const std::string& after, const std::string& until) const;
    // The lines that begin with `prefix`.
    std::string linesOf(const std::string& prefix) const;
    bool logged(const std::string& prefix) const { return !linesOf(prefix).empty(); }
    // Presses the stop button when such a line is written.
    void stopAt(const std::string& prefix, int occurrence = 1);
    std::filesystem::path place(const char* below) const { return log.base / below; }

    jet::Database& settings() { return *program.gDbBidSet; }

    QTemporaryDir home;
    CallLog log;
    jet::Workspace workspace;
    modMain program;
    FormatSwitches switches;
    generate::WordSession word;
    generate::BidEditState window;
    outline::OutlineTree TrvEdit{QStringLiteral("TrvEdit")};

    RecordingApplicationFactory factory{log};
    RecordingMessageBoxes messages{log};
    RecordingProgressDialog dlgTB{log};
    RecordingEvents events{log};
    RecordingScreen screen{log};
    FakeWordProcessorWindows windows;
    FakeChildDocumentControls controls;

private:
    std::string joined(std::size_t from, std::size_t to) const;
    void add(const QString& key, const QString& text, int image, int selectedImage);
};

} // namespace qvnd::test
