#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "platform/registry/Registry.h"
#include "startup/Main.h"
#include "store/modMain.h"

#include <QString>

namespace qvnd::startup {

// The program but for its windows: state, workbench, start and end. One object is one run.
class Program : private ProgramWindows {
public:
    // Without windows: the workbench is loaded where its window would show. All services outlive
    // the object.
    Program(registry::Registry& registry, const outline::Services& services);
    // With windows, which load the workbench themselves; they outlive the object too.
    Program(registry::Registry& registry, const outline::Services& services,
            ProgramWindows& windows);

    enum class Load {
        usual,  // folders are adopted and outlines forgotten, as the workbench does
        asLeft, // the trees show what the databases hold, and nothing is changed
    };

    // Main with the load of the workbench; false when it failed, and the user has been told. How
    // it is loaded says the caller only of a program without windows.
    bool start(const QString& appPath, Load load = Load::usual);
    // The orderly exit: the open plan is saved to its folder and the databases are closed. What
    // fails on the way does not stop it; when the turn does not come in time the plan's folder is
    // left as it is, which loses nothing. False when the user ended the wait for the turn: the run
    // then goes on. Does nothing in a program that did not start. It is cmdExit; mnuExit ends the
    // run without it, and so without saving to the plan's folder.
    bool exit();
    // The end at once: the open plan is not saved to its folder. What the databases hold stays,
    // also what stands in a transaction that a failed command has left open.
    void endAtOnce();

    modMain& state() { return state_; }
    outline::Workbench& workbench() { return workbench_; }
    const outline::Services& services() const { return services_; }

private:
    void showMainForm() override {}
    void showFrmBid() override;

    // False when the user no longer wants to wait.
    bool savePlanInTurn();
    void endHistory();
    void closeDatabases();

    registry::Registry& registry_;
    outline::Services services_;
    ProgramWindows* windows_;
    modMain state_;
    outline::Workbench workbench_;
    Load load_ = Load::usual;
    bool started_ = false;
};

} // namespace qvnd::startup
