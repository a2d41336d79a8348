#pragma once

namespace qvnd::outline {

struct WorkbenchParts;

// The commands of the pop-up of TrvTemplate, mnuDelTemplate and mnuBroTemplate.
void deleteTemplate(const WorkbenchParts& parts);
void browseTemplate(const WorkbenchParts& parts);

} // namespace qvnd::outline
