#pragma once

#include <QString>

namespace qvnd::registry {

// Values in a profile (ini) file: "[section]" lines with "key=value" lines below. Set the file and
// the section, then ask. Names are compared without case, the first section and the first key of
// a name count, and a line that begins with ";" is a remark. The file may be GBK, UTF-8 or UTF-16.
class W_R_InI_File {
public:
    QString ProfileFile;
    QString Section;

    // The value of `key` without the blanks around it and without one pair of quotes; `otherwise`
    // when there is none or it is empty. At most 199 bytes of the local code page (GBK) come
    // back, no character cut in two. Never throws.
    QString GetString(const QString& key, const QString& otherwise) const;

    // Writes "key=value" in the place of the key's line, else behind the section's lines, else in
    // a new section at the end. The file keeps its encoding and every other line, and is written
    // whole or not at all; a new one is UTF-8. False when it could not be read or written, or
    // when a text could not be read back from such a line (a line break in it, "=" in a key).
    bool WriString(const QString& key, const QString& value) const;
};

} // namespace qvnd::registry
