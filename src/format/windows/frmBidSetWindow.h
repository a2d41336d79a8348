#pragma once

#include "format/frmBidSet.h"
#include "format/windows/ControlBindings.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QTabWidget;

namespace qvnd::format {

// The format dialog "卷宗编制设置" on the screen, for one load of its controls. 确定 and 取消 hide
// it; it can then be shown again with what its controls hold. Its close box, too, hides it, and
// says so in wasClosed().
class frmBidSetWindow : public QDialog {
    Q_OBJECT

public:
    // Loads the dialog if it is not. State, dialog and messages outlive the window; the dialog is
    // not unloaded before the window is gone.
    frmBidSetWindow(modMain& state, frmBidSet& dialog, desktop::MessageBoxes& messages,
                    QWidget* parent = nullptr);
    ~frmBidSetWindow() override;

    // True once the close box has been used; the dialog is then to be unloaded.
    bool wasClosed() const { return wasClosed_; }

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build();
    void setOrder();
    bool finishTyping();
    void decide();
    void openMultLevel();

    modMain& state_;
    BidSetForm& form_;
    desktop::MessageBoxes& messages_;
    QTabWidget* SSTab1_;
    std::unique_ptr<ControlBindings> bindings_;
    bool wasClosed_ = false;
};

// Shows the format dialog modally over `parent`. Between two calls it stays loaded, unless the user
// closed it by its close box. When another program has changed its tables meanwhile, it is loaded
// anew and the user is told. What a showing has changed of itself, or kept in spite of 取消, comes
// into the Remarks of the state.
class FormatDialog {
public:
    // All of it outlives the object.
    FormatDialog(modMain& state, frmBidSet& dialog, desktop::MessageBoxes& messages);
    ~FormatDialog();

    void show(QWidget* parent);

private:
    modMain& state_;
    frmBidSet& dialog_;
    desktop::MessageBoxes& messages_;
    // Its parent may take it along.
    QPointer<frmBidSetWindow> window_;
};

} // namespace qvnd::format
