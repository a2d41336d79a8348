#include "platform/files/DocumentNames.h"

#include <QFileInfo>
#include <QStringList>

namespace qvnd::files {

bool isTextDocument(const QString& fileName) {
    static const QStringList extensions = {"doc", "dot", "docx", "docm", "rtf", "odt", "wps"};
    return extensions.contains(QFileInfo(fileName).suffix(), Qt::CaseInsensitive);
}

} // namespace qvnd::files
