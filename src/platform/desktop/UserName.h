#pragma once

#include <QString>

namespace qvnd::desktop {

// The name of the user's account, as the system tells it; empty when it tells none.
QString userName();

} // namespace qvnd::desktop
