#pragma once

#include "platform/desktop/InputBoxes.h"

#include <QStringList>

#include <vector>

namespace qvnd::test {

// Answers with `answers` one after the other, then as a user who cancels.
class FakeInputBoxes : public desktop::InputBoxes {
public:
    QString ask(const desktop::InputQuestion& question) override {
        asked.push_back(question);
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }

    QStringList answers;
    std::vector<desktop::InputQuestion> asked;
};

} // namespace qvnd::test
