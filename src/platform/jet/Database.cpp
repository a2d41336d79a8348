#include "platform/jet/Database.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Failure.h"
#include "platform/jet/dialect/Parser.h"
#include "platform/jet/engine/CommandRunner.h"
#include "platform/jet/engine/RecordsetState.h"
#include "platform/jet/engine/Session.h"

#include <QRegularExpression>

namespace qvnd::jet {

namespace {

bool isQuery(const QString& source) {
    static const QRegularExpression select(QStringLiteral("^\\s*select\\s"),
                                           QRegularExpression::CaseInsensitiveOption);
    return select.match(source).hasMatch();
}

Query wholeTable(const QString& name) {
    Query query;
    query.Table = name;
    return query;
}

Query queryOf(const QString& source) {
    Command command = Parser(source).ParseCommand();
    if (auto* query = std::get_if<Query>(&command)) {
        return std::move(*query);
    }
    failSyntax(source, QStringLiteral("这条语句不返回记录"));
}

} // namespace

Database::Database(std::shared_ptr<Session> session) : session_(std::move(session)) {}

// On failure the changes stay pending, and the next call on the workspace tries again.
Database::~Database() {
    ignoringErrors([this] { Close(); });
}

QString Database::Name() const {
    session_->File();
    return session_->Name();
}

jet::TableDefs Database::TableDefs() const { return jet::TableDefs(session_); }

void Database::Execute(const QString& statement) {
    session_->File();
    const Command command = Parser(statement).ParseCommand();
    std::visit(CommandRunner(*session_), command);
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& source, OpenAs as) {
    session_->File();
    const bool asTable = as == OpenAs::Table || !isQuery(source);
    return std::make_unique<Recordset>(std::make_unique<RecordsetState>(
        session_, asTable ? wholeTable(source) : queryOf(source),
        asTable ? RecordsetState::Opened::AsTable : RecordsetState::Opened::AsQuery));
}

int Database::ForeignChanges() const { return session_->EnterFile().ForeignChanges(); }

void Database::Close() { session_->Close(); }

bool Database::IsOpen() const { return session_->IsOpen(); }

} // namespace qvnd::jet
