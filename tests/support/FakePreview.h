#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/preview/DocumentPreview.h"

#include <QStringList>

#include <optional>

namespace qvnd::test {

// Keeps what was shown, or fails as told.
class FakePreview : public preview::DocumentPreview {
public:
    void show(const QString& path) override {
        if (failure) {
            throw *failure;
        }
        shown << path;
        isUp = true;
    }
    void onLateFailure(const Failed& failed) override { lateFailure = failed; }
    void hide() override {
        ++hidden;
        isUp = false;
    }

    void setFollowing(bool follows) override { isFollowing = follows; }

    QStringList shown;
    int hidden = 0;
    bool isUp = false;
    bool isFollowing = true;
    std::optional<RunTimeError> failure;
    Failed lateFailure; // tells what turns out behind show()
};

} // namespace qvnd::test
