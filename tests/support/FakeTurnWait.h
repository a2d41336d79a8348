#pragma once

#include "platform/files/WorkSpaceTurn.h"

#include <QStringList>

#include <functional>

namespace qvnd::test {

// Writes down what it is told of a wait for the turn; `goOn` says whether the user wants to go on.
class FakeTurnWait : public files::TurnWait {
public:
    void begin(const QString& reason) override { told << reason; }
    bool goesOn() override {
        ++asked;
        return !goOn || goOn();
    }
    void end() override { told << QStringLiteral("end"); }

    std::function<bool()> goOn;
    QStringList told;
    int asked = 0;
};

} // namespace qvnd::test
