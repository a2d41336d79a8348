#pragma once

#include "platform/files/FileLock.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace qvnd::files {

// How a program spends the time in which it waits for its turn.
class TurnWait {
public:
    virtual ~TurnWait() = default;

    // `reason` says in a sentence which program has what. Every begin() has its end().
    virtual void begin(const QString& reason) = 0;
    // Called again and again, every few hundredths of a second; false ends the wait.
    virtual bool goesOn() = 0;
    virtual void end() = 0;
};

// The turn at a work space. The window and the companion, or several companions at once, work on
// the same databases; each holds the turn for the length of one command, so that commands come one
// after the other and none finds half of another's work.
//
// The turn is the locks of the program folder and of the folder with the plans, which another
// program folder may share. The system takes them back when the process ends.
class WorkSpaceTurn {
public:
    // How long a command waits for the others.
    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(30);

    explicit WorkSpaceTurn(const QString& programFolder, FileLock::LockCall lock = systemLock);
    WorkSpaceTurn(const WorkSpaceTurn&) = delete;
    WorkSpaceTurn& operator=(const WorkSpaceTurn&) = delete;

    // From now on; null to sleep. It outlives the turn, or the next call of this.
    void setWait(TurnWait* wait) { wait_ = wait; }

    // Waits for the turn. Error 3260 when it does not come in time, whose description tells which
    // program has it; 32755 when the wait was ended; 3051 as FileLock.
    void take(std::chrono::milliseconds longest = patience);
    // False while another program has it. Error 3051.
    bool tryTake();
    // Gives it back; so does the destructor.
    void giveBack();
    bool isTaken() const { return isTaken_; }

    // The turn covers that folder too. While it is taken, the folder's lock is waited for, with the
    // others held. Errors as take; the folder is then not covered.
    void cover(const QString& folder, std::chrono::milliseconds longest = patience);

private:
    bool lockAll();
    bool lock(FileLock& lock);
    // Until `attempt` comes true.
    void waitFor(const std::function<bool()>& attempt, std::chrono::milliseconds longest);
    QString reason() const;

    FileLock::LockCall lockCall_;
    std::vector<std::unique_ptr<FileLock>> locks_;
    const FileLock* missing_ = nullptr; // the one that another program holds
    TurnWait* wait_ = nullptr;
    bool isTaken_ = false;
};

// Holds the turn for the length of one command. Inside another one that holds it already, and for
// a program that has no work space (null), it does nothing.
class TurnScope {
public:
    enum class Waits { yes, no };

    // Errors as WorkSpaceTurn::take; one that does not wait may come without the turn.
    explicit TurnScope(WorkSpaceTurn* turn, Waits waits = Waits::yes)
        : turn_(turn != nullptr && !turn->isTaken() ? turn : nullptr) {
        if (turn_ != nullptr && waits == Waits::yes) {
            turn_->take();
        } else if (turn_ != nullptr) {
            isFree_ = turn_->tryTake();
        }
    }
    ~TurnScope() {
        if (turn_ != nullptr && isFree_) {
            turn_->giveBack();
        }
    }
    TurnScope(const TurnScope&) = delete;
    TurnScope& operator=(const TurnScope&) = delete;

    // False when another program has the turn.
    bool holds() const { return isFree_; }

private:
    WorkSpaceTurn* turn_;
    bool isFree_ = true;
};

} // namespace qvnd::files
