#pragma once

#include <QString>

namespace qvnd::preview {

// PDFs in a folder, named after the content that they were drawn from. When there are too many,
// those that were asked for least recently are deleted.
class PdfCache {
public:
    struct Limits {
        qint64 bytes = 256 << 20;
        int files = 400;
    };

    // `folder` is made when needed.
    PdfCache(QString folder, Limits limits) : folder_(std::move(folder)), limits_(limits) {}

    const QString& folder() const { return folder_; }
    // The path of the PDF for that content; empty when there is none.
    QString find(const QByteArray& contentHash) const;
    // Moves a PDF in and makes room for it; answers its path, empty when it cannot be written.
    QString keep(const QByteArray& contentHash, const QString& pdf) const;

private:
    QString pathOf(const QByteArray& contentHash) const;
    void makeRoom(const QString& newest) const;

    QString folder_;
    Limits limits_;
};

} // namespace qvnd::preview
