#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace qvnd::files {

enum class TextEncoding { utf8, utf16LittleEndian, utf16BigEndian, gbk };

// A text file taken apart into its lines, for changing some of them and leaving all others byte
// for byte as they came, malformed bytes included. The encoding is found as by decodeText; a
// byte-order mark is kept and belongs to no line. What is put in takes the file's own encoding
// and line ends (CR LF in a file without any).
class TextLines {
public:
    // An empty file, to be written in `encoding`, UTF-16 with its mark.
    explicit TextLines(TextEncoding encoding = TextEncoding::utf8);
    static TextLines of(const QByteArray& bytes);

    TextEncoding encoding() const { return encoding_; }
    qsizetype count() const { return static_cast<qsizetype>(lines_.size()); }
    // Without its line end. The index is within the count.
    const QString& at(qsizetype index) const {
        return lines_[static_cast<std::size_t>(index)].text;
    }
    QStringList texts() const;

    // Puts `texts` in the place of `count` lines from `first` on, which are within the count. A
    // last line that had no line end gets one when lines follow it.
    void replace(qsizetype first, qsizetype count, const QStringList& texts);

    // The whole file.
    QByteArray bytes() const;

private:
    struct Line {
        QString text;
        QByteArray bytes; // with the line end
    };

    void split(const QByteArray& bytes);
    QString decoded(const QByteArray& bytes) const;
    QByteArray encoded(const QString& text) const;
    void closeLastLine();

    TextEncoding encoding_;
    QByteArray mark_;
    QString lineEnd_ = QStringLiteral("\r\n");
    std::vector<Line> lines_;
};

} // namespace qvnd::files
