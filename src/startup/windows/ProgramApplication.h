#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <QApplication>
#include <QSet>
#include <QString>

namespace qvnd::startup {

// The application with a last net under the events of the windows' thread: an event that fails in a
// way that no command has taken ends there, and the program goes on. A box tells it, behind the
// event. What the window system or a clock raises again by itself, as painting, may fail each time:
// of that each text is told once in a run.
class ProgramApplication : public QApplication {
public:
    using QApplication::QApplication;

    // Where failures are told from now on; before, and with nullptr, they pass. `messages` outlives
    // the events.
    void tellFailures(desktop::MessageBoxes* messages) {
        messages_ = messages;
        told_.clear();
    }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void tellBehind(const QString& text, bool comesAgain);

    desktop::MessageBoxes* messages_ = nullptr;
    QSet<QString> told_;    // of what comes again
    QSet<QString> waiting_; // to be told, or in a box that is open
};

} // namespace qvnd::startup
