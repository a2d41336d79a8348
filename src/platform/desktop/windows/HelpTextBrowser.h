#pragma once

#include <QTextBrowser>

namespace qvnd::desktop {

class HelpCollection;

// Shows the pages of a help file; links, pictures and style sheets come out of the same file.
class HelpTextBrowser : public QTextBrowser {
    Q_OBJECT

public:
    // The collection outlives the browser.
    explicit HelpTextBrowser(const HelpCollection& collection, QWidget* parent = nullptr);

    QVariant loadResource(int type, const QUrl& name) override;

    // Marks the words wherever they stand in the page; none takes the marks away.
    void mark(const QStringList& words);
    // Back to the size that the desktop gives.
    void resetZoom();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    const HelpCollection& collection_;
    int usualSize_;
};

} // namespace qvnd::desktop
