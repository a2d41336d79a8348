#pragma once

#include <QString>

#include <ostream>

// gtest prints a QString in a failure message as its text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
