#include "outline/CommandsInTurn.h"

#include "outline/RecordedCommand.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/UnexpectedErrors.h"

#include <exception>

namespace qvnd::outline {

CommandsInTurn::CommandsInTurn(modMain& state, desktop::MessageBoxes& messages, Look look)
    : state_(state), messages_(messages), look_(std::move(look)) {}

CommandsInTurn::Gesture::Gesture(CommandsInTurn& commands)
    : commands_(commands.inGesture_ ? nullptr : &commands) {
    if (commands_) {
        commands_->inGesture_ = true;
        commands_->isGestureOver_ = false;
    }
}

CommandsInTurn::Gesture::~Gesture() {
    if (commands_) {
        commands_->inGesture_ = false;
        commands_->turn_.reset();
    }
}

// Behind the end of the program there is nothing left to work on.
bool CommandsInTurn::runAlone(const Event& event) {
    return state_.gDbUser && state_.Command.run([&] {
        try {
            event();
        } catch (const std::exception& failure) {
            tell(runTimeErrorOf(failure));
        }
    });
}

void CommandsInTurn::tell(const RunTimeError& failure) {
    messages_.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation, desktop::hintTitle);
}

bool CommandsInTurn::read(const Event& event) {
    return !(inGesture_ && isGestureOver_) && runAlone(event);
}

bool CommandsInTurn::run(const Event& event, const QString& caption) {
    const Gesture gesture(*this);
    return runAlone([&] { act(event, caption, true); });
}

bool CommandsInTurn::runWithoutLook(const Event& event, const QString& caption) {
    const Gesture gesture(*this);
    return runAlone([&] { act(event, caption, false); });
}

void CommandsInTurn::act(const Event& event, const QString& caption, bool looks) {
    if (!isGestureOver_ && mayAct(looks)) {
        record(event, caption);
    }
}

// A command that fails may have changed something before.
void CommandsInTurn::record(const Event& event, const QString& caption) {
    const OutlineNode* node = tree_->SelectedItem();
    const QString selected = node == nullptr ? QString() : node->Key();
    RecordedCommand recorded(state_, *tree_, caption, messages_);
    try {
        event();
    } catch (const std::exception& failure) {
        tell(runTimeErrorOf(failure));
    }
    if (const auto step = recorded.finish()) {
        told_(*step);
    }
    const QString remarks = takeRemarks(state_);
    if (!remarks.isEmpty() && !recorded.wasRefused()) {
        remarked_(remarks);
    }
    if (recorded.wasRefused()) {
        refused_(selected);
    }
}

bool CommandsInTurn::mayAct(bool looks) {
    isGestureOver_ = true;
    try {
        if (!turn_) {
            turn_.emplace(state_.Turn.get());
        }
    } catch (const RunTimeError& failure) {
        if (failure.number() != error::dialogCancelled) {
            tell(failure);
        }
        return false;
    }
    if (looks && look_()) {
        messages_.tell(QStringLiteral("另一个程序改动了方案或模板，现在显示的是改动后的内容。"
                                      "请再操作一次。"),
                       desktop::Icon::information, desktop::hintTitle);
        return false;
    }
    isGestureOver_ = false;
    return true;
}

bool CommandsInTurn::look() {
    bool hasChanged = false;
    runAlone([&] {
        ignoringErrors([&] {
            const files::TurnScope turn(state_.Turn.get(), files::TurnScope::Waits::no);
            hasChanged = turn.holds() && look_();
        });
    });
    return hasChanged;
}

} // namespace qvnd::outline
