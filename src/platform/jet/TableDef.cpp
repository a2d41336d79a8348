#include "platform/jet/TableDef.h"

#include "platform/jet/Failure.h"

#include <algorithm>

namespace qvnd::jet {

Field TableDef::CreateField(const QString& name, FieldType type, int size) {
    Field field;
    field.Name = name;
    field.Type = type;
    if (type == FieldType::Text) {
        field.Size = size > 0 ? size : defaultTextSize;
    }
    return field;
}

Index TableDef::CreateIndex(const QString& name, bool primary, bool unique, QStringList fields) {
    return Index{name, primary, unique, std::move(fields)};
}

const Field* TableDef::FindField(QStringView name) const {
    const auto found = std::find_if(Fields.begin(), Fields.end(), [&](const Field& field) {
        return name.compare(field.Name, Qt::CaseInsensitive) == 0;
    });
    return found == Fields.end() ? nullptr : &*found;
}

const Field& TableDef::FieldNamed(QStringView name) const {
    const Field* found = FindField(name);
    if (found == nullptr) {
        failItemNotFound(name);
    }
    return *found;
}

} // namespace qvnd::jet
