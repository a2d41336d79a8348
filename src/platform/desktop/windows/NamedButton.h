#pragma once

#include <QPushButton>
#include <QString>

namespace qvnd::desktop {

// A button with the name by which it is found, and what a screen reader speaks.
inline QPushButton* namedButton(const QString& name, const QString& caption,
                                const QString& spoken) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setAccessibleName(spoken);
    return made;
}

} // namespace qvnd::desktop
