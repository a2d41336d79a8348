#include "platform/files/TextLines.h"

#include "platform/files/TextDecoding.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace qvnd::files {

namespace {

constexpr auto stateless = QStringConverter::Flag::Stateless;
const QByteArray utf8Mark = "\xEF\xBB\xBF";
const QByteArray littleEndianMark = "\xFF\xFE";
const QByteArray bigEndianMark = "\xFE\xFF";

bool isUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringConverter::Utf8, stateless);
    // Decoding is what finds the error.
    const QString text = decoder.decode(bytes);
    return !decoder.hasError() && text.size() <= bytes.size();
}

TextEncoding encodingOf(const QByteArray& bytes, QByteArray& mark) {
    if (bytes.startsWith(littleEndianMark)) {
        mark = littleEndianMark;
        return TextEncoding::utf16LittleEndian;
    }
    if (bytes.startsWith(bigEndianMark)) {
        mark = bigEndianMark;
        return TextEncoding::utf16BigEndian;
    }
    if (bytes.startsWith(utf8Mark)) {
        mark = utf8Mark;
        return TextEncoding::utf8;
    }
    return isUtf8(bytes) ? TextEncoding::utf8 : TextEncoding::gbk;
}

bool isWide(TextEncoding encoding) {
    return encoding == TextEncoding::utf16LittleEndian || encoding == TextEncoding::utf16BigEndian;
}

QStringConverter::Encoding unicode(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::utf16LittleEndian:
        return QStringConverter::Utf16LE;
    case TextEncoding::utf16BigEndian:
        return QStringConverter::Utf16BE;
    default:
        return QStringConverter::Utf8;
    }
}

// Behind the next line feed from `from` on. No other character has a line feed's byte in it, but
// in UTF-16 it must be a unit of its own.
qsizetype endOfLine(const QByteArray& bytes, qsizetype from, TextEncoding encoding) {
    if (!isWide(encoding)) {
        const qsizetype feed = bytes.indexOf('\n', from);
        return feed < 0 ? bytes.size() : feed + 1;
    }
    const int low = encoding == TextEncoding::utf16LittleEndian ? 0 : 1;
    for (qsizetype at = from; at + 1 < bytes.size(); at += 2) {
        if (bytes[at + low] == '\n' && bytes[at + 1 - low] == '\0') {
            return at + 2;
        }
    }
    return bytes.size();
}

} // namespace

TextLines::TextLines(TextEncoding encoding) : encoding_(encoding) {
    if (isWide(encoding)) {
        mark_ = encoding == TextEncoding::utf16LittleEndian ? littleEndianMark : bigEndianMark;
    }
}

TextLines TextLines::of(const QByteArray& bytes) {
    TextLines lines;
    lines.encoding_ = encodingOf(bytes, lines.mark_);
    lines.split(bytes);
    return lines;
}

void TextLines::split(const QByteArray& bytes) {
    for (qsizetype at = mark_.size(); at < bytes.size();) {
        const qsizetype end = endOfLine(bytes, at, encoding_);
        Line line{{}, bytes.mid(at, end - at)};
        line.text = decoded(line.bytes);
        if (line.text.endsWith(u'\n')) {
            line.text.chop(1);
            const bool pair = line.text.endsWith(u'\r');
            line.text.chop(pair ? 1 : 0);
            if (lines_.empty()) {
                lineEnd_ = pair ? QStringLiteral("\r\n") : QStringLiteral("\n");
            }
        }
        lines_.push_back(std::move(line));
        at = end;
    }
}

QString TextLines::decoded(const QByteArray& bytes) const {
    return encoding_ == TextEncoding::gbk
               ? decodeGbk(bytes)
               : QString(QStringDecoder(unicode(encoding_), stateless).decode(bytes));
}

QByteArray TextLines::encoded(const QString& text) const {
    return encoding_ == TextEncoding::gbk
               ? encodeGbk(text)
               : QByteArray(QStringEncoder(unicode(encoding_), stateless).encode(text));
}

QStringList TextLines::texts() const {
    QStringList texts;
    for (const Line& line : lines_) {
        texts << line.text;
    }
    return texts;
}

void TextLines::closeLastLine() {
    // Half a unit at the end of a cut file must not shift what follows.
    if (!lines_.empty() && isWide(encoding_) && lines_.back().bytes.size() % 2 != 0) {
        lines_.back().bytes += '\0';
    }
    if (!lines_.empty() && !decoded(lines_.back().bytes).endsWith(u'\n')) {
        lines_.back().bytes += encoded(lineEnd_);
    }
}

void TextLines::replace(qsizetype first, qsizetype count, const QStringList& texts) {
    if (!texts.isEmpty() && first + count == this->count()) {
        closeLastLine();
    }
    const auto at = lines_.erase(lines_.begin() + first, lines_.begin() + first + count);
    std::vector<Line> added;
    for (const QString& text : texts) {
        added.push_back({text, encoded(text + lineEnd_)});
    }
    lines_.insert(at, added.begin(), added.end());
}

QByteArray TextLines::bytes() const {
    QByteArray bytes = mark_;
    for (const Line& line : lines_) {
        bytes += line.bytes;
    }
    return bytes;
}

} // namespace qvnd::files
