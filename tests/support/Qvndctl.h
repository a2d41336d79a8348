#pragma once

#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/Files.h"
#include "support/Text.h"
#include "tools/Run.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sstream>

namespace qvnd::tools {

// qvndctl on the program folder "home" of its own; each command is a run from Main to the orderly
// exit.
class Qvndctl : public testing::Test {
protected:
    ExitStatus qvndctl(const QStringList& words) {
        std::ostringstream standardOut;
        std::ostringstream standardError;
        const ExitStatus status =
            run(QStringList{"--home", folder.path("home")} + words, standardOut, standardError);
        out = QString::fromStdString(standardOut.str());
        err = QString::fromStdString(standardError.str());
        return status;
    }
    void expectDone(const QStringList& words) {
        EXPECT_EQ(qvndctl(words), ExitStatus::done)
            << words.join(' ').toStdString() << ": " << err.toStdString();
    }
    // Done, with nothing on standard error.
    void expectDoneInSilence(const QStringList& words) {
        expectDone(words);
        EXPECT_EQ(err, "") << words.join(' ').toStdString();
    }
    // A document of our own engine without text.
    void writeDocument(const QString& name) {
        folder.write(name, {});
        word::DocumentWriter().saveAs(files::toPath(folder.path(name)), word::normalTemplate());
    }
    // What the last command has printed, as JSON.
    QJsonValue json() const {
        return QJsonDocument::fromJson(("[" + out + "]").toUtf8()).array().at(0);
    }
    // What the command prints.
    QJsonValue json(const QStringList& words) {
        expectDoneInSilence(QStringList{"--json"} + words);
        return json();
    }

    test::TemporaryFolder folder;
    QString out; // of the last command
    QString err;
};

} // namespace qvnd::tools
