#pragma once

#include <QString>

namespace qvnd::preview {

// Drawn documents in a folder, by the content that they were drawn from. The ones least lately
// asked for go when there are too many.
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
    // Moves a PDF in and makes room for it; answers its path, empty when the folder refuses it.
    QString keep(const QByteArray& contentHash, const QString& pdf) const;

private:
    QString pathOf(const QByteArray& contentHash) const;
    void makeRoom(const QString& newest) const;

    QString folder_;
    Limits limits_;
};

} // namespace qvnd::preview
