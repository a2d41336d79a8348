#pragma once

#include <QString>

// Files in folders below "sys" of the program folder. `gAppPath` ends in a separator.
namespace qvnd::store {

QString programFile(const QString& gAppPath, const QString& folder, const QString& name);

// A picture of the cover, by the name that 图片 keeps.
QString pictureFile(const QString& gAppPath, const QString& name);

// The folder of the custom pages, without a separator at its end, and the document of the page
// that 路径 names.
QString customPageFolder(const QString& gAppPath);
QString customPageFile(const QString& gAppPath, const QString& name);

} // namespace qvnd::store
