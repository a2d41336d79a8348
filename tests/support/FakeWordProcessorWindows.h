#pragma once

#include "platform/desktop/WordProcessorWindows.h"

namespace qvnd::test {

// Answers `open`, and writes down what was asked last.
class FakeWordProcessorWindows : public desktop::WordProcessorWindows {
public:
    bool isOpenIn(const QStringList& folders) override {
        asked = folders;
        return open;
    }

    bool open = false;
    QStringList asked;
};

} // namespace qvnd::test
