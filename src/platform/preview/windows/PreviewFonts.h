#pragma once

#include <QStringList>

namespace qvnd::preview {

// The installed families to use for the fonts that a document names: the named ones if they are
// installed, else others of the same kind (serif, sans serif); Chinese families come after Western
// ones.
QStringList installedFamilies(const QStringList& named);

} // namespace qvnd::preview
