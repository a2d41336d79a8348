#include "startup/WordProcessor.h"

#include "support/Errors.h"
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

// A document with a heading and contents, as one that the office suite has converted may have.
void typeContents(word::Application& application) {
    word::Document& document = application.documents().Add();
    word::Selection& selection = application.Selection();
    selection.TypeParagraph();
    selection.TypeText(u"第一章");
    selection.setStyle(document.styles().Item(u"标题 1"));
    selection.TypeParagraph();
    document.tablesOfContents().Add(*document.Range(0, 0), {});
}

TEST(WordProcessors, AreAskedWhileTheyLayOutTheContentsOfADocument) {
    const test::TemporaryFolder folder;
    test::FakeMessageBoxes messages;
    int asked = 0;
    WordProcessor processor(messages, [&] {
        ++asked;
        return false;
    });
    const auto application = processor.factory().create();
    typeContents(*application);
    application->ActiveDocument().SaveAs(files::toPath(folder.path("说明.doc")));
    EXPECT_EQ(asked, 1) << "at its one page";
    EXPECT_TRUE(folder.exists("说明.doc"));
}

TEST(WordProcessors, ThatAreStoppedThenWriteNothing) {
    const test::TemporaryFolder folder;
    test::FakeMessageBoxes messages;
    WordProcessor processor(messages, [] { return true; });
    const auto application = processor.factory().create();
    typeContents(*application);
    EXPECT_EQ(test::errorNumberOf([&] {
                  application->ActiveDocument().SaveAs(files::toPath(folder.path("说明.doc")));
              }),
              error::invalidCall);
    EXPECT_FALSE(folder.exists("说明.doc"));
}

} // namespace
