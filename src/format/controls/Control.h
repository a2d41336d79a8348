#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/UnexpectedErrors.h"

#include <QString>
#include <QStringView>

#include <exception>
#include <functional>
#include <vector>

// The controls of a dialog as plain values with notifications: what the dialog's rules are written
// against, and what a window shows. Assigning a value by code raises the same notification as the
// user's action whenever the value really changes.
namespace qvnd::format {

class Control;

// The controls of one dialog, and what stands around the events that its user raises.
class Controls {
public:
    explicit Controls(desktop::MessageBoxes& messages) : messages_(messages) {}
    Controls(const Controls&) = delete;
    Controls& operator=(const Controls&) = delete;

    const std::vector<Control*>& all() const { return all_; }
    // The control of that name and kind; null when there is none.
    template <class Kind>
    Kind* find(QStringView name) const;

    // Runs what an event of the user's brings about. An error that no handler took is shown as one
    // box with its description; what was done before it stays done.
    template <class Event>
    void userDid(Event event) {
        try {
            event();
        } catch (const std::exception& failure) {
            messages_.tell(desktop::descriptionOf(runTimeErrorOf(failure)));
        }
    }

private:
    friend class Control;

    desktop::MessageBoxes& messages_;
    std::vector<Control*> all_;
};

// What all controls have. A control lives as long as its dialog is loaded.
//
// Setters are for code: they let the errors of the handlers that they run pass. The methods that
// are named after what a user does (type, pick, click, leave) are for windows: they show an error
// instead, and never throw one.
class Control {
public:
    Control(Controls& dialog, QStringView name) : dialog_(dialog), name_(name.toString()) {
        dialog.all_.push_back(this);
    }
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    // As the design names it: "TxtPrjName", "Option1(1)".
    const QString& name() const { return name_; }

    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) {
        if (enabled != enabled_) {
            enabled_ = enabled;
            show();
        }
    }

    // For the window, one listener: called after anything that the control shows has changed,
    // whoever changed it, and before the handlers run.
    std::function<void()> changed;

protected:
    void show() const {
        if (changed) {
            changed();
        }
    }
    static void raise(const std::function<void()>& notification) {
        if (notification) {
            notification();
        }
    }
    Controls& dialog() const { return dialog_; }

private:
    Controls& dialog_;
    QString name_;
    bool enabled_ = true;
};

template <class Kind>
Kind* Controls::find(QStringView name) const {
    for (Control* control : all_) {
        if (control->name() == name) {
            return dynamic_cast<Kind*>(control);
        }
    }
    return nullptr;
}

} // namespace qvnd::format
