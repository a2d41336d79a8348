#pragma once

#include "platform/desktop/Shell.h"
#include "platform/error/RunTimeError.h"

#include <QStringList>

namespace qvnd::test {

// Writes down what it is to start; with `isBroken` nothing can be started.
class FakeShell : public desktop::Shell {
public:
    void run(const QString& program) override { start(started, program); }
    void open(const QString& file) override { start(opened, file); }
    void openAsTemplate(const QString& file) override { start(basedOn, file); }

    QStringList started;
    QStringList opened;
    QStringList basedOn;
    bool isBroken = false;

private:
    void start(QStringList& list, const QString& path) const {
        if (isBroken) {
            throw RunTimeError(error::fileNotFound, u"找不到文件");
        }
        list << path;
    }
};

} // namespace qvnd::test
