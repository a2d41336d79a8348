#pragma once

#include "format/frmBidSet.h"
#include "platform/registry/RegistryFile.h"
#include "startup/Program.h"
#include "startup/WordProcessor.h"
#include "tools/TerminalServices.h"

namespace qvnd::tools {

// One run of the program for one command of the tool: the program itself, the services that stand
// behind it here, and its program folder. A program folder that is not there, or is empty, is
// first laid out as an installation would: "Sys" with the folders of templates, pictures and
// custom pages. From its start to its end it has the turn at the work space.
class ProgramRun {
public:
    // All of it outlives the run.
    ProgramRun(const QString& home, desktop::MessageBoxes& messages, files::TurnWait& wait);

    // Waits for the turn as `wait` does, which comes before anything in the program folder is read
    // or written; then Main and the load of the workbench. False when Main failed, which has told
    // why. Errors as WorkSpaceTurn::take.
    bool start(startup::Program::Load load);
    // The orderly exit.
    void exit();

    startup::Program& program() { return program_; }
    modMain& state() { return program_.state(); }
    outline::Workbench& workbench() { return program_.workbench(); }
    desktop::SplashScreen& splash() { return splash_; }
    const outline::Services& services() const { return program_.services(); }
    GivenFile& fileDialogs() { return fileDialogs_; }
    format::frmBidSet& frmBidSet() { return frmBidSet_; }

private:
    QString home_;
    files::TurnWait& wait_;
    registry::RegistryFile registry_;
    NoSplash splash_;
    NoEvents events_;
    GivenFile fileDialogs_;
    NoLongRun longRun_;
    startup::WordProcessor word_;
    startup::Program program_;
    NoFonts fonts_;
    NoInputBoxes inputBoxes_;
    NoShell shell_;
    format::frmBidSet frmBidSet_;
};

} // namespace qvnd::tools
