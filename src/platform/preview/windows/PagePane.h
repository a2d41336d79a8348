#pragma once

#include "platform/preview/DocumentPreview.h"
#include "platform/preview/FileWatch.h"
#include "platform/preview/PageConversion.h"
#include "platform/preview/windows/OwnPages.h"
#include "platform/preview/windows/PageColumn.h"
#include "platform/preview/windows/PdfPages.h"

#include <QAction>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class QLabel;
class QScrollBar;

namespace qvnd::preview {

// The document view (Olesee): pages on a grey desk, fitted to its width. It is as tall as its owner
// makes it and scrolls itself, by a bar of its own, the wheel, and keys (arrows line by line, Page
// Up and Page Down by what is seen, with Ctrl by pages, Home, End).
//
// The first page of our own layout is there at once, the others follow as they are found; a
// document that takes longer to read is announced, and the window goes on. An action of the context
// menu shows the pages that the office suite makes of the same file instead, at the place that is
// seen; why they do not come is said in the pane. A document of another format shows as these pages
// alone.
//
// The pane follows the file: when a word processor has saved it, its new state takes the place of
// the one that is seen. While it cannot be read, the pages seen stay and the reason is said.
class PagePane : public QWidget, public DocumentPreview {
    Q_OBJECT

public:
    // `conversion` must outlive the pane.
    explicit PagePane(PageConversion& conversion, QWidget* parent = nullptr);
    ~PagePane() override;

    // Throws with a Chinese reason when the file cannot be shown at all: missing, encrypted,
    // damaged, of a format that nothing here reads. The pane is then empty and hidden; where that
    // turns out later, it stays and says the reason too.
    void show(const QString& path) override;
    void onLateFailure(const Failed& failed) override { lateFailure_ = failed; }
    void hide() override;
    void setFollowing(bool follows) override { watch_.setPaused(!follows); }
    using QWidget::show;

    // Any height will do.
    QSize sizeHint() const override;

    // Pages found so far; 0 without a document.
    int pageCount() const { return source_ != nullptr ? source_->count() : 0; }
    // Whether all pages are found.
    bool isWhole() const { return isOffice_ || (own_ && own_->isWhole()); }
    // Whether the pages seen are those of the office suite.
    bool showsOfficePages() const { return isOffice_; }
    // How far the document is scrolled: from its top, in device-independent pixels.
    int top() const;
    void scrollTo(int top);
    // The first page that reaches into the view.
    int pageSeen() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void letGo();
    std::unique_ptr<OwnPages> read();
    void readAnew();
    bool showConverted(const word::DocumentRefusal& refusal);
    void failLate(const RunTimeError& failure);
    void tellFailure();
    void takeOver();
    void grow();
    void showPages(PageSource& source);
    void setOfficeWanted(bool wanted);
    void convert();
    void takeConversion(const PageConversion::Outcome& outcome);
    void showExactPages();
    void showInPlace(PageSource& source);
    void forgetExact();
    void place();
    void describe();
    void say(const QString& text);
    int roomWidth() const;
    void scrollToPage(int page);

    PageConversion& conversion_;
    std::shared_ptr<FontShelf> fonts_ = std::make_shared<FontShelf>();
    QString path_;
    FileWatch watch_{[this] { readAnew(); }};
    std::unique_ptr<OwnPages> own_;
    std::unique_ptr<OwnPages> next_; // of the file as it was saved since
    std::unique_ptr<PageConversion::Wish> wish_;
    std::unique_ptr<PdfPages> exact_;
    std::unique_ptr<PdfPages> coming_; // until the page that is seen is drawn
    bool isOffice_ = false;
    PageSource* source_ = nullptr; // what is on the screen
    PageColumn column_;
    std::vector<QRect> places_; // of the pages at the present width
    Failed lateFailure_;
    std::optional<RunTimeError> failure_; // that is still to be told
    QTimer telling_;
    QElapsedTimer sinceShown_;
    QScrollBar* bar_;
    QLabel* notice_;
    QLabel* progress_;
    QAction* office_;
};

} // namespace qvnd::preview
