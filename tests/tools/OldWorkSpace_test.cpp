#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/FirstArrangementFile.h"
#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A program folder in which every database is one of the first arrangement: plans with names in
// full-width letters, like an old index, and with an empty table, and a template.
class OldWorkSpace : public Qvndctl {
protected:
    OldWorkSpace() {
        lay("odd_names", "Sys/用户模板/Db_UsTemplate.mdb");
        lay("odd_plan", "Sys/用户模板/ＢＩＭ工程/ＢＩＭ工程.mdb");
        lay("Db_Template", "Sys/Database/Db_Template.mdb");
        lay("template", "Sys/标书模板/滨江工程/滨江工程.mdb");
        lay("Db_BidSet", "Sys/Database/Db_BidSet.mdb");
        folder.makeFolder("home/Sys/用户模板/t6_0");
        folder.makeFolder("home/Sys/用户模板/空白工程");
        word::DocumentWriter().saveAs(
            files::toPath(folder.path("home/Sys/用户模板/ＢＩＭ工程/ＢＩＭ工程.1.1.doc")),
            word::normalTemplate());
    }

    void lay(const QString& name, const QString& file) const {
        EXPECT_TRUE(test::layFirstArrangement(name, folder.path("home/" + file)));
    }
    QString told(const QStringList& words) {
        expectDone(words);
        if (words.front() != "generate") { // which shows its progress there
            EXPECT_EQ(err, "") << words.join(' ').toStdString();
        }
        return out.trimmed();
    }
};

TEST_F(OldWorkSpace, ListsItsPlansAndTheirOutlines) {
    // An outline without rows has no root that could be listed.
    EXPECT_EQ(told({"plan", "list"}), "ＢＩＭ工程\nt6_0");
    const QString shown = told({"outline", "show", "ＢＩＭ工程"});
    for (const char* text : {"ＢＩＭ工程.1", "Ａ区", "说明", "ａ区"}) {
        EXPECT_TRUE(shown.contains(text)) << shown.toStdString();
    }
    EXPECT_EQ(told({"outline", "show", "ＢＩＭ工程", "--copy"}), shown);
    EXPECT_TRUE(told({"outline", "show", "t6_0"}).contains("节"));
    EXPECT_TRUE(told({"plan", "info", "ＢＩＭ工程"}).contains("滨江建设集团"));
}

TEST_F(OldWorkSpace, ShowsItsTemplates) {
    EXPECT_EQ(told({"template", "list"}), "滨江工程");
    const QString shown = told({"template", "show", "滨江工程"});
    for (const char* text : {"第一章", "第二章", "It's \"A\""}) {
        EXPECT_TRUE(shown.contains(text)) << shown.toStdString();
    }
}

TEST_F(OldWorkSpace, GeneratesItsPlans) {
    EXPECT_TRUE(
        told({"generate", "ＢＩＭ工程", "--pages", "estimate"}).contains("1 个文档全部放入"));
    const QString text = told({"doc", "text", folder.path("home/工程文档管理/施工方案.doc")});
    EXPECT_TRUE(text.contains("说明")) << text.toStdString();
    EXPECT_TRUE(text.contains("ａ区")) << text.toStdString();
}

TEST_F(OldWorkSpace, TakesNewNodesBehindTheOldOnes) {
    told({"outline", "add-folder", "ＢＩＭ工程", "ＢＩＭ工程.1", "新章", "--beside"});
    const QString shown = told({"outline", "show", "ＢＩＭ工程"});
    EXPECT_EQ(shown.split('\n').size(), 5) << shown.toStdString();
    EXPECT_TRUE(shown.contains("新章"));
}

} // namespace
