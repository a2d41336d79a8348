#pragma once

#include "platform/error/RunTimeError.h"

#include <QString>

namespace qvnd::desktop {

// The title of boxes that only tell something.
inline const QString hintTitle = QStringLiteral("提示");

enum class Icon { none, information, question, exclamation, critical };
enum class Buttons { ok, okCancel, yesNo };
enum class Answer { ok, cancel, yes, no };

struct Message {
    QString text;
    Icon icon = Icon::none;
    // Empty: the box bears no title of its own.
    QString title;
    Buttons buttons = Buttons::ok;
};

// What a box says of a failure.
inline QString descriptionOf(const RunTimeError& failure) {
    return QString::fromStdU16String(failure.description());
}

// How a user answers who wants nothing: with the button that declines, or with the only one.
inline Answer declined(const Message& message) {
    switch (message.buttons) {
    case Buttons::yesNo:
        return Answer::no;
    case Buttons::okCancel:
        return Answer::cancel;
    default:
        return Answer::ok;
    }
}

// Every message box of the program goes through here, so that a window, a terminal or a test can
// stand behind it. Blocks until the user has answered; never throws.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    // The button that was pressed: one of those that the message offers.
    virtual Answer show(const Message& message) = 0;

    // A box with one button.
    void tell(const QString& text, Icon icon = Icon::none, const QString& title = {}) {
        show({text, icon, title, Buttons::ok});
    }
    // A box with Yes and No; true for Yes.
    bool ask(const QString& text, Icon icon, const QString& title = {}) {
        return show({text, icon, title, Buttons::yesNo}) == Answer::yes;
    }
    // A box with one button, before what failed is tried once more. False says to give it up:
    // nobody is there to put right what the text names, and trying again would never end.
    virtual bool askForRetry(const QString& text, Icon icon, const QString& title = {}) {
        tell(text, icon, title);
        return true;
    }
};

} // namespace qvnd::desktop
