#pragma once

#include <QString>

namespace qvnd::files {

// Whether the file's extension, in any case, is that of a word processor's document: .doc, .dot,
// .docx, .docm, .rtf, .odt, .wps.
bool isTextDocument(const QString& fileName);

} // namespace qvnd::files
