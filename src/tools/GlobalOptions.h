#pragma once

#include <QString>
#include <QStringList>

namespace qvnd::tools {

// What holds for every command.
struct GlobalOptions {
    // The program's folder, absolute; its registry is the file "registry.reg" in it.
    QString home;
    bool json = false;
    bool help = false;
    // How questions are answered.
    bool yes = false;
    // The command's name and what follows it.
    QStringList words;
};

// Takes the global options out of the command line, wherever they stand before a "--". Without
// "--home" the program's folder is that of the program with windows, whose executable lies in
// `executableFolder` too. Throws UsageError for an unknown option before the command.
GlobalOptions parseGlobalOptions(const QStringList& words, const QString& executableFolder = {});

} // namespace qvnd::tools
