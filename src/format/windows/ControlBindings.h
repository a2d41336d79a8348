#pragma once

#include "format/controls/Control.h"

class QWidget;

namespace qvnd::format {

// Ties the controls of a dialog to the widgets of a window that bear their names: what a control
// shows stands in its widget, and what the user does there becomes the control's event. A text box
// is left for good when its text is taken; one whose text will be refused is left when the click
// that took the focus is over, so that the box with the refusal meets no held button.
class ControlBindings {
public:
    // Every control has its widget in the window. Both outlive the object.
    ControlBindings(Controls& controls, QWidget& window);
    ~ControlBindings();
    ControlBindings(const ControlBindings&) = delete;
    ControlBindings& operator=(const ControlBindings&) = delete;

private:
    Controls& controls_;
};

} // namespace qvnd::format
