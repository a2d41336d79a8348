#pragma once

#include "platform/desktop/Events.h"
#include "platform/desktop/ProgressDialog.h"
#include "store/modMain.h"

#include <QDialog>
#include <QElapsedTimer>

#include <memory>

class QLabel;
class QProgressBar;

namespace qvnd::generate {

// The small dialog over a running generation: above all windows, with a label (Label1), a bar
// (PrgBid) and the stop button (cmdStop).
class dlgTB : public QDialog {
    Q_OBJECT

public:
    explicit dlgTB(QWidget* parent = nullptr);

    // 0 to 1.
    void setProgress(double part);
    void setLabel(const QString& text);

    // Closing it by the window's own means stops as well.
    void reject() override;

signals:
    void stopPressed();

private:
    QLabel* Label1_;
    QProgressBar* PrgBid_;
};

// Loads and unloads dlgTB for a run. The stop button lets waiting events run, requests the stop and
// unloads the dialog, which then stays away until the run has unloaded it too. Behind a message
// that hid it the dialog comes back only if it was loaded before: a stop pressed behind the last
// stop test would end the next run.
//
// Showing progress serves the desktop's events, as calls into a word processor do, so that the
// windows stay alive and the button can be pressed: at each label, whenever the bar has moved by a
// hundredth, and else every 40 milliseconds.
class ProgressWindow : public desktop::ProgressDialog {
public:
    // All of it outlives the object.
    ProgressWindow(modMain& state, desktop::Events& events, QWidget* parent)
        : state_(state), events_(events), parent_(parent) {}

    void show() override;
    void hide() override;
    void unload() override;
    void setProgress(double part) override;
    void setLabel(const QString& text) override;

    // Null while it is not loaded.
    dlgTB* dialog() const { return dialog_.get(); }

private:
    struct Later {
        void operator()(dlgTB* dialog) const { dialog->deleteLater(); }
    };

    void stop();
    void takeDown();
    void serveEvents();
    void serveEventsInTime();

    modMain& state_;
    desktop::Events& events_;
    QWidget* parent_;
    std::unique_ptr<dlgTB, Later> dialog_;
    bool isStopped_ = false;
    bool isMissing_ = false; // it was not loaded when it was to be hidden
    double servedAt_ = 0;    // the progress
    QElapsedTimer sinceEvents_;
};

} // namespace qvnd::generate
