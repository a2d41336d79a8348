#pragma once

#include "format/frmMultLevel.h"
#include "format/windows/ControlBindings.h"

#include <QDialog>

#include <memory>

namespace qvnd::format {

// The dialog "多级标题设置" on the screen.
class frmMultLevelWindow : public QDialog {
    Q_OBJECT

public:
    // Switches and messages outlive the window.
    frmMultLevelWindow(FormatSwitches& switches, desktop::MessageBoxes& messages,
                       QWidget* parent = nullptr);

private:
    void build();

    frmMultLevel dialog_;
    std::unique_ptr<ControlBindings> bindings_;
};

} // namespace qvnd::format
