#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace qvnd::tools {

class Session;

enum class ExitStatus { done = 0, refused = 1, wrongUsage = 2 };

// One command of the tool. It says why it refuses on standard error (by a message box or
// Output::note) and answers with `refused`; it may throw UsageError, and RunTimeError, whose
// description is then shown.
struct Command {
    // One to three words: "init", "plan create", "format library save".
    QString name;
    // What follows the name, for the usage text.
    QString parameters;
    // One line for the usage text.
    QString meaning;
    std::function<ExitStatus(Session&, const QStringList& words)> run;
    // What the history calls it; the meaning without its details where none is given.
    QString caption = {};
};

// Every command, in the order of the usage text. A group has a file of its own (DocCommands.cpp)
// with one function that returns its commands, declared here and called by commandTable().
std::vector<Command> commandTable();

} // namespace qvnd::tools
