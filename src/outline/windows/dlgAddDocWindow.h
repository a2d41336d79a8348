#pragma once

#include "outline/dlgAddDoc.h"

#include <QDialog>

class QLineEdit;

namespace qvnd::outline {

// The dialog that asks for the name of a new folder. OK or Enter adds it; a refusal leaves the
// dialog open with its text.
class dlgAddDocWindow : public QDialog {
    Q_OBJECT

public:
    dlgAddDocWindow(modMain& state, Workbench& workbench, const Services& services, AddMode mode,
                    QWidget* parent = nullptr);

private:
    void OK();

    dlgAddDoc dialog_;
    QLineEdit* TxtAdd_;
};

} // namespace qvnd::outline
