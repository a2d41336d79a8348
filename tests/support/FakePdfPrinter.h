#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/office/PdfPrinter.h"

#include <QFile>
#include <QStringList>

#include <optional>

namespace qvnd::test {

// Writes down what it is to print, and `content` as the PDF; fails with `failure` when that is set.
class FakePdfPrinter : public office::PdfPrinter {
public:
    bool isAvailable() const override { return isInstalled; }
    void print(const QString& document, const QString& pdf) override {
        printed << document;
        if (failure) {
            throw RunTimeError(*failure);
        }
        QFile file(pdf);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            throw RunTimeError(error::pathAccess, u"测试不能写入 PDF。");
        }
    }

    bool isInstalled = true;
    QByteArray content = "%PDF-1.4";
    QStringList printed;
    std::optional<RunTimeError> failure;
};

} // namespace qvnd::test
