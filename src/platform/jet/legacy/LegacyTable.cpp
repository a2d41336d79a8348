#include "platform/jet/legacy/LegacyDatabase.h"

namespace qvnd::jet::legacy {

int LegacyTable::PositionOf(QStringView field) const {
    for (std::size_t i = 0; i < Fields.size(); ++i) {
        if (field.compare(Fields[i].Name, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace qvnd::jet::legacy
