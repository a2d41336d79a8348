#pragma once

#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/layout/PageModel.h"

// Borders as rules on a page.
namespace qvnd::layout {

// What a border takes beside its content.
double roomOf(const word::Border& side);

// Adds a border that begins and ends there, unless it is not visible.
void addRule(Layer& layer, const word::Border& side, PathPoint from, PathPoint to);

} // namespace qvnd::layout
