#pragma once

#include "platform/preview/DocumentPreview.h"

#include <QFrame>

class QLabel;
class QScrollBar;

namespace qvnd::outline {

// The preview frame (fraSee): the document view (Olesee) in a clip area (PicSee). A view taller
// than the area is scrolled by a bar beside it (VSSee) in ten steps of a tenth of its height; any
// other is as tall as the area, and if there is more of its document it scrolls that itself.
//
// The view tells its height as any widget does: by its heightForWidth, or else its sizeHint, and by
// updateGeometry when that changes; the part seen keeps its place in the whole. It may move itself
// in the area, and the scroll bar follows to the nearest step.
class PreviewFrame : public QFrame {
    Q_OBJECT

public:
    // `Olesee` becomes a child; `document` shows a file in it and is often the same object.
    PreviewFrame(QWidget& Olesee, preview::DocumentPreview& document, QWidget* parent = nullptr);

    // Shows documents in the frame; lives as long as the frame.
    preview::DocumentPreview& document() { return door_; }

signals:
    // A double click on the document that is seen.
    void openRequested(const QString& path);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class Door : public preview::DocumentPreview {
    public:
        explicit Door(PreviewFrame& frame) : frame_(frame) {}
        void show(const QString& path) override { frame_.showDocument(path); }
        void onLateFailure(const Failed& failed) override {
            frame_.document_.onLateFailure(failed);
        }
        void hide() override { frame_.hideDocument(); }

    private:
        PreviewFrame& frame_;
    };

    void showDocument(const QString& path);
    void hideDocument();
    int viewHeight() const;
    void fitView();
    void scrollView();
    void followView();

    QWidget& Olesee_;
    preview::DocumentPreview& document_;
    QString path_; // of the document that is seen
    QWidget* PicSee_;
    QScrollBar* VSSee_;
    // What stands in the area while no document is shown.
    QLabel* hint_;
    Door door_{*this};
};

} // namespace qvnd::outline
