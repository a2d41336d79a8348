#pragma once

#include "platform/preview/Mailbox.h"
#include "platform/preview/PageConversion.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

namespace qvnd::preview {

// Converts one document to PDF. Another thread reads the file and looks its content up in the
// cache; content that is not in the cache goes through the office suite. The destructor ends the
// suite.
class ConversionRun : public QObject {
public:
    // `done` is called once.
    ConversionRun(const ConversionSettings& settings, const PdfCache& cache,
                  const QString& document, PageConversion::Answer done);
    ~ConversionRun() override;

    // Deletes the files that killed runs have left in the folder.
    static void clearLeftovers(const QString& cacheFolder);

private:
    // The result of the other thread.
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
    Mailbox mailbox_; // declared last, so that it is destroyed first
};

} // namespace qvnd::preview
