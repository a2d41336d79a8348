#include "platform/registry/RegistryValues.h"

#include "platform/files/TextDecoding.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>

namespace qvnd::registry {

namespace {

constexpr qsizetype bytesInLine = 25;

bool isText(const Value& value) {
    return value.type == ValueType::text || value.type == ValueType::expandableText;
}

QString decoded(const QByteArray& utf16) {
    return QStringDecoder(QStringConverter::Utf16LE, QStringConverter::Flag::Stateless)
        .decode(utf16);
}

// Reads a quoted text that starts at `at` and moves behind it; \" and \\ stand for " and \.
std::optional<QString> quoted(const QString& line, qsizetype& at) {
    if (at >= line.size() || line[at] != u'"') {
        return std::nullopt;
    }
    QString text;
    for (++at; at < line.size(); ++at) {
        if (line[at] == u'"') {
            ++at;
            return text;
        }
        if (line[at] == u'\\' && at + 1 < line.size()) {
            ++at;
        }
        text += line[at];
    }
    return std::nullopt;
}

std::optional<QByteArray> hexBytes(const QString& list) {
    QByteArray bytes;
    for (const QString& part : list.split(u',', Qt::SkipEmptyParts)) {
        bool valid = false;
        const uint byte = part.trimmed().toUInt(&valid, 16);
        if (!valid || byte > 0xFF) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::optional<Value> number(const QString& digits) {
    bool valid = false;
    const uint number = digits.toUInt(&valid, 16);
    if (!valid) {
        return std::nullopt;
    }
    QByteArray data;
    for (int shift = 0; shift < 32; shift += 8) {
        data += static_cast<char>(number >> shift);
    }
    return Value{ValueType::number, data};
}

// "hex:..." or "hex(2):...".
std::optional<Value> hex(const QString& text, bool ansi) {
    const qsizetype colon = text.indexOf(u':');
    const auto bytes = hexBytes(text.mid(colon + 1));
    if (colon < 0 || !bytes) {
        return std::nullopt;
    }
    Value value{ValueType::binary, *bytes};
    if (text.startsWith(QLatin1String("hex("), Qt::CaseInsensitive)) {
        value.type = static_cast<ValueType>(text.mid(4, colon - 5).toUInt(nullptr, 16));
    }
    if (isText(value) && ansi) {
        value.data = utf16Bytes(files::decodeGbk(value.data));
    }
    return value;
}

std::optional<Value> parseValue(const QString& text, bool ansi) {
    if (text.startsWith(u'"')) {
        qsizetype at = 0;
        const auto content = quoted(text, at);
        return content ? std::optional(Value{ValueType::text, utf16Bytes(*content + QChar(u'\0'))})
                       : std::nullopt;
    }
    if (text.startsWith(QLatin1String("dword:"), Qt::CaseInsensitive)) {
        return number(text.mid(6));
    }
    if (text.startsWith(QLatin1String("hex"), Qt::CaseInsensitive)) {
        return hex(text, ansi);
    }
    return std::nullopt;
}

QString escaped(QString text) {
    return text.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
}

// The text between quotes, if the value is one that quotes can hold without loss.
std::optional<QString> quotable(const Value& value) {
    QString text = decoded(value.data);
    if (value.type != ValueType::text || !text.endsWith(u'\0') || utf16Bytes(text) != value.data) {
        return std::nullopt;
    }
    text.chop(1);
    const bool breaks = text.contains(u'\0') || text.contains(u'\n') || text.contains(u'\r');
    return breaks ? std::nullopt : std::optional(text);
}

QStringList hexLines(const QString& start, const QByteArray& data) {
    QStringList lines = {start};
    for (qsizetype at = 0; at < data.size(); at += bytesInLine) {
        if (at > 0) {
            lines.back() += u'\\';
            lines << QStringLiteral("  ");
        }
        lines.back() += QString::fromLatin1(data.mid(at, bytesInLine).toHex(','));
        if (at + bytesInLine < data.size()) {
            lines.back() += u',';
        }
    }
    return lines;
}

QString hexStart(ValueType type) {
    return type == ValueType::binary
               ? QStringLiteral("hex:")
               : QStringLiteral("hex(%1):").arg(static_cast<std::uint32_t>(type), 0, 16);
}

} // namespace

std::optional<Assignment> parseAssignment(const QString& statement, bool ansi) {
    Assignment assignment;
    qsizetype at = 0;
    if (statement.startsWith(u'@')) {
        at = 1;
    } else if (const auto name = quoted(statement, at)) {
        assignment.name = *name;
    } else {
        return std::nullopt;
    }
    const QString rest = statement.mid(at).trimmed();
    if (!rest.startsWith(u'=')) {
        return std::nullopt;
    }
    const QString text = rest.mid(1).trimmed();
    if (text == QLatin1String("-")) {
        return assignment;
    }
    assignment.value = parseValue(text, ansi);
    return assignment.value ? std::optional(assignment) : std::nullopt;
}

QByteArray utf16Bytes(const QString& text) {
    return QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::Stateless)
        .encode(text);
}

QByteArray ansiBytes(const Value& value) {
    return isText(value) ? files::encodeGbk(decoded(value.data)) : value.data;
}

QString textOf(const Value& value) {
    return isText(value) ? decoded(value.data) : QString::fromLatin1(value.data);
}

QStringList formatAssignment(const QString& name, const Value& value, bool ansi) {
    const QString start =
        name.isEmpty() ? QStringLiteral("@=") : u'"' + escaped(name) + QLatin1String("\"=");
    if (const auto text = quotable(value)) {
        return {start + u'"' + escaped(*text) + u'"'};
    }
    if (value.type == ValueType::number && value.data.size() == 4) {
        QByteArray highestFirst = value.data;
        std::reverse_copy(value.data.begin(), value.data.end(), highestFirst.begin());
        return {start + QLatin1String("dword:") + QString::fromLatin1(highestFirst.toHex())};
    }
    return hexLines(start + hexStart(value.type), ansi ? ansiBytes(value) : value.data);
}

} // namespace qvnd::registry
