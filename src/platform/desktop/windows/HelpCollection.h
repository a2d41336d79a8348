#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUrl>

#include <memory>

class QHelpEngine;

namespace qvnd::desktop {

// A help file (compressed Qt help) opened for reading, with the catalogue file that Qt Help works
// with. The catalogue lies in a cache folder under a name made of the help file's path and content,
// so that a changed help file gets a new one and an unchanged one is not catalogued again.
class HelpCollection {
public:
    // Throws RunTimeError: 53 for a missing file, 75 for one that cannot be read or whose catalogue
    // cannot be written, 3343 for one that is damaged or no help file.
    HelpCollection(const QString& helpFile, const QString& cacheFolder);
    ~HelpCollection();
    HelpCollection(const HelpCollection&) = delete;
    HelpCollection& operator=(const HelpCollection&) = delete;

    // Whether this is that file, as it lies on the disk now.
    bool isOf(const QString& helpFile) const;

    // Contents and index; they come up in the background.
    QHelpEngine& engine() const { return *engine_; }

    QUrl home() const;
    // The page of one window, by its object name; empty when it has none.
    QUrl pageOf(const QString& window) const;
    QList<QUrl> pages() const;
    // The text of a page as HTML. Line breaks of the source beside Chinese are gone, where HTML
    // would otherwise show a blank.
    QString html(const QUrl& page) const;
    // Of a page, a picture or a style sheet; empty for what is not in the file.
    QByteArray data(const QUrl& url) const;

private:
    struct EndOfEngine {
        void operator()(QHelpEngine* engine) const;
    };

    void catalogue(const QString& cacheFolder, const QByteArray& content);
    bool openCatalogue(const QString& path);
    void expectReadable() const;

    QString helpFile_;
    QDateTime changed_;
    qint64 size_ = 0;
    QString namespace_;
    std::unique_ptr<QHelpEngine, EndOfEngine> engine_;
};

} // namespace qvnd::desktop
