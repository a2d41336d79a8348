#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/preview/DocumentPreview.h"

#include <QStringList>

#include <optional>

namespace qvnd::test {

// Writes down what it is to show; fails with `failure` when that is set.
class FakeDocumentPreview : public preview::DocumentPreview {
public:
    void show(const QString& path) override {
        if (failure) {
            throw RunTimeError(*failure);
        }
        shown << path;
    }
    void hide() override { ++hidden; }

    QStringList shown;
    int hidden = 0;
    std::optional<RunTimeError> failure;
};

} // namespace qvnd::test
