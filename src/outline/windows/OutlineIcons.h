#pragma once

#include <QIcon>

namespace qvnd::outline {

// The icon of a node's image number (1 to 6, see OutlineNode.h); none for any other number.
QIcon outlineIcon(int image);

// The icon of a command, by the name of its file in share/icons/commands.
QIcon commandIcon(const QString& name);

} // namespace qvnd::outline
