#pragma once

#include <QString>

namespace qvnd {
struct modMain;
}

namespace qvnd::outline {

// The folder of a plan: gUserTplPath + plan. Error 76 for a name that would lead to any place but
// a folder straight in gUserTplPath, as "..", "a/b" or blanks alone; a root's text may be anything.
QString planFolder(const modMain& state, const QString& plan);

} // namespace qvnd::outline
