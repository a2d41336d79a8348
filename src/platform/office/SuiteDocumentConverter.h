#pragma once

#include "platform/office/OfficeSuite.h"
#include "platform/word/engine/DocumentConverter.h"

#include <utility>

namespace qvnd::office {

// Documents of other formats, as the office suite reads them.
class SuiteDocumentConverter : public word::DocumentConverter {
public:
    explicit SuiteDocumentConverter(OfficeSuite suite) : suite_(std::move(suite)) {}
    // By the suite of this desktop, with the profile that commands share: making one costs seconds.
    SuiteDocumentConverter();

    bool isAvailable() const override { return suite_.isInstalled(); }
    // Throws what OfficeSuite::convert() throws.
    word::Bytes converted(const std::filesystem::path& file) override;

private:
    OfficeSuite suite_;
};

} // namespace qvnd::office
