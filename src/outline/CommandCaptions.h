#pragma once

#include <QString>

// What the history calls commands on outlines, whether they are run in a window or by the
// companion: the texts of their menu items where they have one of their own.
namespace qvnd::outline::captions {

inline const QString folderBeside = QStringLiteral("添加同级文件夹");
inline const QString folderBelow = QStringLiteral("添加下级文件夹");
inline const QString documentBeside = QStringLiteral("添加同级文档");
inline const QString documentBelow = QStringLiteral("添加下级文档");
inline const QString renaming = QStringLiteral("重命名");
inline const QString deletion = QStringLiteral("删除");
inline const QString drop = QStringLiteral("拖放");
inline const QString planOpening = QStringLiteral("打开方案");
inline const QString templateStoring = QStringLiteral("存入方案模板");
inline const QString templateDeletion = QStringLiteral("删除模板");

} // namespace qvnd::outline::captions
