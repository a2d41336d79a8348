#include "tools/ProgramRun.h"

#include "platform/files/Paths.h"
#include "startup/FirstStart.h"

namespace qvnd::tools {

ProgramRun::ProgramRun(const QString& home, desktop::MessageBoxes& messages)
    : home_(home), turn_(home),
      registry_(registry::RegistryFile::read(files::withSeparator(home) + "registry.reg")),
      word_(messages),
      program_(registry_, {messages, splash_, fileDialogs_, events_, word_.factory(), longRun_}),
      frmBidSet_(program_.state(),
                 {messages, inputBoxes_, fileDialogs_, fonts_, shell_, word_.factory()}) {}

bool ProgramRun::start() {
    startup::layOutProgramFolder(home_);
    turn_.take();
    return program_.start(home_);
}

} // namespace qvnd::tools
