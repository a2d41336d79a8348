#pragma once

#include "store/modMain.h"

#include <QString>

#include <vector>

namespace qvnd::generate {

// A text that the document of one plan would bear although it belongs to another: the format
// settings exist once for all plans, and the cover takes the names of a plan only when the format
// dialog is loaded with that plan open.
struct ForeignText {
    QString what; // a sentence for the user
    // Whether the next load of the format dialog puts this plan's text in its place.
    bool goesWithLoad = false;
};

// The texts on cover, header and footer, as generation would choose and type them, that belong to
// another plan of 遍历表: a project name, header or footer that has the other plan's name in it and
// not the own one, and a 单位名称 that is the other plan's 施工单位 while this plan has one of its
// own. What cannot be read is passed over; nothing is changed.
std::vector<ForeignText> textsOfOtherPlans(modMain& state, const QString& plan);

} // namespace qvnd::generate
