#include "startup/WordProcessor.h"

#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/LossyDocument.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

TEST(WordProcessors, WhatADocumentLosesWhenItIsInsertedIsTold) {
    const test::TemporaryFolder folder;
    test::writeWithHeader(folder.path("说明.doc"));
    test::FakeMessageBoxes messages;
    WordProcessor processor(messages);
    const auto application = processor.factory().create();
    application->documents().Add();
    application->Selection().InsertFile(files::toPath(folder.path("说明.doc")));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "说明.doc：" + test::lossOfHeader);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(messages.shown[0].title, "提示");
}

} // namespace
