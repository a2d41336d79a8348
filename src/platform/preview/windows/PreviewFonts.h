#pragma once

#include <QStringList>

namespace qvnd::preview {

// The families of this desktop that serve for the fonts that a document names: the named ones
// where they are installed, else ones of the same kind (serif, sans serif), Chinese ones behind
// Western ones.
QStringList installedFamilies(const QStringList& named);

} // namespace qvnd::preview
