#pragma once

#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/layout/PageModel.h"

#include <cstddef>
#include <cstdint>

// Borders as rules on a page.
namespace qvnd::layout {

// What a border takes beside its content.
double roomOf(const word::Border& side);

// Strokes follow each other to the right and downwards: on the left and above towards the content,
// on the right and below away from it.
enum class StrokeOrder : std::uint8_t { fromOutside, fromInside };

// The distance between the middles of the first stroke and the last one.
double spanOf(const word::Border& side);
// The width of the first stroke.
double firstWidth(const word::Border& side, StrokeOrder order);

// Adds a rule for each stroke of a border, unless it is not visible; the first one begins and ends
// there.
void addRule(Layer& layer, const word::Border& side, PathPoint from, PathPoint to,
             StrokeOrder order);
// How many rules addRule() adds.
std::size_t ruleCount(const word::Border& side);

} // namespace qvnd::layout
