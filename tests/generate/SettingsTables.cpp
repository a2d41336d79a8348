#include "generate/SettingsTables.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qvnd::test {

namespace {

using jet::FieldType;
using jet::Value;

FieldType typeFor(const Value& value) {
    if (value.IsDate())
        return FieldType::Date;
    return value.IsNumber() ? FieldType::Double : FieldType::Memo;
}

jet::TableDef definition(const QString& name, const Row& fields) {
    jet::TableDef table(name);
    for (const Cell& cell : fields) {
        auto field = jet::TableDef::CreateField(cell.field, typeFor(cell.value));
        field.AllowZeroLength = field.IsText();
        table.Fields.push_back(field);
    }
    return table;
}

Row chapter(int level, const char16_t* prefix, const char16_t* style, const char16_t* suffix) {
    return {{u"级别"_s, QString::number(level)},
            {u"字体"_s, u"仿宋_GB2312"},
            {u"字号"_s, u"小四"},
            {u"前缀"_s, prefix},
            {u"中缀"_s, u"一"},
            {u"序号标志"_s, style},
            {u"后缀"_s, suffix},
            {u"位置"_s, u"中"},
            {u"置页头"_s, level == 1 ? u"是" : u"否"},
            {u"带该级标题"_s, u"是"}};
}

std::vector<Row> chapterRows() {
    return {chapter(1, u"第", u"一型", u"章"),   chapter(2, u"第", u"一型", u"节"),
            chapter(3, u"第", u"一型", u"小节"), chapter(4, u"", u"一型", u""),
            chapter(5, u"(", u"一型", u")"),     chapter(6, u"[", u"一型", u"]"),
            chapter(7, u"", u"I型", u""),        chapter(8, u"(", u"I型", u")"),
            chapter(9, u"[", u"I型", u"]")};
}

std::vector<Row> numberRows() {
    static const auto words = u"一 二 三 四 五 六 七 八 九 十 十一 十二 十三 十四 十五 十六 十七 "
                              "十八 十九 二十"_s.split(u' ');
    std::vector<Row> rows;
    for (const QString& word : words)
        rows.push_back({{u"一型"_s, word}});
    return rows;
}

} // namespace

void dropTable(jet::Database& database, const QString& name) {
    if (database.TableDefs().Contains(name))
        database.TableDefs().Delete(name);
}

void putEmptyTable(jet::Database& database, const QString& name, const Row& fields) {
    dropTable(database, name);
    database.TableDefs().Append(definition(name, fields));
}

void putTable(jet::Database& database, const QString& name, const std::vector<Row>& rows) {
    putEmptyTable(database, name, rows.at(0));
    const auto records = database.OpenRecordset(u"Select * from ["_s + name + u']');
    for (const Row& row : rows) {
        records->AddNew();
        for (const Cell& cell : row)
            records->Set(cell.field, cell.value);
        records->Update();
    }
}

void change(jet::Database& database, const QString& table, const QString& field,
            const Value& value) {
    const auto records = database.OpenRecordset(u"Select * from ["_s + table + u']');
    records->Edit();
    records->Set(field, value);
    records->Update();
}

Row coverRow() {
    return {{u"工程名称"_s, u"新楼工程"}, {u"工程字体"_s, u"黑体"},
            {u"工程字号"_s, u"一号"},     {u"图片"_s, u""},
            {u"图片高度"_s, 10},          {u"图片宽度"_s, 20},
            {u"单位名称"_s, u"建设公司"}, {u"单位字体"_s, u"楷体"},
            {u"单位字号"_s, u"三号"},     {u"日期"_s, u"2003-5-1"},
            {u"日期字体"_s, u"宋体"},     {u"日期字号"_s, u"四号"}};
}

Row pageRow() {
    return {{u"页边距上"_s, 1.5},    {u"页边距下"_s, 2.0}, {u"页边距左"_s, 2.5},
            {u"页边距右"_s, 3.0},    {u"装订距离"_s, 0.5}, {u"装订位置"_s, u"边"},
            {u"距页眉"_s, 1.0},      {u"距页脚"_s, 0.75},  {u"正文字体"_s, u"仿宋_GB2312"},
            {u"正文字号"_s, u"小四"}};
}

Row headerFooterRow() {
    return {{u"是否带页眉"_s, u"是"},   {u"页眉内容"_s, u"页眉"}, {u"页眉字体"_s, u"仿宋_GB2312"},
            {u"页眉字号"_s, u"小五"},   {u"页眉位置"_s, u"左"},   {u"是否带页脚"_s, u"是"},
            {u"页脚内容"_s, u"页脚"},   {u"页脚字体"_s, u"黑体"}, {u"页脚字号"_s, u"五号"},
            {u"页脚位置"_s, u"中"},     {u"显示级别"_s, 3},       {u"制表样式"_s, u"轻虚线"},
            {u"是否显示页码"_s, u"是"}, {u"是否右对齐"_s, u"是"}};
}

Row selectionRow(const char16_t* 是否封面, const char16_t* 封面名称, const char16_t* 是否设置,
                 const char16_t* 设置名称, const char16_t* 是否定义) {
    const auto cell = [](const char16_t* text) { return text != nullptr ? Value(text) : Value(); };
    return {{u"是否封面"_s, cell(是否封面)},
            {u"封面名称"_s, cell(封面名称)},
            {u"是否设置"_s, cell(是否设置)},
            {u"设置名称"_s, cell(设置名称)},
            {u"是否定义"_s, cell(是否定义)}};
}

void putFirstSettings(jet::Database& database) {
    putTable(database, u"序号表"_s, numberRows());
    putTable(database, u"章节设置表"_s, chapterRows());
    putTable(database, u"封面表"_s, {coverRow()});
    putTable(database, u"页面设置表"_s, {pageRow()});
    putTable(database, u"页眉页脚表"_s, {headerFooterRow()});
    putEmptyTable(database, u"是否设置表"_s, selectionRow(u"", u"", u"", u"", u""));
    putEmptyTable(database, u"当前自定义"_s, {{u"路径"_s, u""}});
}

} // namespace qvnd::test
