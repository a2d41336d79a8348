#pragma once

#include "platform/jet/Workspace.h"

namespace qvnd::jet {

// The locale that every database of this program is created with.
inline constexpr char16_t dbLangGeneral[] = u";LANGID=0x0409;CP=1252;COUNTRY=0";

// The engine: owns the default workspace, the only one there is.
class DBEngine {
public:
    // The only index is 0; another raises error 3265.
    Workspace& Workspaces(int index);

private:
    Workspace first_;
};

} // namespace qvnd::jet
