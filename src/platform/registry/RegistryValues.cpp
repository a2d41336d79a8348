#include "platform/registry/RegistryValues.h"

#include "platform/files/TextDecoding.h"

#include <QStringEncoder>
#include <QStringList>

namespace qvnd::registry {

namespace {

QByteArray utf16(const QString& text) {
    return QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::Stateless)
        .encode(text);
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
    const bool isText = value.type == ValueType::text || value.type == ValueType::expandableText;
    if (isText && ansi) {
        value.data = utf16(files::decodeGbk(value.data));
    }
    return value;
}

std::optional<Value> parseValue(const QString& text, bool ansi) {
    if (text.startsWith(u'"')) {
        qsizetype at = 0;
        const auto content = quoted(text, at);
        return content ? std::optional(Value{ValueType::text, utf16(*content + QChar(u'\0'))})
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

} // namespace qvnd::registry
