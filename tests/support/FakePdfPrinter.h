#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/office/PdfPrinter.h"

#include <QStringList>

#include <optional>

namespace qvnd::test {

// Writes down what it is to print, source and target; fails with `failure` when that is set.
class FakePdfPrinter : public office::PdfPrinter {
public:
    bool isAvailable() const override { return isInstalled; }
    void print(const QString& document, const QString& pdf) override {
        printed << document << pdf;
        if (failure) {
            throw RunTimeError(*failure);
        }
    }

    bool isInstalled = true;
    QStringList printed;
    std::optional<RunTimeError> failure;
};

} // namespace qvnd::test
