#pragma once

#include "platform/preview/Mailbox.h"
#include "platform/preview/PageConversion.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

namespace qvnd::preview {

// The way of one document to its PDF: its content is read and looked up in another thread; one
// that was never drawn goes through the suite. The object's end ends the suite.
class ConversionRun : public QObject {
public:
    // `done` is called once.
    ConversionRun(const ConversionSettings& settings, const PdfCache& cache,
                  const QString& document, PageConversion::Answer done);
    ~ConversionRun() override;

    // Takes away what runs that never ended have left in the folder.
    static void clearLeftovers(const QString& cacheFolder);

private:
    // What the other thread found.
    struct Content {
        QByteArray hash;
        qint64 size = 0;
        QString cached;  // the PDF, when there is one
        QString failure; // or why there is no content
    };
    static Content takeIn(const QString& document, const PdfCache& cache, const QString& copy);

    QString inScratch(const QString& name) const { return scratch_.filePath(name); }
    void proceed(const Content& content);
    void startSuite();
    void suiteEnded(bool well);
    void fail(const QString& reason);

    const ConversionSettings settings_;
    const PdfCache cache_;
    PageConversion::Answer done_;
    QTemporaryDir scratch_;
    Content content_;
    QTimer timer_;
    QProcess process_;
    Mailbox mailbox_; // the last to come and the first to go
};

} // namespace qvnd::preview
