#include "platform/jet/TableDef.h"

#include "platform/jet/Failure.h"

#include <algorithm>

namespace qvnd::jet {

namespace {

template <typename Item>
const Item* findNamed(const std::vector<Item>& items, QStringView name) {
    const auto found = std::find_if(items.begin(), items.end(), [&](const Item& item) {
        return name.compare(item.Name, Qt::CaseInsensitive) == 0;
    });
    return found == items.end() ? nullptr : &*found;
}

template <typename Item>
const Item& itemNamed(const std::vector<Item>& items, QStringView name) {
    const Item* found = findNamed(items, name);
    if (found == nullptr) {
        failItemNotFound(name);
    }
    return *found;
}

} // namespace

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

const Field* TableDef::FindField(QStringView name) const { return findNamed(Fields, name); }

const Field& TableDef::FieldNamed(QStringView name) const { return itemNamed(Fields, name); }

const Index& TableDef::IndexNamed(QStringView name) const { return itemNamed(Indexes, name); }

} // namespace qvnd::jet
