#pragma once

#include "outline/OutlineTree.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "store/modMain.h"

#include <functional>
#include <optional>
#include <utility>

namespace qvnd::outline {

// Runs the events of a window: one at a time, and those that may change something in turn with
// other programs on the work space, each recorded as one step of the history. After the end of the
// program none is run.
//
// Logic tells its failures itself; a RunTimeError that it lets pass is told here.
class CommandsInTurn {
public:
    using Event = std::function<void()>;
    // Fills what the window shows anew if another program has changed it; true when it did. Errors
    // of the store pass.
    using Look = std::function<bool()>;

    // State and boxes outlive the object.
    CommandsInTurn(modMain& state, desktop::MessageBoxes& messages, Look look);
    // The tree that shows the open plan, for the history: its selected node is the one that a
    // command is about. It outlives the object.
    void areAbout(const OutlineTree& tree) { tree_ = &tree; }
    // Is told of every step that a command has made.
    void onStep(std::function<void(const history::Step&)> told) { told_ = std::move(told); }

    // Is told the Remarks of a command that no step has taken.
    void onRemarks(std::function<void(const QString&)> told) { remarked_ = std::move(told); }

    // Is called behind a command that was refused, or taken back, because it could not be recorded:
    // what the window shows may be ahead of the tables. It is told the key that was selected
    // before.
    void onRefusal(std::function<void(const QString&)> refused) { refused_ = std::move(refused); }

    // The events that one act of the user raises, such as the press and the click of one mouse
    // click. While the object lives, the commands among them wait for the turn once and raise one
    // box at most. When the turn has not come, or the user has been shown what another program
    // changed, the events that follow are not run: their nodes may be gone.
    class Gesture {
    public:
        explicit Gesture(CommandsInTurn& commands);
        ~Gesture();
        Gesture(const Gesture&) = delete;
        Gesture& operator=(const Gesture&) = delete;

    private:
        CommandsInTurn* commands_; // null inside another one
    };

    // An event that only reads, selects or shows: never waits for the turn. False, and nothing run,
    // while another event runs.
    bool read(const Event& event);
    // A command: waits for the turn, and looks. It is not run when that showed something new, as it
    // was meant for what the user saw before; nor when the user ends the wait. False while another
    // event runs. `caption` is the text of its menu item or button, which names it in
    // the history.
    bool run(const Event& event, const QString& caption = QStringLiteral("操作"));
    // The same without the look, for a command that reads all anew itself.
    bool runWithoutLook(const Event& event, const QString& caption = QStringLiteral("操作"));
    // Looks for the user who comes back from another program; not while one of them has the turn.
    // True when something was filled anew. Failures are left to the next command.
    bool look();

private:
    bool runAlone(const Event& event);
    void act(const Event& event, const QString& caption, bool looks);
    void record(const Event& event, const QString& caption);
    bool mayAct(bool looks);
    void tell(const RunTimeError& failure);

    modMain& state_;
    desktop::MessageBoxes& messages_;
    OutlineTree noTree_{QString()};
    const OutlineTree* tree_ = &noTree_;
    Look look_;
    std::function<void(const history::Step&)> told_ = [](const history::Step&) {};
    std::function<void(const QString&)> remarked_ = [](const QString&) {};
    std::function<void(const QString&)> refused_ = [](const QString&) {};
    bool inGesture_ = false;
    bool isGestureOver_ = false;
    std::optional<files::TurnScope> turn_;
};

} // namespace qvnd::outline
