#include "tools/Command.h"

#include "tools/CheckCommand.h"
#include "tools/DocCommands.h"
#include "tools/FormatCommands.h"
#include "tools/FormatLibraryCommands.h"
#include "tools/GenerateCommand.h"
#include "tools/HistoryCommands.h"
#include "tools/ImportLegacyCommand.h"
#include "tools/OutlineCommands.h"
#include "tools/OutlineDragCommands.h"
#include "tools/OutlineEditCommands.h"
#include "tools/PageCommands.h"
#include "tools/PlanCommands.h"
#include "tools/PlanDeletion.h"
#include "tools/RegistryCommands.h"
#include "tools/SimilarCommand.h"
#include "tools/TemplateCommands.h"

namespace qvnd::tools {

std::vector<Command> commandTable() {
    std::vector<Command> table;
    for (const auto& group :
         {planCommands(), planDeletion(), importLegacyCommands(), outlineCommands(),
          outlineEditCommands(), outlineDragCommands(), templateCommands(), similarCommands(),
          historyCommands(), formatCommands(), formatLibraryCommands(), checkCommands(),
          generateCommands(), docCommands(), pageCommands(), registryCommands()}) {
        table.insert(table.end(), group.begin(), group.end());
    }
    return table;
}

} // namespace qvnd::tools
