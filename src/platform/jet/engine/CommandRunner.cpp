#include "platform/jet/engine/CommandRunner.h"

#include "platform/jet/Failure.h"
#include "platform/jet/dialect/ConditionSql.h"
#include "platform/jet/engine/RowCopy.h"

#include <QFileInfo>

namespace qvnd::jet {

namespace {

// A path as it stands between quotes may have its own quotes doubled or not; what exists decides.
QString pathOf(const QString& written) {
    QString undoubled = written;
    undoubled.replace(QStringLiteral("''"), QStringLiteral("'"));
    return QFileInfo::exists(written) ? written : undoubled;
}

// Holds the target of a statement and lets go of it when the statement is over.
class HeldFile {
public:
    explicit HeldFile(std::shared_ptr<StoreFile> file) : file_(std::move(file)) {}
    void LetGo() { WorkspaceState::Release(file_); }
    StoreFile& operator*() const { return *file_; }
    StoreFile* operator->() const { return file_.get(); }

private:
    std::shared_ptr<StoreFile> file_;
};

} // namespace

CommandRunner::CommandRunner(Session& session) : session_(session), file_(session.EnterFile()) {}

std::shared_ptr<StoreFile> CommandRunner::Target(const std::optional<QString>& file) {
    return file ? session_.Workspace().Open(pathOf(*file)) : session_.SharedFile();
}

void CommandRunner::operator()(const SelectInto& command) {
    const TableDef definition =
        definitionOf(command.From, file_.TableNamed(command.From.Table), command.Table);
    HeldFile target(Target(command.File));
    WriteScope scope(*target, session_.Workspace().StaysPending());
    const std::int64_t made = target->Tables().Add(target->Sql(), definition).Id;
    copyRows(file_, command.From, *target, made);
    scope.Finish();
    target.LetGo();
}

void CommandRunner::operator()(const InsertInto& command) {
    file_.TableNamed(command.From.Table);
    HeldFile target(Target(command.File));
    WriteScope scope(*target, session_.Workspace().StaysPending());
    const StoredTable* table = target->Tables().Find(command.Table);
    if (table == nullptr) {
        failInsertTargetNotFound(command.Table);
    }
    copyRows(file_, command.From, *target, table->Id);
    scope.Finish();
    target.LetGo();
}

void CommandRunner::operator()(const DeleteFrom& command) {
    WriteScope scope(file_, session_.Workspace().StaysPending());
    const StoredTable& table = file_.TableNamed(command.Table);
    const ConditionSql condition = translatedWhere(command.Where, table);
    // A table that is emptied without a condition would not be told to an observer of its rows.
    const QByteArray where = condition.Sql.isEmpty() ? QByteArray(" WHERE 1") : condition.Sql;
    Statement statement(file_.Sql(), "DELETE FROM " + table.TableName() + where);
    condition.BindTo(statement);
    statement.Run();
    scope.Finish();
}

void CommandRunner::operator()(const DropTable& command) {
    WriteScope scope(file_, session_.Workspace().StaysPending());
    const StoredTable* table = file_.Tables().Find(command.Table);
    if (table == nullptr) {
        failTableToDropNotFound(command.Table);
    }
    file_.Tables().Remove(file_.Sql(), table->Id);
    scope.Finish();
}

void CommandRunner::operator()(const Query& command) {
    fail(error::cannotExecuteQuery,
         QStringLiteral("不能执行选择查询『%1』，请用 OpenRecordset 打开。").arg(command.Table));
}

} // namespace qvnd::jet
