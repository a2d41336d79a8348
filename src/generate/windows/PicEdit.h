#pragma once

#include "generate/driver/BidEditScreen.h"
#include "platform/desktop/Shell.h"
#include "platform/preview/DocumentPreview.h"

#include <QFrame>

class QLabel;
class QScrollBar;

namespace qvnd::generate {

// The preview of the plan edit window: the view of a document (OleEdit) in its pane, and the scroll
// bar (VSEdit) over its right edge. A view that is taller than the pane moves in ten steps of a
// tenth of what does not fit. One that is no taller, and one brought down to the pane, is scrolled
// by itself with wheel and keys.
//
// A document is seen while the pane is on, and loading one leaves it on or off. One that cannot be
// shown leaves its reason there, and can be activated all the same.
//
// A pane that becomes higher or lower leaves the reader where he is; whoever wants the view brought
// down to the pane with that calls shrinkPreview().
class PicEdit : public QFrame, public BidEditPane {
    Q_OBJECT

public:
    // `view` becomes a child; it tells its height as any widget does and may move itself in its
    // parent. `document` shows a file in it and is often the same object. The shell outlives both.
    PicEdit(QWidget& view, preview::DocumentPreview& document, desktop::Shell& shell,
            QWidget* parent = nullptr);

    // Of the frame: dialogs and boxes in front of it keep the usual pointer. A document that is
    // written meanwhile is shown anew at the end.
    void showHourglass() override;
    void showNormalPointer() override;

    void turnPreviewOn() override;
    void turnPreviewOff() override;
    void removePreview() override;
    void loadPreview(const QString& path) override;
    void onLatePreviewFailure(const PreviewFailed& failed) override {
        document_.onLateFailure(failed);
    }
    void updatePreview() override;
    // 91 when no document is loaded, else as Shell::open().
    void activatePreview() override;
    void shrinkPreview() override;
    void setScrollSteps() override;

    // The document that is loaded while the pane is on, though only the reason may be seen why it
    // cannot be shown; empty when there is none.
    QString document() const { return isOn_ ? path_ : QString(); }

signals:
    // A double click on the document, or on the reason why it is not seen.
    void openRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
    void scroll();
    bool scrollsByItself(QEvent& event);

    QWidget& view_;
    preview::DocumentPreview& document_;
    desktop::Shell& shell_;
    QWidget* OleEdit_;
    QScrollBar* VSEdit_;
    QLabel* hint_;         // what stands in the pane while no document is seen
    QString path_;         // of the loaded document; empty when there is none
    QString refusal_;      // why the loaded document cannot be shown; empty when it can
    bool isShown_ = false; // the view shows the loaded document
    bool isOn_ = true;
    bool isShrunk_ = true;
};

} // namespace qvnd::generate
