#include "platform/preview/PageConversion.h"

#include "support/FakeOffice.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

using test::waitFor;

class PageConversionTest : public testing::Test {
protected:
    QString document(const QString& file, const QByteArray& content) {
        office.folder.write(file, content);
        return office.folder.path(file);
    }
    PageConversion::Answer keep() {
        return [this](const PageConversion::Outcome& outcome) { outcomes.push_back(outcome); };
    }
    // The outcome for one document.
    PageConversion::Outcome converted(PageConversion& conversion, const QString& path) {
        outcomes.clear();
        const auto wish = conversion.convert(path, keep());
        EXPECT_TRUE(outcomes.empty()) << "answered from within the call";
        EXPECT_TRUE(waitFor([&] { return !outcomes.empty(); }));
        return outcomes.empty() ? PageConversion::Outcome{} : outcomes.front();
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    test::FakeOffice office;
    std::vector<PageConversion::Outcome> outcomes;
};

TEST_F(PageConversionTest, ADocumentBecomesAPdf) {
    PageConversion conversion(office.settings());
    const auto outcome = converted(conversion, document("一 二.doc", "content"));
    EXPECT_EQ(read(outcome.pdf), "%PDF-1.4 of content");
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(office.leftovers(), QStringList());
}

TEST_F(PageConversionTest, TheSecondLookStartsNoSuiteWhateverTheFileIsCalled) {
    PageConversion first(office.settings());
    const auto drawn = converted(first, document("a.doc", "content"));
    PageConversion later(office.settings());
    const auto again = converted(later, document("b.doc", "content"));
    EXPECT_EQ(again.pdf, drawn.pdf);
    EXPECT_EQ(office.starts(), 1);
    converted(later, document("a.doc", "changed"));
    EXPECT_EQ(office.starts(), 2);
}

TEST_F(PageConversionTest, ASuiteThatFailsIsAnExplainedOutcome) {
    for (const char* script : {"exit 1\n", "exit 0\n", "kill -9 $$\n",
                               "mkdir -p \"$out\"; echo no pdf > \"$out/document.pdf\"\n"}) {
        office.setScript(script);
        PageConversion conversion(office.settings());
        const auto outcome = converted(conversion, document("a.doc", "content"));
        EXPECT_EQ(outcome.pdf, "") << script;
        EXPECT_EQ(outcome.failure, "办公套件无法转换这个文档。") << script;
    }
    EXPECT_EQ(office.leftovers(), QStringList());
}

TEST_F(PageConversionTest, ASuiteThatCannotBeStartedIsAnExplainedOutcome) {
    ConversionSettings settings = office.settings();
    settings.program = office.folder.path("missing");
    PageConversion conversion(settings);
    EXPECT_EQ(converted(conversion, document("a.doc", "content")).failure,
              "办公套件无法转换这个文档。");
}

TEST_F(PageConversionTest, AMissingDocumentIsAnExplainedOutcome) {
    PageConversion conversion(office.settings());
    const QString path = office.folder.path("missing.doc");
    EXPECT_EQ(converted(conversion, path).failure, "无法读取文件“" + path + "”。");
    EXPECT_EQ(office.starts(), 0);
}

// A suite that starts another program, writes down its number, and hangs.
QByteArray hanging(const test::FakeOffice& office) {
    return "sleep 600 & echo $! > '" + office.folder.path("child").toUtf8() + "'\nwait\n";
}

bool isAlive(const QByteArray& process) {
    QFile state("/proc/" + process.trimmed() + "/stat");
    return state.open(QIODevice::ReadOnly) && !state.readAll().contains(") Z ");
}

TEST_F(PageConversionTest, ASuiteThatHangsIsEndedWithAllThatItStarted) {
    office.setScript(hanging(office));
    ConversionSettings settings = office.settings();
    settings.patience = std::chrono::milliseconds(1500);
    PageConversion conversion(settings);
    EXPECT_EQ(converted(conversion, document("a.doc", "content")).failure,
              "办公套件长时间没有响应，已结束。");
    const QByteArray child = office.folder.read("child");
    ASSERT_FALSE(child.isEmpty());
    EXPECT_TRUE(waitFor([&] { return !isAlive(child); }));
}

TEST_F(PageConversionTest, WhatIsNoLongerWantedIsEndedAndNotAnswered) {
    office.setScript(hanging(office));
    PageConversion conversion(office.settings());
    auto wish = conversion.convert(document("a.doc", "content"), keep());
    ASSERT_TRUE(waitFor([&] { return office.folder.read("child").endsWith('\n'); }));
    wish.reset();
    EXPECT_TRUE(waitFor([&] { return !isAlive(office.folder.read("child")); }));
    office.setScript(test::FakeOffice::makePdf());
    EXPECT_NE(converted(conversion, document("b.doc", "other")).pdf, "");
    EXPECT_EQ(outcomes.size(), 1U);
}

TEST_F(PageConversionTest, WhoeverOnlyPassesByStartsNoSuite) {
    ConversionSettings settings = office.settings();
    settings.settling = std::chrono::milliseconds(300);
    PageConversion conversion(settings);
    for (int i = 0; i < 5; ++i) {
        const auto wish =
            conversion.convert(document("a.doc", "content " + QByteArray::number(i)), keep());
        waitFor([] { return false; }, 20);
    }
    EXPECT_NE(converted(conversion, document("z.doc", "last")).pdf, "");
    EXPECT_EQ(office.starts(), 1);
}

TEST_F(PageConversionTest, DocumentsWantedTogetherComeOneAfterTheOther) {
    PageConversion conversion(office.settings());
    const auto first = conversion.convert(document("a.doc", "A"), keep());
    const auto second = conversion.convert(document("b.doc", "B"), keep());
    ASSERT_TRUE(waitFor([&] { return outcomes.size() == 2; }));
    EXPECT_EQ(read(outcomes[0].pdf), "%PDF-1.4 of A");
    EXPECT_EQ(read(outcomes[1].pdf), "%PDF-1.4 of B");
}

TEST_F(PageConversionTest, TheEndOfTheConversionEndsTheSuite) {
    office.setScript(hanging(office));
    auto conversion = std::make_unique<PageConversion>(office.settings());
    const auto wish = conversion->convert(document("a.doc", "content"), keep());
    ASSERT_TRUE(waitFor([&] { return office.folder.read("child").endsWith('\n'); }));
    conversion.reset();
    EXPECT_TRUE(waitFor([&] { return !isAlive(office.folder.read("child")); }));
    EXPECT_TRUE(outcomes.empty());
}

TEST_F(PageConversionTest, TheCacheStaysWithinItsLimits) {
    ConversionSettings settings = office.settings();
    settings.cache.files = 3;
    PageConversion conversion(settings);
    for (int i = 0; i < 6; ++i) {
        const auto outcome =
            converted(conversion, document("a.doc", "content " + QByteArray::number(i)));
        EXPECT_TRUE(QFile::exists(outcome.pdf));
    }
    EXPECT_EQ(QDir(settings.cacheFolder).entryList(QDir::Files).size(), 3);
    settings.cache.bytes = 30;
    PageConversion narrow(settings);
    EXPECT_TRUE(QFile::exists(converted(narrow, document("a.doc", "one more content")).pdf));
    EXPECT_EQ(QDir(settings.cacheFolder).entryList(QDir::Files).size(), 1);
}

TEST_F(PageConversionTest, AFolderThatRefusesIsAnExplainedOutcome) {
    office.folder.write("cache", "a file where the folder should be");
    PageConversion conversion(office.settings());
    EXPECT_EQ(converted(conversion, document("a.doc", "content")).failure,
              "无法写入缓存文件夹“" + office.folder.path("cache") + "”。");
}

} // namespace
} // namespace qvnd::preview
