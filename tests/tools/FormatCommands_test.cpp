#include "support/Qvndctl.h"

using namespace Qt::StringLiterals;

namespace qvnd::tools {
namespace {

class FormatCommands : public Qvndctl {
protected:
    ExitStatus call(const QStringList& words) { return qvndctl(QStringList{u"--json"_s} + words); }
    QJsonArray rows() const { return json().toArray(); }
};

TEST_F(FormatCommands, ShowListsTheRowsOfATable) {
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"章节设置表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().size(), 9);
    EXPECT_EQ(rows().at(0).toObject().value(u"后缀"_s).toString(), u"章"_s);
}

TEST_F(FormatCommands, SetChangesTheFirstRowAndLasts) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"页边距上"_s, u"2.54"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"页面设置表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"页边距上"_s).toString(), u"2.54"_s);
    EXPECT_EQ(rows().at(0).toObject().value(u"页边距下"_s).toString(), u"1.5"_s);
}

TEST_F(FormatCommands, SetWithAConditionChangesThatRowAlone) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"章节设置表"_s, u"--where"_s, u"级别=2"_s, u"位置"_s,
                    u"左"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"章节设置表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"位置"_s).toString(), u"中"_s);
    EXPECT_EQ(rows().at(1).toObject().value(u"位置"_s).toString(), u"左"_s);
}

TEST_F(FormatCommands, ARowOrValueThatCannotBeIsRefused) {
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"章节设置表"_s, u"--where"_s, u"级别=10"_s, u"位置"_s,
                    u"左"_s}),
              ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"没有符合条件的行。"_s)) << err.toStdString();
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"页边距上"_s, u"宽"_s}),
              ExitStatus::refused);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"没有"_s, u"1"_s}),
              ExitStatus::refused);
}

TEST_F(FormatCommands, OnlyTheFormatTablesMayBeNamed) {
    EXPECT_EQ(call({u"format"_s, u"show"_s, u"遍历表"_s}), ExitStatus::wrongUsage);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"封面表"_s, u"--where"_s, u"ID"_s, u"图片"_s, u"a"_s}),
              ExitStatus::wrongUsage);
}

TEST_F(FormatCommands, EveryTableOfTheSettingsIsShown) {
    const std::pair<QString, int> tables[] = {
        {u"自定义表"_s, 0},   {u"封面库"_s, 0},    {u"当前自定义"_s, 0}, {u"设置库"_s, 0},
        {u"是否设置表"_s, 0}, {u"序号表"_s, 20},   {u"封面表"_s, 1},     {u"章节设置表"_s, 9},
        {u"页眉页脚表"_s, 1}, {u"页面设置表"_s, 1}};
    for (const auto& [table, count] : tables) {
        ASSERT_EQ(call({u"format"_s, u"show"_s, table}), ExitStatus::done) << table.toStdString();
        EXPECT_EQ(rows().size(), count) << table.toStdString();
    }
}

TEST_F(FormatCommands, SetTakesWhatTheDialogTakesAndRefusesWhatItRefuses) {
    struct Case {
        QString table;
        QString field;
        QString taken;
        QString refused;
    };
    const Case cases[] = {
        {u"页面设置表"_s, u"页边距上"_s, u"55.87"_s, u"55.88"_s},
        {u"页面设置表"_s, u"页边距左"_s, u"-55.87"_s, u"-56"_s},
        {u"页面设置表"_s, u"装订位置"_s, u"顶"_s, u"左"_s},
        {u"页面设置表"_s, u"正文字号"_s, u"小五"_s, u"小七"_s},
        {u"封面表"_s, u"图片宽度"_s, u"40"_s, u"41"_s},
        {u"封面表"_s, u"图片高度"_s, u"0"_s, u"-1"_s},
        {u"封面表"_s, u"工程字号"_s, u"10.5"_s, u"大"_s},
        {u"页眉页脚表"_s, u"是否带页眉"_s, u"否"_s, u"不"_s},
        {u"页眉页脚表"_s, u"页脚位置"_s, u"右"_s, u"上"_s},
        {u"页眉页脚表"_s, u"制表样式"_s, u"断连线"_s, u"波浪线"_s},
        {u"页眉页脚表"_s, u"显示级别"_s, u"9"_s, u"10"_s},
        {u"章节设置表"_s, u"置页头"_s, u"否"_s, QString()},
        {u"章节设置表"_s, u"位置"_s, u"左"_s, u"边"_s},
        {u"章节设置表"_s, u"字号"_s, u"三号"_s, u"十号"_s},
        {u"是否设置表"_s, u"是否设置"_s, u"是"_s, u"对"_s},
    };
    for (const Case& each : cases) {
        const std::string name = (each.table + u'.' + each.field).toStdString();
        EXPECT_EQ(call({u"format"_s, u"set"_s, each.table, each.field, u"--"_s, each.taken}),
                  ExitStatus::done)
            << name;
        EXPECT_EQ(call({u"format"_s, u"set"_s, each.table, each.field, u"--"_s, each.refused}),
                  ExitStatus::refused)
            << name;
        EXPECT_FALSE(err.isEmpty()) << name;
        ASSERT_EQ(call({u"format"_s, u"show"_s, each.table}), ExitStatus::done);
        EXPECT_EQ(rows().at(0).toObject().value(each.field).toString(), each.taken) << name;
    }
}

TEST_F(FormatCommands, ALengthOutsideIsToldInTheDialogsWords) {
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"页面设置表"_s, u"页边距上"_s, u"99"_s}),
              ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"对不起，该范围必须在-55.87-55.87之间！"_s)) << err.toStdString();
}

TEST_F(FormatCommands, SettingASampleWritesTheNumberingThatBelongsToIt) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"章节设置表"_s, u"--where"_s, u"级别=2"_s, u"中缀"_s,
                    u"a"_s}),
              ExitStatus::done);
    EXPECT_EQ(json().toObject().value(u"序号标志"_s).toString(), u"aa型"_s);
}

TEST_F(FormatCommands, ATableOfOneRowThatHasNoneGetsItAndAListGetsNone) {
    ASSERT_EQ(call({u"format"_s, u"set"_s, u"当前自定义"_s, u"路径"_s, u"扉页"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"当前自定义"_s}), ExitStatus::done);
    EXPECT_EQ(rows().size(), 1);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"设置库"_s, u"名称"_s, u"甲"_s}), ExitStatus::refused);
}

TEST_F(FormatCommands, ARefusedValueMakesNoRow) {
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"是否设置表"_s, u"是否设置"_s, u"对"_s}),
              ExitStatus::refused);
    EXPECT_EQ(call({u"format"_s, u"set"_s, u"是否设置表"_s, u"没有"_s, u"是"_s}),
              ExitStatus::refused);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"是否设置表"_s}), ExitStatus::done);
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(FormatCommands, LoadTakesThePlansNamesOnTheCoverAndTurnsTheRightAlignmentOn) {
    ASSERT_EQ(call({u"plan"_s, u"create"_s, u"滨江工程"_s, u"--contractor"_s, u"一建公司"_s}),
              ExitStatus::done);
    ASSERT_EQ(call({u"plan"_s, u"create"_s, u"别的工程"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"load"_s, u"滨江工程"_s}), ExitStatus::done) << err.toStdString();
    EXPECT_EQ(json().toObject().value(u"工程名称"_s).toString(), u"滨江工程"_s);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"封面表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"工程名称"_s).toString(), u"滨江工程"_s);
    EXPECT_EQ(rows().at(0).toObject().value(u"单位名称"_s).toString(), u"一建公司"_s);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"页眉页脚表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"是否右对齐"_s).toString(), u"是"_s);
    EXPECT_EQ(call({u"format"_s, u"load"_s, u"没有"_s}), ExitStatus::refused);
}

TEST_F(FormatCommands, LoadTellsTheNamesThatThePlanHas) {
    const auto loaded = [this](const QString& plan) {
        expectDone({u"format"_s, u"load"_s, plan});
        return out.trimmed();
    };
    call({u"plan"_s, u"create"_s, u"滨江工程"_s, u"--contractor"_s, u"一建公司"_s});
    call({u"plan"_s, u"create"_s, u"别的工程"_s});
    EXPECT_EQ(loaded(u"滨江工程"_s), u"封面：滨江工程，一建公司；目录页码右对齐"_s);
    EXPECT_EQ(loaded(u"别的工程"_s), u"封面：别的工程；目录页码右对齐"_s);
}

TEST_F(FormatCommands, ASettingLibraryIsSavedShownUsedAndDeleted) {
    const auto library = [this](const QString& verb, const QStringList& rest) {
        return call(QStringList{u"format"_s, u"library"_s, verb} + rest);
    };
    ASSERT_EQ(library(u"save"_s, {u"set"_s, u"甲"_s}), ExitStatus::done);
    EXPECT_EQ(library(u"save"_s, {u"set"_s, u"甲"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"甲章节"_s)) << err.toStdString();
    ASSERT_EQ(library(u"list"_s, {u"set"_s}), ExitStatus::done);
    EXPECT_EQ(rows(), QJsonArray{u"甲"_s});
    ASSERT_EQ(library(u"show"_s, {u"set"_s, u"甲"_s}), ExitStatus::done);
    EXPECT_EQ(json().toObject().keys(), QStringList({u"甲眉脚"_s, u"甲章节"_s, u"甲页面"_s}));
    ASSERT_EQ(library(u"use"_s, {u"set"_s, u"甲"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"是否设置表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"设置名称"_s).toString(), u"甲"_s);
    EXPECT_EQ(library(u"use"_s, {u"set"_s, u"乙"_s}), ExitStatus::refused);
    ASSERT_EQ(library(u"use"_s, {u"set"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"show"_s, u"是否设置表"_s}), ExitStatus::done);
    EXPECT_EQ(rows().at(0).toObject().value(u"是否设置"_s).toString(), u"否"_s);
    ASSERT_EQ(library(u"delete"_s, {u"set"_s, u"甲"_s}), ExitStatus::done);
    EXPECT_EQ(library(u"delete"_s, {u"set"_s, u"甲"_s}), ExitStatus::refused);
    EXPECT_EQ(library(u"show"_s, {u"page"_s, u"甲"_s}), ExitStatus::wrongUsage);
}

TEST_F(FormatCommands, ACoverLibraryAndACustomPageExcludeEachOther) {
    const auto chosen = [this](const QString& field) {
        EXPECT_EQ(call({u"format"_s, u"show"_s, u"是否设置表"_s}), ExitStatus::done);
        return rows().at(0).toObject().value(field).toString();
    };
    ASSERT_EQ(call({u"format"_s, u"library"_s, u"save"_s, u"cover"_s, u"乙"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"library"_s, u"save"_s, u"set"_s, u"甲"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"custom"_s, u"create"_s, u"扉页"_s}), ExitStatus::done)
        << err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(json().toObject().value(u"文件"_s).toString()));
    EXPECT_EQ(call({u"format"_s, u"custom"_s, u"create"_s, u"扉页"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"对不起，[扉页]自定义已经存在！"_s));
    ASSERT_EQ(call({u"format"_s, u"library"_s, u"use"_s, u"set"_s, u"甲"_s}), ExitStatus::done);
    ASSERT_EQ(call({u"format"_s, u"library"_s, u"use"_s, u"cover"_s, u"乙"_s}), ExitStatus::done);
    EXPECT_EQ(chosen(u"封面名称"_s), u"乙"_s);
    ASSERT_EQ(call({u"format"_s, u"custom"_s, u"use"_s, u"扉页"_s}), ExitStatus::done);
    EXPECT_EQ(chosen(u"是否封面"_s), u"否"_s);
    EXPECT_EQ(chosen(u"是否定义"_s), u"是"_s);
    EXPECT_EQ(chosen(u"设置名称"_s), u"甲"_s);
    ASSERT_EQ(call({u"format"_s, u"library"_s, u"use"_s, u"cover"_s, u"乙"_s}), ExitStatus::done);
    EXPECT_EQ(chosen(u"是否定义"_s), u"否"_s);
    ASSERT_EQ(call({u"format"_s, u"custom"_s, u"use"_s}), ExitStatus::done);
    EXPECT_EQ(chosen(u"封面名称"_s), u"乙"_s);
    ASSERT_EQ(call({u"format"_s, u"custom"_s, u"list"_s}), ExitStatus::done);
    EXPECT_EQ(rows(), QJsonArray{u"扉页"_s});
    ASSERT_EQ(call({u"format"_s, u"custom"_s, u"delete"_s, u"扉页"_s}), ExitStatus::done);
    EXPECT_EQ(call({u"format"_s, u"custom"_s, u"use"_s, u"扉页"_s}), ExitStatus::refused);
}

} // namespace
} // namespace qvnd::tools
