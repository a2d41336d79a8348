#include "tools/TerminalMessageBoxes.h"

#include "tools/Output.h"

#include <thread>

namespace qvnd::tools {

using desktop::Answer;
using desktop::Buttons;

Answer TerminalMessageBoxes::show(const desktop::Message& message) {
    ++count_;
    output_.note(message.title.isEmpty() ? message.text : message.title + ": " + message.text);
    if (message.buttons == Buttons::ok) {
        return Answer::ok;
    }
    const bool yesNo = message.buttons == Buttons::yesNo;
    output_.note(yes_ ? (yesNo ? QStringLiteral("（答：是）") : QStringLiteral("（答：确定）"))
                      : (yesNo ? QStringLiteral("（答：否。要答“是”请加 --yes）")
                               : QStringLiteral("（答：取消。要答“确定”请加 --yes）")));
    if (yesNo) {
        return yes_ ? Answer::yes : Answer::no;
    }
    return yes_ ? Answer::ok : Answer::cancel;
}

bool TerminalMessageBoxes::askForRetry(const QString& text, desktop::Icon icon,
                                       const QString& title) {
    tell(text, icon, title);
    if (retries_ == mostRetries) {
        output_.note(QStringLiteral("（已重试 %1 次，不再重试）").arg(mostRetries));
        return false;
    }
    ++retries_;
    std::this_thread::sleep_for(pause_);
    return true;
}

} // namespace qvnd::tools
