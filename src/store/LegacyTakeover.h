#pragma once

#include <QString>

namespace qvnd::store {

// What became of one plan or template of an older installation.
struct LegacyTakeover {
    QString Name;
    bool IsPlan = false;      // else a template
    int Rows = 0;             // of the outline
    bool Information = false; // its information table was there
    QString KeptAs;           // the old file's new path
    QString Failure;          // why it was not taken over; empty when it was
};

} // namespace qvnd::store
