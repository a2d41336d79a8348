#pragma once

#include "generate/driver/BidEditScreen.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/ProgressDialog.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "support/FakeMessageBoxes.h"
#include "support/recording/CallLog.h"

#include <cstdio>

namespace qvnd::test {

// The windows around a running generation, written into the same log as the word processor.

class RecordingEvents : public desktop::Events {
public:
    explicit RecordingEvents(CallLog& log) : log_(log) {}
    void doEvents() override { log_.write("events"); }

private:
    CallLog& log_;
};

class RecordingMessageBoxes : public desktop::MessageBoxes {
public:
    explicit RecordingMessageBoxes(CallLog& log) : log_(log) {}
    desktop::Answer show(const desktop::Message& message) override {
        static constexpr const char* icons[] = {"none", "information", "question", "exclamation",
                                                "critical"};
        const std::string title = message.title.isEmpty() ? "" : ", " + message.title.toStdString();
        log_.write(std::string("message [") + icons[static_cast<int>(message.icon)] + title + "] " +
                   message.text.toStdString());
        return desktop::declined(message);
    }

private:
    CallLog& log_;
};

class RecordingProgressDialog : public desktop::ProgressDialog {
public:
    explicit RecordingProgressDialog(CallLog& log) : log_(log) {}
    void show() override { log_.write("dlgTB.show"); }
    void hide() override { log_.write("dlgTB.hide"); }
    void unload() override { log_.write("dlgTB.unload"); }
    void setProgress(double part) override {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%.4g", part);
        log_.write(std::string("progress ") + digits);
    }
    void setLabel(const QString& text) override { log_.write("label " + text.toStdString()); }

private:
    CallLog& log_;
};

class RecordingScreen : public generate::BidEditPane {
public:
    explicit RecordingScreen(CallLog& log) : log_(log) {}
    void showHourglass() override { log_.write("pointer hourglass"); }
    void showNormalPointer() override { log_.write("pointer normal"); }
    void turnPreviewOn() override { log_.write("preview on"); }
    void turnPreviewOff() override { log_.write("preview off"); }
    void removePreview() override { log_.write("preview remove"); }
    void loadPreview(const QString& path) override {
        log_.write("preview load " + log_.text(files::toPath(path)));
    }
    void onLatePreviewFailure(const PreviewFailed& failed) override { lateFailure = failed; }
    void updatePreview() override { log_.write("preview update"); }
    void activatePreview() override { log_.write("preview activate"); }
    void shrinkPreview() override { log_.write("preview shrink"); }
    void setScrollSteps() override { log_.write("preview scroll steps"); }

    PreviewFailed lateFailure;

private:
    CallLog& log_;
};

// The real disk, with deletions written down.
class RecordingFileSystem : public files::DiskFileSystem {
public:
    explicit RecordingFileSystem(CallLog& log) : log_(log) {}
    void DeleteFile(const QString& path) override {
        log_.write("delete " + log_.text(files::toPath(path)));
        DiskFileSystem::DeleteFile(path);
    }

private:
    CallLog& log_;
};

} // namespace qvnd::test
