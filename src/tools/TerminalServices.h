#pragma once

#include "platform/desktop/Events.h"
#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/Fonts.h"
#include "platform/desktop/InputBoxes.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/Shell.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/files/WorkSpaceTurn.h"
#include "tools/Output.h"

#include <QString>

#include <optional>

// The program's services where there is no screen.
namespace qvnd::tools {

// Nothing covers the start of a tool.
class NoSplash : public desktop::SplashScreen {
public:
    void show() override {}
    void tell(const QString&) override {}
    void unload() override {}
};

// Nothing waits to be served.
class NoEvents : public desktop::Events {
public:
    void doEvents() override {}
};

// A terminal shows no progress, and its user cancels by ending the process.
class NoLongRun : public desktop::LongRun {
public:
    void begin(const QString&, int) override {}
    void next(const QString&) override {}
    bool isCancelled() override { return false; }
    void end() override {}
};

// A command that waits for its turn says at once, on standard error, for which program.
class TerminalWait : public files::TurnWait {
public:
    explicit TerminalWait(Output& output) : output_(output) {}

    void begin(const QString& reason) override {
        output_.note(QStringLiteral("正在等待：") + reason);
    }
    bool goesOn() override { return true; }
    void end() override {}

private:
    Output& output_;
};

// A terminal offers no fonts for a choice, and so asks for no printer.
class NoFonts : public desktop::Fonts {
public:
    bool hasPrinter() override { return true; }
    QStringList printerFonts() override { return {}; }
    QStringList screenFonts() override { return {}; }
};

// Names come on the command line; nobody is asked for one.
class NoInputBoxes : public desktop::InputBoxes {
public:
    QString ask(const desktop::InputQuestion& /*question*/) override { return {}; }
};

// A command starts no other program.
class NoShell : public desktop::Shell {
public:
    void run(const QString& /*program*/) override {}
    void open(const QString& /*file*/) override {}
    void openAsTemplate(const QString& /*file*/) override {}
};

// Answers with the file of the command line.
class GivenFile : public desktop::FileDialogs {
public:
    // A relative name counts from the current folder.
    void give(const QString& fileName) { fileName_ = fileName; }

    // As a dialog does it: a name without extension that names no file gets the default one.
    // Cancelled when no file was given.
    desktop::ChosenFile open(const desktop::OpenFileQuestion& question) override;

private:
    std::optional<QString> fileName_;
};

} // namespace qvnd::tools
