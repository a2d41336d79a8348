#pragma once

#include "platform/jet/Value.h"
#include "platform/jet/dialect/Syntax.h"
#include "platform/jet/engine/Session.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace qvnd::jet {

// What a recordset knows: the rows it has, as the row numbers that the file gives them, the place
// among them, and the row in hand between AddNew or Edit and Update.
class RecordsetState {
public:
    enum class Opened { AsQuery, AsTable };
    RecordsetState(std::shared_ptr<Session> session, Query query, Opened opened);
    ~RecordsetState();
    RecordsetState(const RecordsetState&) = delete;
    RecordsetState& operator=(const RecordsetState&) = delete;

    bool Bof() const;
    bool Eof() const;
    int RecordCount() const;
    const std::vector<Field>& Fields() const;

    Value Get(QStringView field);
    void Set(QStringView field, const Value& value);
    void AddNew();
    void Edit();
    void Update();
    void Delete();

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void FindFirst(const QString& condition);
    bool NoMatch() const { return noMatch_; }
    void Requery();
    void Close();

private:
    enum class InHand { Nothing, NewRow, EditedRow };

    StoreFile& File() const;
    StoredTable& Table() const;
    // Position in the table of a field that the recordset shows; error 3265.
    int PositionOf(QStringView field) const;
    std::size_t Current() const; // error 3021
    // A place behind the last row is the end.
    void MoveTo(std::size_t place);
    void ReadRow();
    void ReadAhead(std::size_t place);
    bool ReadNext(std::vector<Value>& row, std::int64_t number) const;
    // False when the row is gone.
    bool ReadInto(std::vector<Value>& row, std::int64_t number) const;
    void Load();
    std::vector<std::int64_t> RowsWhere(const std::optional<Expression>& where) const;
    void InsertRow();
    void WriteNewRow(StoredTable& table);
    void ChangeRow();

    std::shared_ptr<Session> session_;
    Query query_;
    Opened opened_;
    std::uint64_t number_; // among the workspace's recordsets
    std::int64_t table_ = 0;
    std::vector<int> positions_; // in the table, of the fields shown
    std::vector<Field> fields_;

    std::vector<std::int64_t> rows_;
    std::optional<std::size_t> place_; // none behind the last row
    std::size_t reached_ = 0;
    bool noMatch_ = false;

    std::vector<Value> row_; // the current row, by position in the table
    std::int64_t rowStamp_ = -1;
    std::optional<std::size_t> readPlace_; // of the row read last

    // Rows behind the one read last, in their order, as the file had them at the stamp.
    std::deque<std::vector<Value>> ahead_;
    std::int64_t aheadStamp_ = -1;
    std::size_t atOnce_ = 1; // rows to read with one lock of the file

    InHand inHand_ = InHand::Nothing;
    std::vector<Value> handRow_;
    std::vector<bool> handSet_;
};

} // namespace qvnd::jet
