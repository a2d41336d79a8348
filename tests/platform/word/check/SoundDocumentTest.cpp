#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/check/DocumentCheck.h"

#include "platform/error/Utf8.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

TEST(DocumentCheck, SoundDocumentHasNoFinding) {
    for (const Finding& finding : checkDocument(test::SoundDocument().bytes())) {
        ADD_FAILURE() << finding.rule << ": " << toUtf8(finding.text);
    }
}

} // namespace
} // namespace qvnd::word
