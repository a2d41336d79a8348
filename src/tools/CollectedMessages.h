#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <QStringList>

namespace qvnd::tools {

// Passes message boxes on and keeps their texts.
class CollectedMessages : public desktop::MessageBoxes {
public:
    explicit CollectedMessages(desktop::MessageBoxes& messages) : messages_(messages) {}

    desktop::Answer show(const desktop::Message& message) override {
        texts_ << message.text;
        return messages_.show(message);
    }
    bool askForRetry(const QString& text, desktop::Icon icon, const QString& title) override {
        texts_ << text;
        return messages_.askForRetry(text, icon, title);
    }

    const QStringList& texts() const { return texts_; }

private:
    desktop::MessageBoxes& messages_;
    QStringList texts_;
};

} // namespace qvnd::tools
