#pragma once

#include <QByteArray>
#include <QString>

namespace qvnd::files {

// However these end (full disk, killed process), the target is wholly its earlier state or
// wholly the new one: the bytes go to a file beside it that takes its place at the end.
// Errors as in FileSystemObject.

void writeWhole(const QString& path, const QByteArray& bytes);
// The source stays as it is; copying a file onto itself changes nothing.
void copyWhole(const QString& source, const QString& target);
// The same for names that are already spelt as on disk; saves looking through their folders.
void copyAsSpelt(const QString& source, const QString& target);

// Whether both files are there and hold the same. Names are taken as they are spelt.
bool haveSameBytes(const QString& one, const QString& other);

} // namespace qvnd::files
