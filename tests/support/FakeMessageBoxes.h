#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <deque>
#include <functional>
#include <stdexcept>
#include <vector>

namespace qvnd::test {

// Records every box; questions are answered from `answers`, then by `otherwise`. To answer a box
// with a button that it does not have fails the test.
class FakeMessageBoxes : public desktop::MessageBoxes {
public:
    desktop::Answer show(const desktop::Message& message) override {
        shown.push_back(message);
        if (const auto act = whileOpen) {
            act();
        }
        if (message.buttons == desktop::Buttons::ok) {
            return desktop::Answer::ok;
        }
        const desktop::Answer answer = next();
        if (!offers(message.buttons, answer)) {
            throw std::logic_error("no such button: " + message.text.toStdString());
        }
        return answer;
    }

    // What happens while a box is open.
    std::function<void()> whileOpen;
    std::vector<desktop::Message> shown;
    std::deque<desktop::Answer> answers;
    desktop::Answer otherwise = desktop::Answer::no;

private:
    desktop::Answer next() {
        if (answers.empty()) {
            return otherwise;
        }
        const desktop::Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    static bool offers(desktop::Buttons buttons, desktop::Answer answer) {
        return buttons == desktop::Buttons::okCancel
                   ? answer == desktop::Answer::ok || answer == desktop::Answer::cancel
                   : answer == desktop::Answer::yes || answer == desktop::Answer::no;
    }
};

} // namespace qvnd::test
