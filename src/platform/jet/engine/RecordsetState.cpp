#include "platform/jet/engine/RecordsetState.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Failure.h"
#include "platform/jet/FieldConversion.h"
#include "platform/jet/TextOrder.h"
#include "platform/jet/dialect/ConditionSql.h"
#include "platform/jet/dialect/Parser.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace qvnd::jet {

namespace {

constexpr std::size_t mostRowsAtOnce = 64;

// Keeps what is read in one state of the file, which is locked once for all.
class ReadLock {
public:
    explicit ReadLock(Connection& connection) : connection_(connection) {
        connection_.Prepared("BEGIN").Run();
    }
    // Nothing was written; a failure shows again at the next statement.
    ~ReadLock() {
        ignoringErrors([this] { connection_.Prepared("ROLLBACK").Run(); });
    }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    Connection& connection_;
};

} // namespace

RecordsetState::RecordsetState(std::shared_ptr<Session> session, Query query, Opened opened)
    : session_(std::move(session)), query_(std::move(query)), opened_(opened),
      number_(session_->Workspace().NextRecordset()) {
    Load();
}

// On failure the rows stay pending, and the next call on the workspace tries again.
RecordsetState::~RecordsetState() {
    ignoringErrors([this] { Close(); });
}

StoreFile& RecordsetState::File() const {
    if (session_ == nullptr) {
        failClosed();
    }
    return session_->File();
}

StoredTable& RecordsetState::Table() const { return File().TableOf(table_); }

void RecordsetState::Load() {
    StoreFile& file = session_->EnterFile();
    const StoredTable& table = file.TableNamed(query_.Table);
    table_ = table.Id;
    positions_.clear();
    fields_.clear();
    const int count = static_cast<int>(table.Definition.Fields.size());
    for (int i = 0; query_.Fields.isEmpty() && i < count; ++i) {
        positions_.push_back(i);
    }
    for (const QString& name : query_.Fields) {
        positions_.push_back(table.PositionOf(name));
        if (positions_.back() < 0) {
            failUnknownParameter(name);
        }
    }
    for (const int position : positions_) {
        fields_.push_back(table.Definition.Fields[static_cast<std::size_t>(position)]);
    }
    rows_ = RowsWhere(query_.Where);
    reached_ = 0;
    readPlace_.reset();
    MoveTo(0);
}

std::vector<std::int64_t> RecordsetState::RowsWhere(const std::optional<Expression>& where) const {
    const StoredTable& table = Table();
    const ConditionSql condition = translatedWhere(where, table);
    Statement statement(File().Sql(), "SELECT rowid FROM " + table.TableName() + condition.Sql +
                                          translatedOrder(query_.Order, table));
    condition.BindTo(statement);
    std::vector<std::int64_t> rows;
    while (statement.Step()) {
        rows.push_back(statement.Number(0));
    }
    return rows;
}

bool RecordsetState::Bof() const {
    File();
    return rows_.empty();
}

bool RecordsetState::Eof() const {
    File();
    return !place_;
}

int RecordsetState::RecordCount() const {
    File();
    return static_cast<int>(opened_ == Opened::AsTable ? rows_.size() : reached_);
}

const std::vector<Field>& RecordsetState::Fields() const {
    File();
    return fields_;
}

int RecordsetState::PositionOf(QStringView field) const {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (sameName(fields_[i].Name, field)) {
            return positions_[i];
        }
    }
    failItemNotFound(field);
}

std::size_t RecordsetState::Current() const {
    if (!place_) {
        failNoCurrentRecord();
    }
    return *place_;
}

void RecordsetState::MoveTo(std::size_t place) {
    place_.reset();
    if (place < rows_.size()) {
        place_ = place;
    }
    reached_ = std::max(reached_, std::min(place + 1, rows_.size()));
    rowStamp_ = -1;
    inHand_ = InHand::Nothing;
}

Value RecordsetState::Get(QStringView field) {
    StoreFile& file = File();
    const auto position = static_cast<std::size_t>(PositionOf(field));
    if (inHand_ != InHand::Nothing) {
        return handRow_[position];
    }
    if (rowStamp_ != file.Sql().ChangeStamp()) {
        ReadRow();
    }
    return row_[position];
}

// Whoever goes through the rows one by one gets them read many at a time: to lock the file and to
// look for its journal costs several times what a row costs. What an own change or another place
// makes doubtful is read anew.
void RecordsetState::ReadRow() {
    const std::size_t place = Current();
    const std::int64_t stamp = File().Sql().ChangeStamp();
    const bool goesOn = readPlace_ && place == *readPlace_ + 1 && aheadStamp_ == stamp;
    if (!goesOn || ahead_.empty() || File().IsPending()) {
        atOnce_ = goesOn ? std::min(2 * atOnce_, mostRowsAtOnce) : 1;
        ReadAhead(place);
    }
    row_ = std::move(ahead_.front());
    ahead_.pop_front();
    rowStamp_ = stamp;
    readPlace_ = place;
}

void RecordsetState::ReadAhead(std::size_t place) {
    ahead_.clear();
    StoreFile& file = File();
    const std::size_t wanted = file.IsPending() ? 1 : std::min(atOnce_, rows_.size() - place);
    std::optional<ReadLock> lock;
    if (wanted > 1) {
        lock.emplace(file.Sql());
    }
    std::vector<Value> row;
    while (ahead_.size() < wanted && ReadNext(row, rows_[place + ahead_.size()])) {
        ahead_.push_back(std::move(row));
    }
    aheadStamp_ = file.Sql().ChangeStamp();
}

// A row behind the wanted one that is gone or cannot be read fails when its own turn comes.
bool RecordsetState::ReadNext(std::vector<Value>& row, std::int64_t number) const {
    const bool isWanted = ahead_.empty();
    try {
        if (!ReadInto(row, number)) {
            failRecordDeleted();
        }
        return true;
    } catch (const RunTimeError&) {
        if (isWanted) {
            throw;
        }
        return false;
    }
}

bool RecordsetState::ReadInto(std::vector<Value>& row, std::int64_t number) const {
    const StoredTable& table = Table();
    Statement& statement = File().Sql().Prepared("SELECT " + table.AllColumns() + " FROM " +
                                                 table.TableName() + " WHERE rowid=?1");
    statement.Bind(1, number);
    const bool isThere = statement.Step();
    const std::vector<Field>& fields = table.Definition.Fields;
    row.clear();
    for (std::size_t i = 0; isThere && i < fields.size(); ++i) {
        row.push_back(statement.Read(static_cast<int>(i), fields[i].Type));
    }
    statement.Reset();
    return isThere;
}

void RecordsetState::MoveFirst() {
    File();
    if (rows_.empty()) {
        failNoCurrentRecord();
    }
    MoveTo(0);
}

void RecordsetState::MoveLast() {
    File();
    if (rows_.empty()) {
        failNoCurrentRecord();
    }
    MoveTo(rows_.size() - 1);
}

void RecordsetState::MoveNext() {
    File();
    MoveTo(Current() + 1);
}

void RecordsetState::FindFirst(const QString& condition) {
    File();
    const std::vector<std::int64_t> found = RowsWhere(Parser(condition).ParseCondition());
    const std::unordered_set<std::int64_t> matching(found.begin(), found.end());
    const auto first = std::find_if(rows_.begin(), rows_.end(),
                                    [&](std::int64_t row) { return matching.count(row) != 0; });
    noMatch_ = first == rows_.end();
    if (!noMatch_) {
        MoveTo(static_cast<std::size_t>(first - rows_.begin()));
    }
}

void RecordsetState::Requery() {
    File();
    Load();
}

void RecordsetState::Close() {
    if (session_ == nullptr) {
        return;
    }
    if (session_->IsOpen()) {
        session_->Workspace().LeaveRecordset(number_);
    }
    session_.reset();
}

} // namespace qvnd::jet
