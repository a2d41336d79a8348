#pragma once

#include "platform/desktop/OneCommand.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/WorkSpaceTurn.h"
#include "platform/history/History.h"
#include "platform/jet/DBEngine.h"
#include "platform/jet/legacy/LegacyDatabase.h"
#include "store/FormatSwitches.h"
#include "store/LegacyTakeover.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace qvnd {

// The program-wide state: one object that start-up fills and that is handed down by reference.
// It lives for the whole run and has no lock, as the program has one thread. Folders end in the
// platform's separator.
struct modMain {
    // The program's own folder as the system names it, with or without a separator at its end.
    QString AppPath;
    QString HelpFile;
    QString gAppPath;     // AppPath with a separator
    QString gSysPath;     // gAppPath + "Sys/", spelt as it is on disk
    QString gWorkPath;    // where the finished document goes
    QString gUserTplPath; // Db_UsTemplate.mdb and one sub-folder for each plan
    QString gWordRoot;    // gWordRoot + "Templates/Normal.dot" is the template of new documents
    QString gAppTitle;

    std::unique_ptr<files::FileSystemObject> gFso;

    jet::DBEngine DBEngine;
    jet::Workspace* gWs = nullptr;
    // Open for the whole run.
    std::unique_ptr<jet::Database> gDbUser;
    std::unique_ptr<jet::Database> gDbTemplate;
    std::unique_ptr<jet::Database> gDbBidSet;
    // The roster, if there is one: opened and closed by the main window, no query runs on it.
    std::unique_ptr<jet::Database> gDbRoster;
    // A per-plan or per-template database, opened and closed by whoever needs it.
    std::unique_ptr<jet::Database> gDbPlan;

    // Opens the databases of older installations; without it they are not known as such.
    std::unique_ptr<jet::legacy::LegacyReader> gLegacyReader;
    // What became of those that this run came upon, in order.
    std::vector<store::LegacyTakeover> LegacyTakeovers;

    // The plan's name while the root of the current-plan tree is selected, empty otherwise.
    QString gSelectedPlan;

    // What the format dialog decides for the length of the run.
    qvnd::FormatSwitches FormatSwitches;

    // The user's command that runs, if one does.
    desktop::OneCommand Command;
    // What keeps the commands of several programs apart; null where no other program can be.
    std::unique_ptr<files::WorkSpaceTurn> Turn;

    // What leads back from every command; null where none is kept. It sees what gWs and gFso do,
    // and goes before them.
    std::unique_ptr<history::History> History;
    // What it has found left behind, until the user has been told.
    history::History::Found HistoryFound;

    // What the command under way has to tell beside its changes: sentences for the bar at its end.
    // The step of the history takes them; those that are left the command's caller shows.
    QStringList Remarks;

    // Set by the stop button of the progress dialog, cleared by the stop path of the generation.
    bool StopRequested = false;
};

} // namespace qvnd
