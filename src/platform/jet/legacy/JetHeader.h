#pragma once

#include <QString>

namespace qvnd::jet::legacy {

// The first page of a Jet or ACE file: the bytes 00 01 00 00, the engine's name, and at 0x14 the
// version, which fixes the size of every page (2,048 bytes in version 0, 4,096 later).

// True when the file begins with such a page, whether or not the rest is damaged.
bool beginsAsJet(const QString& path);

// True when the version is known and the file consists of whole pages.
bool hasSoundHeader(const QString& path);

} // namespace qvnd::jet::legacy
