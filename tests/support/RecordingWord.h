#pragma once

#include "platform/word/model/Application.h"
#include "support/recording/RecordingSelection.h"
#include "support/recording/RecordingWindow.h"

namespace qvnd::test {

// What the recording applications show to the test before and after a run.
struct RecordingWordSettings {
    bool headerFooterIsHeader = true;
    int splitSpecial = 0;
    word::ViewType viewType = word::ViewType::page;
    int fileLength = 100;
};

class RecordingDocuments : public word::Documents, Recorded {
public:
    RecordingDocuments(CallLog& log, RecordingDocument& active, RecordingDocument& opened)
        : Recorded(log, "Documents"), active_(active), opened_(opened) {}
    word::Document& Add() override {
        called("Add");
        return active_;
    }
    word::Document& Add(const std::filesystem::path& path) override {
        called("Add " + log_.text(path));
        return active_;
    }
    word::Document& Open(const std::filesystem::path& path) override {
        called("Open " + log_.text(path));
        return opened_;
    }

private:
    RecordingDocument& active_;
    RecordingDocument& opened_;
};

// A word processor that does nothing but write down what it is asked, in the lines of a CallLog:
// "Selection.TypeText 目录", "Paragraphs.Last.Range.End -> 3". Operations on the active document
// are written without naming it, but for its own calls: "ActiveDocument.Save".
class RecordingApplication : public word::Application, Recorded {
public:
    RecordingApplication(CallLog& log, const RecordingWordSettings& settings)
        : Recorded(log, "Application"), active_(log, "ActiveDocument"),
          opened_(log, "OpenedDocument"), documents_(log, active_, opened_), window_(log),
          selection_(log, active_.end) {
        selection_.headerFooter.isHeader = settings.headerFooterIsHeader;
        selection_.fileLength = settings.fileLength;
        window_.view.splitSpecial = settings.splitSpecial;
        window_.activePane.view.type = settings.viewType;
    }
    ~RecordingApplication() override { log_.lines.emplace_back("Application dropped"); }

    word::Documents& documents() override { return documents_; }
    word::Document& ActiveDocument() override { return active_; }
    word::Window& ActiveWindow() override { return window_; }
    word::Selection& Selection() override { return selection_; }
    void setVisible(bool visible) override { set("Visible", visible); }
    // Ten points a centimetre, so that a converted length is told from a plain one.
    float CentimetersToPoints(float centimetres) override { return centimetres * 10; }
    void Activate() override { called("Activate"); }
    void Quit() override { called("Quit"); }

private:
    RecordingDocument active_;
    RecordingDocument opened_;
    RecordingDocuments documents_;
    RecordingWindow window_;
    RecordingSelection selection_;
};

class RecordingApplicationFactory : public word::ApplicationFactory {
public:
    explicit RecordingApplicationFactory(CallLog& log) : log_(log) {}
    std::unique_ptr<word::Application> create() override {
        log_.write("create Word.Application");
        return std::make_unique<RecordingApplication>(log_, settings);
    }

    RecordingWordSettings settings;

private:
    CallLog& log_;
};

} // namespace qvnd::test
