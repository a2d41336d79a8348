#include "platform/jet/engine/RecordsetState.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Failure.h"
#include "platform/jet/FieldConversion.h"
#include "platform/jet/file/SameText.h"

namespace qvnd::jet {

namespace {

QByteArray placesFor(std::size_t count) {
    QByteArrayList places;
    for (std::size_t i = 1; i <= count; ++i) {
        places << "?" + QByteArray::number(static_cast<int>(i));
    }
    return places.join(',');
}

// Runs one statement that is a whole change by itself, and leaves it pending or not.
class SingleChange {
public:
    SingleChange(StoreFile& file, bool staysPending)
        : file_(file), staysPending_(staysPending), began_(file.BeginWrite()) {}
    ~SingleChange() {
        if (!done_ && began_) {
            ignoringErrors([this] { file_.Rollback(); });
        }
    }
    SingleChange(const SingleChange&) = delete;
    SingleChange& operator=(const SingleChange&) = delete;

    void Finish() {
        if (!staysPending_) {
            file_.Commit();
        }
        done_ = true;
    }

private:
    StoreFile& file_;
    bool staysPending_;
    bool began_;
    bool done_ = false;
};

} // namespace

void RecordsetState::Set(QStringView field, const Value& value) {
    File();
    const auto position = static_cast<std::size_t>(PositionOf(field));
    if (inHand_ == InHand::Nothing) {
        failNoAddNewOrEdit();
    }
    const Field& definition = Table().Definition.Fields[position];
    if (definition.IsAutoIncrement()) {
        fail(error::fieldNotUpdatable,
             QStringLiteral("字段『%1』由系统编号，不能写入。").arg(definition.Name));
    }
    handRow_[position] = convertedFor(definition, value);
    handSet_[position] = true;
}

void RecordsetState::AddNew() {
    const std::vector<Field>& fields = Table().Definition.Fields;
    handRow_.clear();
    for (const Field& field : fields) {
        handRow_.push_back(defaultOf(field));
    }
    handSet_.assign(fields.size(), false);
    inHand_ = InHand::NewRow;
}

void RecordsetState::Edit() {
    File();
    ReadRow();
    handRow_ = row_;
    handSet_.assign(row_.size(), false);
    inHand_ = InHand::EditedRow;
}

void RecordsetState::Update() {
    File();
    if (inHand_ == InHand::Nothing) {
        failNoAddNewOrEdit();
    }
    if (inHand_ == InHand::NewRow) {
        InsertRow();
    } else {
        ChangeRow();
    }
    inHand_ = InHand::Nothing;
}

void RecordsetState::InsertRow() {
    WorkspaceState& workspace = session_->Workspace();
    const bool inRun = workspace.EnterAddition(number_);
    StoreFile& file = File();
    const bool staysPending = inRun || workspace.StaysPending();
    SingleChange change(file, staysPending);
    WriteNewRow(Table());
    const std::int64_t row = file.Sql().LastInsertedRow();
    change.Finish();
    rows_.push_back(row);
    ++reached_;
    if (staysPending) {
        workspace.LeaveAddition();
    }
}

void RecordsetState::WriteNewRow(StoredTable& table) {
    const int numbered = table.AutoIncrementPosition();
    if (numbered >= 0) {
        handRow_[static_cast<std::size_t>(numbered)] = Value(table.NextNumber());
    }
    refuseSameTexts(File().Sql(), table, handRow_);
    Statement& statement =
        File().Sql().Prepared("INSERT INTO " + table.TableName() + "(" + table.AllColumns() +
                              ") VALUES(" + placesFor(handRow_.size()) + ")");
    int position = 0;
    for (const Value& value : handRow_) {
        statement.Bind(++position, value);
    }
    statement.Run();
    if (numbered >= 0) {
        table.Reach(table.NextNumber());
    }
}

void RecordsetState::ChangeRow() {
    StoreFile& file = session_->EnterFile();
    QByteArrayList changes;
    for (std::size_t i = 0; i < handSet_.size(); ++i) {
        if (handSet_[i]) {
            const int column = static_cast<int>(i);
            changes << Table().ColumnName(column) + "=?" + QByteArray::number(column + 2);
        }
    }
    if (changes.isEmpty()) {
        return;
    }
    SingleChange change(file, session_->Workspace().StaysPending());
    refuseSameTexts(file.Sql(), Table(), handRow_, rows_[Current()]);
    Statement statement(file.Sql(), "UPDATE " + Table().TableName() + " SET " + changes.join(',') +
                                        " WHERE rowid=?1");
    statement.Bind(1, rows_[Current()]);
    for (std::size_t i = 0; i < handSet_.size(); ++i) {
        if (handSet_[i]) {
            statement.Bind(static_cast<int>(i) + 2, handRow_[i]);
        }
    }
    statement.Run();
    if (file.Sql().Changes() == 0) {
        failRecordDeleted();
    }
    change.Finish();
}

void RecordsetState::Delete() {
    File();
    StoreFile& file = session_->EnterFile();
    const std::int64_t row = rows_[Current()];
    inHand_ = InHand::Nothing;
    SingleChange change(file, session_->Workspace().StaysPending());
    Statement statement(file.Sql(), "DELETE FROM " + Table().TableName() + " WHERE rowid=?1");
    statement.Bind(1, row);
    statement.Run();
    if (file.Sql().Changes() == 0) {
        failRecordDeleted();
    }
    change.Finish();
}

} // namespace qvnd::jet
