#pragma once

#include <QString>
#include <QStringView>

// The names under which the databases keep their tables and fields. They are data: they stand in
// the users' files and never change.
namespace qvnd::store {

// Tables of Db_UsTemplate.mdb; planList is in Db_Template.mdb as well, there the templates' list.
namespace table {
inline constexpr QStringView planList = u"遍历表";
inline constexpr QStringView currentPlan = u"当前表";
inline constexpr QStringView bidDocuments = u"标书表"; // nothing reads or writes it
inline constexpr QStringView scratch = u"temp";        // shaped like an outline

// Tables of Db_BidSet.mdb.
inline constexpr QStringView customPages = u"自定义表";
inline constexpr QStringView coverLibrary = u"封面库";
inline constexpr QStringView currentCustomPages = u"当前自定义";
inline constexpr QStringView settingLibrary = u"设置库";
inline constexpr QStringView selection = u"是否设置表";
inline constexpr QStringView numbering = u"序号表";
inline constexpr QStringView cover = u"封面表";
inline constexpr QStringView chapters = u"章节设置表";
inline constexpr QStringView headerFooter = u"页眉页脚表";
inline constexpr QStringView pageSetup = u"页面设置表";
} // namespace table

namespace field {
inline constexpr QStringView name = u"名称";
inline constexpr QStringView id = u"ID"; // the number that the engine gives; order of the rows
inline constexpr QStringView path = u"路径";
inline constexpr QStringView location = u"位置";

// Outline tables.
inline constexpr QStringView key = u"Key";
inline constexpr QStringView isDocument = u"是否文档";

// Information tables, one to a plan.
inline constexpr QStringView client = u"建设单位";
inline constexpr QStringView contractor = u"施工单位";
inline constexpr QStringView author = u"编制人";
inline constexpr QStringView approver = u"审批人";
inline constexpr QStringView planDate = u"编制日期";
inline constexpr QStringView note = u"注释";

// 是否设置表.
inline constexpr QStringView coverName = u"封面名称";
inline constexpr QStringView withCover = u"是否封面";
inline constexpr QStringView settingName = u"设置名称";
inline constexpr QStringView withSetting = u"是否设置";
inline constexpr QStringView withCustomPages = u"是否定义";

// 序号表: one field for each numbering style.
inline constexpr QStringView chineseNumber = u"一型";
inline constexpr QStringView arabicNumber = u"I型";
inline constexpr QStringView capitalLetter = u"A型";
inline constexpr QStringView smallLetter = u"aa型";
inline constexpr QStringView ordinal = u"序号";

// 封面表.
inline constexpr QStringView projectName = u"工程名称";
inline constexpr QStringView projectFont = u"工程字体";
inline constexpr QStringView projectSize = u"工程字号";
inline constexpr QStringView officeName = u"单位名称";
inline constexpr QStringView officeFont = u"单位字体";
inline constexpr QStringView officeSize = u"单位字号";
inline constexpr QStringView date = u"日期";
inline constexpr QStringView dateFont = u"日期字体";
inline constexpr QStringView dateSize = u"日期字号";
inline constexpr QStringView picture = u"图片";           // file name in the picture folder
inline constexpr QStringView pictureWidth = u"图片宽度";  // centimetres
inline constexpr QStringView pictureHeight = u"图片高度"; // centimetres

// 章节设置表.
inline constexpr QStringView level = u"级别"; // "1" to "9"
inline constexpr QStringView font = u"字体";
inline constexpr QStringView size = u"字号";
inline constexpr QStringView before = u"前缀";
inline constexpr QStringView sample = u"中缀";
inline constexpr QStringView numberStyle = u"序号标志"; // a field of 序号表
inline constexpr QStringView behind = u"后缀";
inline constexpr QStringView position = u"位置"; // "左", "中" or "右"
inline constexpr QStringView startsPage = u"置页头";
inline constexpr QStringView withTitle = u"带该级标题";

// 页眉页脚表.
inline constexpr QStringView withHeader = u"是否带页眉";
inline constexpr QStringView headerText = u"页眉内容";
inline constexpr QStringView headerFont = u"页眉字体";
inline constexpr QStringView headerSize = u"页眉字号";
inline constexpr QStringView headerPosition = u"页眉位置";
inline constexpr QStringView withFooter = u"是否带页脚";
inline constexpr QStringView footerText = u"页脚内容";
inline constexpr QStringView footerFont = u"页脚字体";
inline constexpr QStringView footerSize = u"页脚字号";
inline constexpr QStringView footerPosition = u"页脚位置";
inline constexpr QStringView rightAligned = u"是否右对齐";
inline constexpr QStringView leader = u"制表样式";
inline constexpr QStringView levelsShown = u"显示级别";
inline constexpr QStringView withPageNumbers = u"是否显示页码";

// 页面设置表; lengths in centimetres.
inline constexpr QStringView marginTop = u"页边距上";
inline constexpr QStringView marginBottom = u"页边距下";
inline constexpr QStringView marginLeft = u"页边距左";
inline constexpr QStringView marginRight = u"页边距右";
inline constexpr QStringView gutter = u"装订距离";
inline constexpr QStringView gutterSide = u"装订位置";
inline constexpr QStringView bodyFont = u"正文字体";
inline constexpr QStringView bodySize = u"正文字号";
inline constexpr QStringView headerDistance = u"距页眉";
inline constexpr QStringView footerDistance = u"距页脚";
} // namespace field

// The name of a plan's information table.
inline QString informationTableOf(const QString& plan) { return plan + QStringLiteral("Org"); }

// Yes and no as the tables have them.
inline constexpr QStringView yes = u"是";
inline constexpr QStringView no = u"否";

} // namespace qvnd::store
