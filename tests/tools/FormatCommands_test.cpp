#include "tools/Run.h"

#include "support/Text.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <sstream>

using namespace Qt::StringLiterals;

namespace qvnd::tools {
namespace {

class FormatCommands : public testing::Test {
protected:
    ExitStatus call(const QStringList& words) {
        std::ostringstream out;
        std::ostringstream err;
        const ExitStatus status =
            run(QStringList{u"--home"_s, home.filePath(u"程序"_s), u"--json"_s} + words, out, err);
        result = QJsonDocument::fromJson(QByteArray::fromStdString(out.str()));
        said = QString::fromStdString(err.str());
        return status;
    }

    QTemporaryDir home;
    QJsonDocument result;
    QString said;
};

TEST_F(FormatCommands, ShowListsTheRowsOfATable) {
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"章节设置表"_s}), ExitStatus::done);
    EXPECT_EQ(result.array().size(), 9);
    EXPECT_EQ(result.array().at(0).toObject().value(u"后缀"_s).toString(), u"章"_s);
}

TEST_F(FormatCommands, SetChangesTheFirstRowAndLasts) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"页边距上"_s, u"2.54"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"页面设置表"_s}), ExitStatus::done);
    EXPECT_EQ(result.array().at(0).toObject().value(u"页边距上"_s).toString(), u"2.54"_s);
    EXPECT_EQ(result.array().at(0).toObject().value(u"页边距下"_s).toString(), u"1.5"_s);
}

TEST_F(FormatCommands, SetWithAConditionChangesThatRowAlone) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"章节设置表"_s, u"--where"_s, u"级别=2"_s, u"位置"_s,
                    u"左"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"章节设置表"_s}), ExitStatus::done);
    EXPECT_EQ(result.array().at(0).toObject().value(u"位置"_s).toString(), u"中"_s);
    EXPECT_EQ(result.array().at(1).toObject().value(u"位置"_s).toString(), u"左"_s);
}

TEST_F(FormatCommands, ARowOrValueThatCannotBeIsRefused) {
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"章节设置表"_s, u"--where"_s, u"级别=10"_s, u"位置"_s,
                    u"左"_s}),
              ExitStatus::refused);
    EXPECT_TRUE(said.contains(u"没有符合条件的行。"_s)) << said.toStdString();
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"页边距上"_s, u"宽"_s}),
              ExitStatus::refused);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"没有"_s, u"1"_s}),
              ExitStatus::refused);
}

TEST_F(FormatCommands, OnlyTheFormatTablesMayBeNamed) {
    EXPECT_EQ(call({u"format"_s, u"show"_s, u"序号表"_s}), ExitStatus::wrongUsage);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"封面表"_s, u"--where"_s, u"ID"_s, u"图片"_s, u"a"_s}),
              ExitStatus::wrongUsage);
}

} // namespace
} // namespace qvnd::tools
