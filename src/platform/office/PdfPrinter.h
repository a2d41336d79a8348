#pragma once

#include "platform/office/OfficeSuite.h"

#include <QString>

#include <utility>

namespace qvnd::office {

// Makes a PDF of a document.
class PdfPrinter {
public:
    virtual ~PdfPrinter() = default;

    // False where nothing is installed that could.
    virtual bool isAvailable() const = 0;
    // Draws `document` into `pdf`, with a bookmark for each heading, and replaces that file whole.
    // Throws what OfficeSuite::convert() throws.
    virtual void print(const QString& document, const QString& pdf) = 0;
};

// By the office suite.
class SuitePdfPrinter : public PdfPrinter {
public:
    explicit SuitePdfPrinter(OfficeSuite suite) : suite_(std::move(suite)) {}

    bool isAvailable() const override { return suite_.isInstalled(); }
    void print(const QString& document, const QString& pdf) override;

private:
    OfficeSuite suite_;
};

} // namespace qvnd::office
