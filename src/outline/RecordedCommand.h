#pragma once

#include "outline/OutlineTree.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/history/History.h"
#include "store/modMain.h"

#include <QString>

#include <optional>

namespace qvnd::outline {

// Frames one command of the user for the history: what is changed while the object lives becomes
// one step, without the command knowing of it. The step's note also takes the Remarks of the state;
// those of an earlier command are forgotten at the beginning. Inside another frame, and in a
// program without a history, it does nothing.
class RecordedCommand {
public:
    // `tree` shows the open plan; its selected node is the one that the command is about. `caption`
    // is the text of the menu item or button, mnemonics and dots included.
    // Where the history cannot be written the user is asked in a box of `messages`, before the
    // first change, whether to go on without it.
    RecordedCommand(modMain& state, const OutlineTree& tree, const QString& caption,
                    desktop::MessageBoxes& messages);
    ~RecordedCommand(); // as finish, but swallows errors
    RecordedCommand(const RecordedCommand&) = delete;
    RecordedCommand& operator=(const RecordedCommand&) = delete;

    // The plan that the command is about, where that is not the one in the tree at its end.
    void isAbout(const QString& plan) { about_ = plan; }

    // The end of the command. Its step, if it has made one. When the history could not be written
    // the command has done nothing; a user who was not asked yet is told so, and asked now, but at
    // the exit, behind which there is nothing to go on with. Where it could not be taken back
    // either, the user is told that it stands.
    std::optional<history::Step> finish();
    // Behind the end: the history could not be written, and the command was taken back if possible.
    bool wasRefused() const { return wasRefused_; }

private:
    bool isExit() const;
    bool goesOnWithout(const QString& reason);
    void tellRefusal(const history::History::Outcome& outcome);
    // The history, as long as this frame is open in it; the command may have ended the program.
    history::History* open() const;
    history::History::Outcome close();
    QString planBehind(const QString& planBefore) const;

    modMain& state_;
    bool isOpen_;
    const OutlineTree& tree_;
    QString caption_;
    QString about_;
    desktop::MessageBoxes& messages_;
    bool wasAsked_ = false;
    bool wasRefused_ = false;
};

// Takes the Remarks that no step has taken, a line each; empty without any.
QString takeRemarks(modMain& state);

// The text of a menu item without what is not said aloud: "方案编辑  (&E)..." is "方案编辑".
QString spokenCaption(const QString& caption);

} // namespace qvnd::outline
