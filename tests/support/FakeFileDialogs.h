#pragma once

#include "platform/desktop/FileDialogs.h"
#include "platform/error/RunTimeError.h"

#include <QFileInfo>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace qvnd::test {

// Answers with `chosen`, where several may be chosen with `several` behind it; without one the user
// cancels.
class FakeFileDialogs : public desktop::FileDialogs {
public:
    desktop::ChosenFile open(const desktop::OpenFileQuestion& question) override {
        asked.push_back(question);
        if (const auto act = whileOpen) {
            act();
        }
        if (!chosen) {
            throw RunTimeError(error::dialogCancelled, u"选定“取消”。");
        }
        return {*chosen, QFileInfo(*chosen).fileName()};
    }

    std::vector<desktop::ChosenFile>
    openSeveral(const desktop::OpenFileQuestion& question) override {
        std::vector<desktop::ChosenFile> files{open(question)};
        for (const QString& file : several) {
            files.push_back({file, QFileInfo(file).fileName()});
        }
        return files;
    }

    // What happens while the dialog is open.
    std::function<void()> whileOpen;
    std::optional<QString> chosen;
    QStringList several;
    std::vector<desktop::OpenFileQuestion> asked;
};

} // namespace qvnd::test
