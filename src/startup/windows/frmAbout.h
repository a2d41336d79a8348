#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/Shell.h"
#include "platform/registry/Registry.h"

#include <QDialog>

class QVBoxLayout;

namespace qvnd::startup {

// The about box: title, version, and the way to the system's own information.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    // All of it outlives the box.
    frmAbout(registry::Registry& registry, desktop::MessageBoxes& messages, desktop::Shell& shell,
             QWidget* parent = nullptr);

    // Starts the program that shows the system's information, or tells that there is none.
    void StartSysInfo();

private:
    void buildTexts(QVBoxLayout& texts);
    QWidget* buildButtons();

    registry::Registry& registry_;
    desktop::MessageBoxes& messages_;
    desktop::Shell& shell_;
};

} // namespace qvnd::startup
