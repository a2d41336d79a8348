#pragma once

#include <QString>
#include <QStringEncoder>

#include <ostream>

// gtest prints a QString in a failure message as its text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace qvnd::test {

// The bytes of a UTF-16 file with its mark.
inline QByteArray utf16(const QString& text) {
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    return encoder.encode(text);
}

} // namespace qvnd::test
