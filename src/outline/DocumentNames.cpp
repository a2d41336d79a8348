#include "outline/AddDocument.h"
#include "platform/files/Trim.h"

#include <QStringList>

#include <algorithm>

namespace qvnd::outline {

namespace {

// Part 0 joined with the parts 1 to upperBound - leftOut.
QString joined(const QString& title, qsizetype leftOut) {
    const QStringList parts = title.split(u'.');
    const qsizetype upperBound = parts.size() - 1;
    return parts.mid(0, std::max<qsizetype>(1, upperBound - leftOut + 1)).join(u'.');
}

} // namespace

QString storedName(const QString& fileTitle) { return joined(files::Trim(fileTitle), 1); }

QString comparedName(const QString& fileTitle) { return joined(fileTitle, 2); }

} // namespace qvnd::outline
