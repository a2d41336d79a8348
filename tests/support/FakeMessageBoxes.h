#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <deque>
#include <functional>
#include <vector>

namespace qvnd::test {

// Records every box; questions are answered from `answers`, then by `otherwise`.
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
        if (answers.empty()) {
            return otherwise;
        }
        const auto answer = answers.front();
        answers.pop_front();
        return answer;
    }

    // What happens while a box is open.
    std::function<void()> whileOpen;
    std::vector<desktop::Message> shown;
    std::deque<desktop::Answer> answers;
    desktop::Answer otherwise = desktop::Answer::no;
};

} // namespace qvnd::test
