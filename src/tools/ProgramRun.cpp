#include "tools/ProgramRun.h"

#include "platform/files/Paths.h"
#include "startup/FirstStart.h"

namespace qvnd::tools {

ProgramRun::ProgramRun(const QString& home, desktop::MessageBoxes& messages, files::TurnWait& wait)
    : home_(home), wait_(wait), word_(messages),
      program_(registry_, {messages, splash_, fileDialogs_, events_, word_.factory(), longRun_}),
      frmBidSet_(program_.state(),
                 {messages, inputBoxes_, fileDialogs_, fonts_, shell_, word_.factory()}) {}

bool ProgramRun::start(startup::Program::Load load) {
    auto& turn = program_.state().Turn;
    turn = std::make_unique<files::WorkSpaceTurn>(home_);
    turn->setWait(&wait_);
    turn->take();
    registry_ = registry::RegistryFile::read(files::withSeparator(home_) + "registry.reg");
    startup::layOutProgramFolder(home_);
    return program_.start(home_, load);
}

void ProgramRun::exit() {
    program_.exit();
    program_.state().Turn.reset();
}

} // namespace qvnd::tools
