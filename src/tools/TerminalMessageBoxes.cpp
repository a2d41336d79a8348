#include "tools/TerminalMessageBoxes.h"

#include "tools/Output.h"

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

} // namespace qvnd::tools
