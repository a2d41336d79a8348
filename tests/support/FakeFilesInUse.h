#pragma once

#include "platform/files/FilesInUse.h"

#include <QFileInfo>
#include <QStringList>

namespace qvnd::test {

// The documents of these names are open.
class FakeFilesInUse : public files::FilesInUse {
public:
    bool isDocumentOpen(const QString& path) override {
        return open.contains(QFileInfo(path).fileName());
    }
    bool isAnyOpenIn(const QString&) override { return !open.isEmpty(); }

    QStringList open;
};

} // namespace qvnd::test
