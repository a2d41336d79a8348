#include "startup/Program.h"

#include "outline/CurrentPlan.h"
#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "platform/error/IgnoringErrors.h"

namespace qvnd::startup {

Program::Program(registry::Registry& registry, const outline::Services& services)
    : registry_(registry), services_(services), windows_(this) {}

Program::Program(registry::Registry& registry, const outline::Services& services,
                 ProgramWindows& windows)
    : registry_(registry), services_(services), windows_(&windows) {}

bool Program::start(const QString& appPath, Load load) {
    load_ = load;
    started_ = Main(state_, appPath, {registry_, services_.splash, services_.messages, *windows_});
    return started_;
}

void Program::showFrmBid() {
    if (load_ == Load::asLeft) {
        outline::showTables(state_, workbench_, services_, {});
        return;
    }
    const outline::RecordedCommand recorded(state_, workbench_.TrvCurrent, history::caption::start,
                                            services_.messages);
    outline::loadWorkbench(state_, workbench_, services_.messages, services_.splash);
}

bool Program::exit() {
    if (!started_) {
        return true;
    }
    if (!savePlanInTurn()) {
        return false;
    }
    started_ = false;
    closeDatabases();
    return true;
}

bool Program::savePlanInTurn() {
    try {
        const files::TurnScope turn(state_.Turn.get());
        outline::RecordedCommand recorded(state_, workbench_.TrvCurrent, history::caption::exit,
                                          services_.messages);
        outline::saveCurrentPlan(state_, workbench_);
        recorded.finish();
    } catch (const RunTimeError& failure) {
        return failure.number() != error::dialogCancelled;
    }
    return true;
}

void Program::endAtOnce() {
    if (started_) {
        started_ = false;
        closeDatabases();
    }
}

// A command that ends the program ends here for the history, too.
void Program::endHistory() {
    if (!state_.History) {
        return;
    }
    ignoringErrors([&] {
        if (state_.History->isUnderWay()) {
            state_.History->finish({});
        }
        // Another program that has the turn will thin at its own end.
        const files::TurnScope turn(state_.Turn.get(), files::TurnScope::Waits::no);
        if (turn.holds()) {
            state_.History->thin({}, QDateTime::currentDateTime());
        }
    });
}

void Program::closeDatabases() {
    endHistory();
    ignoringErrors([&] { state_.gDbTemplate->Close(); });
    ignoringErrors([&] { state_.gDbUser->Close(); });
    ignoringErrors([&] { state_.gDbBidSet->Close(); });
    state_.gDbRoster.reset();
    state_.gDbPlan.reset();
    // Commits a transaction that a failed command has left open.
    ignoringErrors([&] { state_.gWs->Close(); });
    state_.History.reset();
    state_.gDbTemplate.reset();
    state_.gDbUser.reset();
    state_.gDbBidSet.reset();
    state_.gFso.reset();
}

} // namespace qvnd::startup
