#pragma once

#include "tools/Command.h"
#include "tools/GlobalOptions.h"
#include "tools/Output.h"
#include "tools/TerminalMessageBoxes.h"
#include "tools/TerminalServices.h"

#include "outline/RecordedCommand.h"
#include "platform/files/DiskFileSystem.h"
#include "startup/Program.h"

#include <functional>
#include <memory>

namespace qvnd::tools {

class ProgramRun;

// Thrown when the program could not be started; the user has been told why.
struct StartFailed {};

// One run of the tool, as a command sees it.
class Session {
public:
    // `caption` is what the history calls the command.
    Session(const GlobalOptions& options, Output& output, QString caption = {});
    ~Session(); // the orderly exit of a program that was started
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const GlobalOptions& options() const { return options_; }
    Output& output() { return output_; }
    TerminalMessageBoxes& messages() { return messages_; }

    // The program, started at the first call: Main, then what the workbench does at its load.
    // Commands that need no program leave the program folder untouched.
    ProgramRun& program();
    // The same, but the work space stays as the history left it: a start that adopts or forgets
    // outlines makes a step of its own, which an undo would find before the one that is meant.
    ProgramRun& programAsLeft();

    // Whether the start of the program has brought a restoration to its end that was left half
    // done: the user has not seen yet which state that led to.
    bool hasEndedRestoration() const { return hasEndedRestoration_; }

    // What the history calls the command with these options; before the first call of program().
    void isCalled(const QString& caption) { caption_ = caption; }
    // The plan that the command is about, for the history, where the command does not open it or
    // deletes it. Behind the first call of program().
    void isAbout(const QString& plan) { recorded_->isAbout(plan); }
    // Before a command writes to a file that the user has named: one that is there is replaced only
    // when the user agrees, and a document only while no other program has it open; false when not,
    // and the user has been told. For a file in the work space the program is started, as left, so
    // that the change is recorded.
    bool mayWrite(const QString& file);
    // Puts a file that `draw` makes, under the name that it is given, in the place of `target`,
    // whole or not at all, as a change that the history sees. Behind mayWrite. What `draw` throws
    // passes, and errors of files.
    void replace(const QString& target, const std::function<void(const QString& drawn)>& draw);

    // The end of the command for the history. False when the history could not be written and so
    // the command was taken back; the user has been told. Later calls do nothing.
    bool finish();

private:
    files::FileSystemObject& files();
    ProgramRun& programLoaded(startup::Program::Load load);
    void tellWhatWasMended();

    const GlobalOptions& options_;
    Output& output_;
    QString caption_;
    TerminalMessageBoxes messages_;
    TerminalWait wait_;
    files::DiskFileSystem outsideFiles_; // of a command that needs no program
    std::unique_ptr<ProgramRun> program_;
    bool hasEndedRestoration_ = false;
    std::unique_ptr<outline::RecordedCommand> recorded_;
};

// Runs the work of a command without the program; a RunTimeError is said in a box, as refusals are.
ExitStatus refusing(Session& session, const std::function<void()>& work);

} // namespace qvnd::tools
