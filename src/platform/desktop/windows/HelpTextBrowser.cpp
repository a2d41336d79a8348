#include "platform/desktop/windows/HelpTextBrowser.h"

#include "platform/desktop/windows/HelpCollection.h"

#include <QWheelEvent>

namespace qvnd::desktop {

HelpTextBrowser::HelpTextBrowser(const HelpCollection& collection, QWidget* parent)
    : QTextBrowser(parent), collection_(collection), usualSize_(font().pointSize()) {
    setOpenExternalLinks(false);
    constexpr int margin = 14;
    document()->setDocumentMargin(margin);
}

QVariant HelpTextBrowser::loadResource(int type, const QUrl& name) {
    const QUrl url = collection_.home().resolved(name);
    switch (type) {
    case QTextDocument::HtmlResource:
        return collection_.html(url);
    case QTextDocument::ImageResource:
        return collection_.data(url);
    default:
        return QString::fromUtf8(collection_.data(url));
    }
}

void HelpTextBrowser::mark(const QStringList& words) {
    QList<QTextEdit::ExtraSelection> marks;
    QTextCharFormat format;
    format.setBackground(QColor(255, 224, 120));
    format.setForeground(Qt::black);
    for (const QString& word : words) {
        for (QTextCursor found = document()->find(word); !found.isNull();
             found = document()->find(word, found)) {
            marks << QTextEdit::ExtraSelection{found, format};
        }
    }
    setExtraSelections(marks);
    if (!marks.isEmpty()) {
        QTextCursor first = marks.constFirst().cursor;
        first.setPosition(first.selectionStart());
        setTextCursor(first);
    }
}

void HelpTextBrowser::resetZoom() {
    QFont usual = font();
    usual.setPointSize(usualSize_);
    setFont(usual);
}

void HelpTextBrowser::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    zoomIn(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

} // namespace qvnd::desktop
