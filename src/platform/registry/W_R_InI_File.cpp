#include "platform/registry/W_R_InI_File.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/files/TextDecoding.h"
#include "platform/files/TextLines.h"

#include <QFile>

#include <optional>

namespace qvnd::registry {

namespace {

constexpr qsizetype longestValue = 199; // bytes of the local code page

bool sameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// The section that a line opens.
std::optional<QString> sectionOf(const QString& line) {
    const QString text = line.trimmed();
    const qsizetype end = text.lastIndexOf(u']');
    return text.startsWith(u'[') && end > 0 ? std::optional(text.mid(1, end - 1)) : std::nullopt;
}

// The key that a line gives a value to.
std::optional<QString> keyOf(const QString& line) {
    const qsizetype cut = line.indexOf(u'=');
    const QString key = line.left(cut).trimmed();
    return cut < 0 || key.startsWith(u';') ? std::nullopt : std::optional(key);
}

// Where a key stands, or would stand.
struct Place {
    qsizetype section = -1; // the section's line, or -1
    qsizetype key = -1;     // the key's line, or -1
    qsizetype end = 0;      // behind the section's last line that is not blank
};

Place find(const files::TextLines& lines, const QString& section, const QString& key) {
    Place place;
    for (qsizetype i = 0; i < lines.count(); ++i) {
        const QString& line = lines.at(i);
        if (const auto opened = sectionOf(line)) {
            if (place.section >= 0) {
                break;
            }
            place.section = sameName(*opened, section) ? i : -1;
            place.end = i + 1;
            continue;
        }
        if (place.section < 0 || line.trimmed().isEmpty()) {
            continue;
        }
        place.end = i + 1;
        const auto named = keyOf(line);
        if (named && sameName(*named, key)) {
            place.key = i;
            break;
        }
    }
    return place;
}

QString valueIn(const QString& line) {
    const QString value = line.mid(line.indexOf(u'=') + 1).trimmed();
    const QChar first = value.isEmpty() ? QChar() : value.front();
    const bool quoted =
        value.size() >= 2 && (first == u'"' || first == u'\'') && value.back() == first;
    return quoted ? value.mid(1, value.size() - 2) : value;
}

// As many characters from the start as `room` bytes hold.
QString firstBytes(const QString& text, qsizetype room) {
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype units =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate() ? 2
                                                                                                : 1;
        room -= files::encodeGbk(text.mid(at, units)).size();
        if (room < 0) {
            break;
        }
        at += units;
    }
    return text.left(at);
}

bool oneLine(const QString& text) {
    return !text.contains(u'\n') && !text.contains(u'\r') && !text.contains(u'\0');
}

bool isKey(const QString& key) {
    return oneLine(key) && !key.trimmed().isEmpty() && keyOf(key + u'=') == key.trimmed() &&
           !sectionOf(key + u'=');
}

// Nothing when there is a file that cannot be read.
std::optional<files::TextLines> linesOf(const QString& path) {
    QFile file(files::resolved(path));
    if (!file.exists()) {
        return files::TextLines();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(files::TextLines::of(bytes))
                                                : std::nullopt;
}

} // namespace

QString W_R_InI_File::GetString(const QString& key, const QString& otherwise) const {
    const auto lines = linesOf(ProfileFile);
    if (!lines) {
        return otherwise;
    }
    const Place place = find(*lines, Section, key.trimmed());
    const QString value =
        place.key < 0 ? QString() : firstBytes(valueIn(lines->at(place.key)), longestValue);
    return value.isEmpty() ? otherwise : value;
}

bool W_R_InI_File::WriString(const QString& key, const QString& value) const {
    auto lines = linesOf(ProfileFile);
    if (!lines || !isKey(key) || !oneLine(Section) || !oneLine(value)) {
        return false;
    }
    const Place place = find(*lines, Section, key.trimmed());
    const QString line = key + u'=' + value;
    if (place.key >= 0) {
        lines->replace(place.key, 1, {line});
    } else if (place.section >= 0) {
        lines->replace(place.end, 0, {line});
    } else {
        lines->replace(lines->count(), 0, {u'[' + Section + u']', line});
    }
    try {
        files::writeWhole(ProfileFile, lines->bytes());
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

} // namespace qvnd::registry
