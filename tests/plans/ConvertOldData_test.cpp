#include "plans/ConvertOldData.h"

#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "support/FakeLegacyReader.h"
#include "support/FakeMessageBoxes.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::plans;

namespace {

class AnsweredInput : public desktop::InputBoxes {
public:
    explicit AnsweredInput(QString answer) : answer_(std::move(answer)) {}
    QString ask(const desktop::InputQuestion& question) override {
        asked.push_back(question);
        return answer_;
    }
    std::vector<desktop::InputQuestion> asked;

private:
    QString answer_;
};

// Records what stands in it at each call.
class RecordingDialog : public ConversionDialog {
public:
    void FillListBox(const QString& path) override { calls << "fill " + path + shown(); }
    void Show() override { calls << "show" + shown(); }
    QStringList calls;

private:
    QString shown() const {
        return QString(" %1|%2|%3|%4").arg(QString::number(bType), sPath, Text1, Text2);
    }
};

struct Conversion : testing::Test {
    test::TemporaryFolder folder;
    modMain state;
    RecordingDialog dialog;

    Conversion() {
        state.AppPath = folder.path();
        state.gUserTplPath = folder.root() + "用户模板" + files::separator();
    }
    QStringList answered(const QString& answer) {
        AnsweredInput input(answer);
        convertOldData(state, input, dialog);
        return dialog.calls;
    }
    QString path(const QStringList& names) const {
        return folder.root() + names.join(files::separator());
    }
};

TEST_F(Conversion, TheQuestionHasItsPromptTitleAndProposal) {
    AnsweredInput input("");
    convertOldData(state, input, dialog);
    ASSERT_EQ(input.asked.size(), 1U);
    EXPECT_EQ(input.asked[0].prompt, "请选择要转换的类型:\n\n  1:  转换用户标书\n\n"
                                     "  2:  转换标书模板\n\n请输入1-2:");
    EXPECT_EQ(input.asked[0].title, "转换标书");
    EXPECT_EQ(input.asked[0].proposal, "1");
}

TEST_F(Conversion, TheNoticeOfItsRiskHasTwoParagraphs) {
    EXPECT_EQ(conversionNotice(),
              QStringList({"如果你还不知道此项的具体功能请先看帮助。",
                           "因为意外的操作可能造成 2.2.1 "
                           "版本以前生成的标书或模板不能在主界面窗口中显示出来！"}));
}

TEST_F(Conversion, AnEmptyAnswerOrAnyOtherEndsTheCommand) {
    for (const char* answer : {"", "0", "3", "12", "一"}) {
        EXPECT_TRUE(answered(answer).isEmpty()) << answer;
    }
    EXPECT_EQ(dialog.bType, 0);
}

TEST_F(Conversion, OneHandsTheUsersPlansToTheDialog) {
    const QString plans = path({"用户模板", ""});
    EXPECT_EQ(answered("1"),
              QStringList({"fill " + plans + " 1|" + plans + "||" + plans,
                           "show 1|" + plans + "|" + plans + "Db_UsTemplate.mdb|" + plans}));
}

TEST_F(Conversion, TwoHandsTheTemplatesToTheDialog) {
    const QString templates = path({"Sys", "标书模板", ""});
    EXPECT_EQ(answered("2"),
              QStringList({"fill " + templates + " 2|" + templates + "||" + templates,
                           "show 2|" + templates + "|" +
                               path({"Sys", "Database", "Db_Template.mdb"}) + "|" + templates}));
}

// The dialog's own work, on folders whose Jet files are made up.
struct Converting : Conversion {
    std::map<QString, test::FakeLegacyReader::Tables> files;
    test::FakeMessageBoxes messages;
    std::vector<int> updated;
    LegacyConversion conversion{state, messages, [this](int type) { updated.push_back(type); }};

    Converting() {
        state.gWs = &state.DBEngine.Workspaces(0);
        state.gFso = std::make_unique<files::DiskFileSystem>();
        state.gLegacyReader = std::make_unique<test::FakeLegacyReader>(files);
    }
    void lay(const QString& parent, const QString& name, const QByteArray& bytes) {
        folder.write(parent + "/" + name + "/" + name + ".mdb", bytes);
    }
    void layOld(const QString& parent, const QString& name) {
        files[name] = {test::FakeLegacyReader::table(name, {"名称", "Key"},
                                                     {{jet::Value(name), jet::Value(name)}})};
        lay(parent, name, "JET:" + name.toUtf8());
    }
};

TEST_F(Converting, TheListShowsTheFoldersWithAJetFileOfTheirName) {
    layOld("用户模板", "旧");
    lay("用户模板", "坏", "JET damaged");
    lay("用户模板", "新", "SQLite format 3");
    folder.makeFolder("用户模板/空");
    conversion.FillListBox(state.gUserTplPath);
    conversion.ListBox.sort();
    QStringList expected = {"坏", "旧"};
    expected.sort();
    EXPECT_EQ(conversion.ListBox, expected);
    conversion.FillListBox(folder.path("none"));
    EXPECT_TRUE(conversion.ListBox.isEmpty());
}

TEST_F(Converting, ShowingConvertsTheListAndUpdatesThatLibrary) {
    layOld("Sys/标书模板", "旧");
    lay("Sys/标书模板", "坏", "JET damaged");
    AnsweredInput input("2");
    convertOldData(state, input, conversion);
    EXPECT_EQ(updated, std::vector<int>{2});
    EXPECT_TRUE(folder.read("Sys/标书模板/旧/旧.mdb").startsWith("SQLite format 3"));
    EXPECT_EQ(folder.read("Sys/标书模板/旧/旧.mdb.jet"), "JET:旧");
    EXPECT_EQ(folder.read("Sys/标书模板/坏/坏.mdb"), "JET damaged");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.contains("坏.mdb"));
}

TEST_F(Converting, WithNothingConvertedNothingIsUpdated) {
    AnsweredInput input("1");
    convertOldData(state, input, conversion);
    EXPECT_TRUE(updated.empty());
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
