#pragma once

#include <QByteArray>
#include <QRect>
#include <QSize>
#include <QString>

namespace qvnd::startup {

// How the windows stood when the program was last left.
struct RememberedWindows {
    // Place and size of the frame as its toolkit writes them; empty before the first end of a run.
    QByteArray frame;
    // Place and size of the workbench in the frame, in pixels; null while it is maximised.
    QRect workbench;
    // The bars of the workbench, in twips, and the size in pixels that it had then; see
    // WorkbenchLayout::Bars.
    QSize barsFor;
    double verticalBar = 0;
    double horizontalBar = 0;
    // The tab of TabTemplate, counted from 0.
    int library = 0;
    // The key of the selected node of TrvCurrent; empty when none was.
    QString node;
};

// Keeps it in the file "windows.ini" of the program folder. What is missing there, or no value of
// its kind, comes back as in a fresh RememberedWindows. A file that cannot be written is no
// failure: the windows then stand as they did at the start.
class WindowMemory {
public:
    explicit WindowMemory(const QString& programFolder);

    RememberedWindows load() const;
    void save(const RememberedWindows& windows) const;

private:
    QString file_;
};

} // namespace qvnd::startup
