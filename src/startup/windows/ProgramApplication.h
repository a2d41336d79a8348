#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <QApplication>
#include <QSet>
#include <QString>

namespace qvnd::startup {

// The application with a last net under its events: an event that fails in a way that no command
// has taken ends there, told in a box, and the program goes on. An event that the window system
// repeats, as painting, may fail each time: each text is told once in a run.
class ProgramApplication : public QApplication {
public:
    using QApplication::QApplication;

    // Where failures are told from now on; before, and with nullptr, they pass. `messages` outlives
    // the events.
    void tellFailures(desktop::MessageBoxes* messages) { messages_ = messages; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    desktop::MessageBoxes* messages_ = nullptr;
    QSet<QString> told_;
};

} // namespace qvnd::startup
