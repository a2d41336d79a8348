#include "platform/jet/Failure.h"

#include "platform/error/RunTimeError.h"

namespace qvnd::jet {

void fail(long number, const QString& description) {
    throw RunTimeError(number, description.toStdU16String());
}

void failItemNotFound(QStringView name) {
    fail(error::itemNotFound, QStringLiteral("在集合中找不到『%1』。").arg(name));
}

void failTableExists(QStringView table) {
    fail(error::tableExists, QStringLiteral("表『%1』已经存在。").arg(table));
}

void failTableNotFound(QStringView table) {
    fail(error::tableNotFound,
         QStringLiteral("找不到表『%1』，请确认它存在，且名称拼写正确。").arg(table));
}

void failTableToDropNotFound(QStringView table) {
    fail(error::tableToDropNotFound, QStringLiteral("表『%1』不存在，不能删除。").arg(table));
}

void failInsertTargetNotFound(QStringView table) {
    fail(error::insertTargetNotFound, QStringLiteral("找不到要写入的表『%1』。").arg(table));
}

void failDuplicate() {
    fail(error::duplicateValue,
         QStringLiteral("改动没有成功：它会在索引或主关键字中产生重复的值。"));
}

void failNoCurrentRecord() { fail(error::noCurrentRecord, QStringLiteral("没有当前记录。")); }

void failRecordDeleted() { fail(error::recordDeleted, QStringLiteral("记录已被删除。")); }

void failNoAddNewOrEdit() {
    fail(error::noAddNewOrEdit, QStringLiteral("没有先使用 AddNew 或 Edit，不能写入记录。"));
}

void failClosed() { fail(error::objectClosed, QStringLiteral("对象无效，或已经关闭。")); }

void failSyntax(QStringView statement, const QString& reason) {
    fail(error::syntaxError, QStringLiteral("语句『%1』有语法错误：%2。").arg(statement, reason));
}

void failUnknownParameter(QStringView name) {
    fail(error::unknownParameter, QStringLiteral("参数不足：没有名为『%1』的字段。").arg(name));
}

void failUndefinedFunction(QStringView name) {
    fail(error::undefinedFunction, QStringLiteral("语句中有未定义的函数『%1』。").arg(name));
}

void failCriteriaTypeMismatch() {
    fail(error::criteriaTypeMismatch, QStringLiteral("条件中的数据类型不匹配。"));
}

void failZeroLength(QStringView field) {
    fail(error::zeroLengthNotAllowed, QStringLiteral("字段『%1』不能是空字符串。").arg(field));
}

void failTextTooLong(QStringView field) {
    fail(error::textTooLong, QStringLiteral("字段『%1』容纳不下这么长的文字。").arg(field));
}

void failConversion(QStringView field) {
    fail(error::conversionFailed, QStringLiteral("字段『%1』的数据类型转换出错。").arg(field));
}

void failFileNotFound(QStringView path) {
    fail(error::cannotOpenFile, QStringLiteral("找不到文件『%1』。").arg(path));
}

void failFolderInvalid(QStringView path) {
    fail(error::folderInvalid,
         QStringLiteral("『%1』不是有效的路径，请确认文件夹存在，且名称拼写正确。").arg(path));
}

void failCannotAccess(QStringView path) {
    fail(error::cannotAccessFile,
         QStringLiteral("不能打开文件『%1』：它正被独占，或没有读写它的权限。").arg(path));
}

void failReadOnly(QStringView path) {
    fail(error::cannotAccessFile,
         QStringLiteral(
             "不能打开文件『%1』：它只能读，不能写。请检查文件的写权限，以及所在的文件夹和"
             "磁盘是否可以写入。")
             .arg(path));
}

void failUnrecognizedFormat(QStringView path) {
    fail(error::unrecognizedFormat, QStringLiteral("不可识别的数据库格式『%1』。").arg(path));
}

void failDatabaseExists(QStringView path) {
    fail(error::databaseExists, QStringLiteral("数据库『%1』已经存在。").arg(path));
}

void failTypeMismatch() { fail(error::typeMismatch, QStringLiteral("类型不匹配")); }

void failOverflow() { fail(error::overflow, QStringLiteral("溢出")); }

void failInvalidUseOfNull() { fail(error::invalidUseOfNull, QStringLiteral("无效使用 Null")); }

} // namespace qvnd::jet
