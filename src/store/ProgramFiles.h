#pragma once

#include <QString>
#include <QStringView>

// Files in folders below "sys" of the program folder. `gAppPath` ends in a separator. Names come
// from databases that others may have written: a name that is no plain one
// (platform/files/PlainName.h) raises error 76, so that no path leads out of its folder.
namespace qvnd::store {

namespace folder {
inline constexpr QStringView templates = u"标书模板";
inline constexpr QStringView pictures = u"图片库";
inline constexpr QStringView customPages = u"自定义";
inline constexpr QStringView cabinet = u"文档柜"; // a program of its own
} // namespace folder

QString programFile(const QString& gAppPath, QStringView folder, const QString& name);

// A picture of the cover, by the name that 图片 keeps.
QString pictureFile(const QString& gAppPath, const QString& name);

// The folder of the custom pages, without a separator at its end, and the document of the page
// that 路径 names.
QString customPageFolder(const QString& gAppPath);
QString customPageFile(const QString& gAppPath, const QString& name);

// The document that generation makes in the work folder; `gWorkPath` ends in a separator.
QString finishedDocument(const QString& gWorkPath);

} // namespace qvnd::store
