#pragma once

#include <QString>

#include <cstdint>

namespace qvnd::store {

enum class LegacyKind : std::uint8_t {
    plan,
    templateFolder,
    central, // one of the databases that stay open for the run
};

// What became of one database of an older installation.
struct LegacyTakeover {
    QString Name; // of the plan or template; of a central database the file's name
    LegacyKind Kind = LegacyKind::plan;
    int Rows = 0;             // of the outline
    int Tables = 0;           // of a central database
    bool Information = false; // its information table was there
    QString KeptAs{};         // the old file's new path
    QString Failure{};        // why it was not taken over; empty when it was
};

} // namespace qvnd::store
