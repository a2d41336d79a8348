#include "startup/StatusPanels.h"

namespace qvnd::startup {

std::array<QString, 3> statusPanels(const QString& userName, const QString& gWorkPath,
                                    const QDate& today) {
    return {"当前用户： " + userName, "当前工作路径： " + gWorkPath,
            "今天是： " + today.toString(QStringLiteral("yyyy年MM月dd日"))};
}

} // namespace qvnd::startup
