#pragma once

#include "format/controls/Control.h"

// The controls that are on or off, and buttons.
namespace qvnd::format {

// A check box: Click follows every real change of its value.
class CheckBox : public Control {
public:
    using Control::Control;

    bool checked() const { return checked_; }
    void setChecked(bool checked) {
        if (checked != checked_) {
            checked_ = checked;
            show();
            raise(Click);
        }
    }
    // The user's click turns it round.
    void click() {
        dialog().userDid([&] { setChecked(!checked_); });
    }

    std::function<void()> Click;

private:
    bool checked_ = false;
};

class OptionButton;

// The options of one frame, of which at most one is selected.
struct OptionFrame {
    std::vector<OptionButton*> options;
};

// An option button. Click follows its becoming selected; those beside it are unselected before,
// without a notification.
class OptionButton : public Control {
public:
    OptionButton(Controls& dialog, OptionFrame& frame, QStringView name)
        : Control(dialog, name), frame_(frame) {
        frame.options.push_back(this);
    }

    bool value() const { return value_; }
    void select() {
        if (value_) {
            return;
        }
        for (OptionButton* other : frame_.options) {
            other->unselect();
        }
        value_ = true;
        show();
        raise(Click);
    }
    void click() {
        dialog().userDid([&] { select(); });
    }

    std::function<void()> Click;

private:
    void unselect() {
        if (value_) {
            value_ = false;
            show();
        }
    }

    OptionFrame& frame_;
    bool value_ = false;
};

class Button : public Control {
public:
    using Control::Control;

    void click() {
        dialog().userDid([&] { raise(Click); });
    }

    std::function<void()> Click;
};

} // namespace qvnd::format
