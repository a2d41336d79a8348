#pragma once

#include "platform/files/FilesInUse.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace qvnd::test {

// The documents of these names are open.
class FakeFilesInUse : public files::FilesInUse {
public:
    bool isDocumentOpen(const QString& path) override {
        return open.contains(QFileInfo(path).fileName());
    }
    bool isAnyOpenIn(const QString& folder) override {
        return std::any_of(open.begin(), open.end(), [&](const QString& name) {
            return QFileInfo::exists(QDir(folder).filePath(name));
        });
    }

    QStringList open;
};

} // namespace qvnd::test
