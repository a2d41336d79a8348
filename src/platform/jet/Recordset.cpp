#include "platform/jet/Recordset.h"

#include "platform/jet/engine/RecordsetState.h"

namespace qvnd::jet {

Recordset::Recordset(std::unique_ptr<RecordsetState> state) : state_(std::move(state)) {}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

bool Recordset::Bof() const { return state_->Bof(); }
bool Recordset::Eof() const { return state_->Eof(); }
int Recordset::RecordCount() const { return state_->RecordCount(); }
const std::vector<Field>& Recordset::Fields() const { return state_->Fields(); }
Value Recordset::Get(QStringView field) const { return state_->Get(field); }
void Recordset::Set(QStringView field, const Value& value) { state_->Set(field, value); }
void Recordset::AddNew() { state_->AddNew(); }
void Recordset::Edit() { state_->Edit(); }
void Recordset::Update() { state_->Update(); }
void Recordset::Delete() { state_->Delete(); }
void Recordset::MoveFirst() { state_->MoveFirst(); }
void Recordset::MoveLast() { state_->MoveLast(); }
void Recordset::MoveNext() { state_->MoveNext(); }
void Recordset::FindFirst(const QString& condition) { state_->FindFirst(condition); }
bool Recordset::NoMatch() const { return state_->NoMatch(); }
void Recordset::Requery() { state_->Requery(); }
void Recordset::Close() { state_->Close(); }

} // namespace qvnd::jet
