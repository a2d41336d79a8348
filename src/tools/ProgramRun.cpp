#include "tools/ProgramRun.h"

#include "platform/files/Paths.h"

#include <QDir>

namespace qvnd::tools {

ProgramRun::ProgramRun(const QString& home, desktop::MessageBoxes& messages)
    : home_(home),
      registry_(registry::RegistryFile::read(files::withSeparator(home) + "registry.reg")),
      word_(messages),
      program_(registry_, {messages, splash_, fileDialogs_, events_, word_.factory()}) {}

bool ProgramRun::start() {
    layOut();
    return program_.start(home_);
}

void ProgramRun::layOut() {
    const QString sys = files::resolved(files::withSeparator(home_) + "Sys");
    const bool isNew =
        !QDir(home_).exists() || QDir(home_).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot);
    if (!isNew && !files::folderExists(sys)) {
        return;
    }
    for (const char* name : {"标书模板", "图片库", "自定义"}) {
        QDir().mkpath(files::withSeparator(sys) + name);
    }
}

} // namespace qvnd::tools
