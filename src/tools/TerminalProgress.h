#pragma once

#include "platform/desktop/ProgressDialog.h"

#include <iosfwd>

namespace qvnd::tools {

// True when standard error is a terminal that a person looks at.
bool standardErrorIsATerminal();

// The progress dialog as one line on a terminal, drawn over itself: a bar, the percentage and
// the label.
class TerminalProgress : public desktop::ProgressDialog {
public:
    explicit TerminalProgress(std::ostream& terminal) : terminal_(terminal) {}

    void show() override;
    // Clears the line, so that a message can be printed in its place.
    void hide() override;
    void unload() override { hide(); }
    void setProgress(double part) override;
    void setLabel(const QString& text) override;

private:
    void draw();

    std::ostream& terminal_;
    bool shown_ = false;
    double part_ = 0;
    QString label_;
};

// Shows nothing; used when standard error is no terminal.
class NoProgress : public desktop::ProgressDialog {
public:
    void show() override {}
    void hide() override {}
    void unload() override {}
    void setProgress(double /*part*/) override {}
    void setLabel(const QString& /*text*/) override {}
};

} // namespace qvnd::tools
