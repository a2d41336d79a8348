#pragma once

#include <QFile>
#include <QString>

#include <chrono>
#include <functional>

namespace qvnd::files {

// The turn at the work space of one program folder. The window and the companion, or several
// companions at once, work on the same databases; each holds the turn for the length of one
// command, so that commands come one after the other and none finds half of another's work.
//
// The turn is a lock on the file "qvnd.lock" in the program folder, which the system takes back
// when the process ends. Where that file cannot be opened for writing (the folder is missing, say)
// there is nothing to write either, and the turn is given without a lock.
class WorkSpaceTurn {
public:
    // How long a command waits for the others.
    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(30);

    explicit WorkSpaceTurn(const QString& programFolder);
    WorkSpaceTurn(const WorkSpaceTurn&) = delete;
    WorkSpaceTurn& operator=(const WorkSpaceTurn&) = delete;

    // Told true when the turn has to be waited for, and false when that is over; a window shows it.
    std::function<void(bool)> onWaiting;

    // Waits for the turn. Error 3260 when it does not come in time; its description tells which
    // program has it.
    void take(std::chrono::milliseconds longest = patience);
    // Gives it back; so does the destructor.
    void giveBack();
    bool isTaken() const { return file_.isOpen(); }

private:
    bool waitForLock(std::chrono::milliseconds longest);
    // Says in the file who has the turn.
    void sign();
    QString holder();

    QString folder_;
    QFile file_;
};

// Holds the turn for the length of one command. Inside another one that holds it already, and for
// a program that has no work space (null), it does nothing.
class TurnScope {
public:
    // Errors as WorkSpaceTurn::take.
    explicit TurnScope(WorkSpaceTurn* turn,
                       std::chrono::milliseconds longest = WorkSpaceTurn::patience)
        : turn_(turn != nullptr && !turn->isTaken() ? turn : nullptr) {
        if (turn_ != nullptr) {
            turn_->take(longest);
        }
    }
    ~TurnScope() {
        if (turn_ != nullptr) {
            turn_->giveBack();
        }
    }
    TurnScope(const TurnScope&) = delete;
    TurnScope& operator=(const TurnScope&) = delete;

private:
    WorkSpaceTurn* turn_;
};

} // namespace qvnd::files
