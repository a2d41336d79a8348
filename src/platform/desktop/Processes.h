#pragma once

#include <QStringList>

#include <vector>

namespace qvnd::desktop {

// The processes that run on this machine, as far as this user may see them.
class Processes {
public:
    virtual ~Processes() = default;

    // One command line for each process, program first, arguments apart.
    virtual std::vector<QStringList> commandLines() = 0;
    // The name by which lock files call this machine.
    virtual QString hostName() = 0;
};

// The machine's own list, read from /proc; empty on a system without it.
class SystemProcesses : public Processes {
public:
    std::vector<QStringList> commandLines() override;
    QString hostName() override;
};

} // namespace qvnd::desktop
