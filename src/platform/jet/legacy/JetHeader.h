#pragma once

#include <QString>

namespace qvnd::jet::legacy {

// The first page of a Jet or ACE file: the bytes 00 01 00 00, the engine's name, and at 0x14 the
// version, which fixes the size of every page (2,048 bytes in version 0, 4,096 later).

// Does the file begin as one of these, be it damaged behind its beginning?
bool beginsAsJet(const QString& path);

// Is the header one that can be read, and is the file made of whole pages?
bool hasSoundHeader(const QString& path);

} // namespace qvnd::jet::legacy
