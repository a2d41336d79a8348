#pragma once

#include <QString>

// What the history calls commands on the finished document and its settings, whether they are run
// in a window or by the companion: the texts of their menu items.
namespace qvnd::generate::captions {

inline const QString settings = QStringLiteral("施工方案设置");
inline const QString contents = QStringLiteral("生成目录");
inline const QString generation = QStringLiteral("生成卷宗编制");

} // namespace qvnd::generate::captions
