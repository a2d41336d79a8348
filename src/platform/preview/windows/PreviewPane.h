#pragma once

#include "platform/preview/DocumentPreview.h"
#include "platform/preview/FileWatch.h"
#include "platform/preview/PageConversion.h"
#include "platform/preview/windows/PageColumn.h"
#include "platform/preview/windows/PdfPages.h"
#include "platform/preview/windows/ReadingLoad.h"

#include <QWidget>

#include <memory>

class QLabel;

namespace qvnd::preview {

// The document view (Olesee): pages on a grey desk, fitted to its width, as high as they need.
// It stands in a clip area, its parent, and moves itself there for wheel and keys (Page Up, Page
// Down, arrows, Home, End); whoever owns the area may move it as well.
//
// What our own engine reads of a document is shown at once, of a long one the first pages, to which
// the others come. A document that takes longer to read is announced, and the window goes on. With
// an office suite the exact pages take over when they are there, at the place that is seen; why
// they do not come is said in the pane. A document of another format shows as these pages alone.
//
// The pane follows the file: when a word processor has saved it, its new state takes the place of
// the one that is seen. While it cannot be read, the pages seen stay and the reason is said.
class PreviewPane : public QWidget, public DocumentPreview {
    Q_OBJECT

public:
    // `conversion` must outlive the pane.
    explicit PreviewPane(PageConversion& conversion, QWidget* parent = nullptr);
    ~PreviewPane() override;

    // Throws RunTimeError with a Chinese reason when the file cannot be shown at all: missing,
    // encrypted, damaged, of a format that nothing here reads. The pane is then empty and hidden.
    void show(const QString& path) override;
    void hide() override;
    void setFollowing(bool follows) override { watch_.setPaused(!follows); }
    using QWidget::show;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return column_.heightFor(width); }
    QSize sizeHint() const override;

    // 0 without a document.
    int pageCount() const { return pages_; }
    // Whether the pages seen are the exact ones.
    bool isExact() const { return isExact_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void letGo();
    ReadingLoad::Pages beginReading();
    bool showConverted();
    void readAnew();
    void showReading(ReadingLoad::Pages pages);
    void showPages(PageSource& source);
    void convert();
    void takeConversion(const PageConversion::Outcome& outcome);
    void showExactPages();
    int pageSeen() const;
    void say(const QString& text);
    void placeNotice();
    int areaHeight() const;
    void scrollTo(int top);
    void keepPlace(int top);

    PageConversion& conversion_;
    QString path_;
    FileWatch watch_{[this] { readAnew(); }};
    std::unique_ptr<ReadingLoad> load_;
    bool isRead_ = false; // the file as it is, at least in part
    std::unique_ptr<ReadingPages> reading_;
    std::unique_ptr<PageConversion::Wish> wish_;
    std::unique_ptr<PdfPages> exact_;
    bool isExact_ = false;
    PageSource* source_ = nullptr; // what is on the screen
    int pages_ = 0;
    PageColumn column_;
    std::vector<QRect> places_; // of the pages at the present width
    QLabel* notice_;
};

} // namespace qvnd::preview
