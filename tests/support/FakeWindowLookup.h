#pragma once

#include "platform/desktop/WindowLookup.h"

#include <QStringList>

namespace qvnd::test {

// Answers `isThere`, and writes down title and program that were asked for last.
class FakeWindowLookup : public desktop::WindowLookup {
public:
    bool activate(const QString& title, const QString& program) override {
        asked = {title, program};
        return isThere;
    }

    bool isThere = false;
    QStringList asked;
};

} // namespace qvnd::test
