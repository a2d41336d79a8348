#pragma once

#include "platform/desktop/HelpWindow.h"
#include "platform/error/RunTimeError.h"

#include <QStringList>

#include <optional>

namespace qvnd::test {

// Writes down what it is to show; fails with `failure` when that is set.
class FakeHelpWindow : public desktop::HelpWindow {
public:
    void showContents(const QString& helpFile) override { add("contents " + helpFile); }
    void showIndex(const QString& helpFile) override { add("index " + helpFile); }
    void showPage(const QString& helpFile, const QString& window) override {
        add(window + " " + helpFile);
    }

    QStringList shown;
    std::optional<RunTimeError> failure;

private:
    void add(const QString& what) {
        if (failure) {
            throw RunTimeError(*failure);
        }
        shown << what;
    }
};

} // namespace qvnd::test
