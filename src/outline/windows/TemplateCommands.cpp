#include "outline/windows/TemplateCommands.h"

#include "outline/BrowseTemplate.h"
#include "outline/DeleteTemplate.h"
#include "outline/windows/WorkbenchCommands.h"

namespace qvnd::outline {

void deleteTemplate(const WorkbenchParts& parts) {
    mnuDelTemplate(parts.state, parts.workbench, parts.services);
}

void browseTemplate(const WorkbenchParts& parts) {
    mnuBroTemplate(parts.state, parts.workbench, parts.services.messages, parts.preview);
}

} // namespace qvnd::outline
