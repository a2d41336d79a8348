#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace qvnd::history {

// The first state of all, before any step.
inline constexpr std::int64_t beginning = 0;

// Captions of what the program does by itself, which nobody has asked for.
namespace caption {
inline const QString start = QStringLiteral("启动");
inline const QString exit = QStringLiteral("退出");
inline bool isAutomatic(const QString& caption) { return caption == start || caption == exit; }
} // namespace caption

enum class StepKind {
    command = 0,
    unfinished = 1, // a command that the process did not live to end
    outside = 2,    // what another program had changed, kept before it was replaced
    automatic = 3,  // what the program did by itself when it started or ended
};

// One change in words, as the user reads it.
struct Change {
    enum class Kind {
        rowAdded,
        rowRemoved,
        rowChanged,
        tableMade,
        tableDropped,
        fileAdded,
        fileRemoved,
        fileReplaced,
        rowReplaced, // the key stays, and another node bears it now
    };
    Kind kind = Kind::rowChanged;
    QString database;   // file name of the database; empty for a file
    QString table;      // empty for a file
    QString key;        // of an outline's row, and an outline's own; the whole path of a file
    QString name;       // of a row; the file's name
    QString nameBefore; // of a row that has another name now, and of the node that was replaced

    // Whether it is about a table as a whole.
    bool isOfTable() const { return kind == Kind::tableMade || kind == Kind::tableDropped; }
    friend bool operator==(const Change&, const Change&) = default;
};

// One step of the history: a state of the work space and how it came from its parent's.
struct Step {
    std::int64_t id = beginning;
    std::int64_t parent = beginning;
    StepKind kind = StepKind::command;
    QDateTime time;
    QString title; // "删除[施工部署]"; of joined steps "删除[施工部署]、添加[封面]等"
    QString plan;    // the plan that was open, of joined steps a line each; empty without one
    QString program; // that ran the command
    QString note;    // what the command did beyond what its title says; empty for nothing
    // Bookkeeping alone: which plan is open, a plan's own copy of its tables. 撤消 passes it by.
    bool isMinor = false;
    QString selectedBefore; // keys of the selected node
    QString selectedAfter;
    QStringList joinedTitles; // of the steps that it was joined of, each once; empty for a command

    // Whether no command of the user has made it.
    bool isAutomatic() const { return kind == StepKind::outside || kind == StepKind::automatic; }
    QStringList titles() const {
        return joinedTitles.isEmpty() ? QStringList{title} : joinedTitles;
    }
    QStringList plans() const { return plan.split(u'\n', Qt::SkipEmptyParts); }
    // Whether a list of steps leaves it out.
    bool isBookkeeping() const { return isMinor && kind != StepKind::outside; }
};

// Asks the user, in the words that it is given; false says no. Null counts as no.
using Question = std::function<bool(const QString&)>;

// What is known of a command when it begins.
struct CommandFrame {
    QString caption; // of the menu item or button; "删除"
    QString plan;    // that is open as the command begins
    QString selectedKey;
    QString selectedName;
    // Tells key and name of the selected node when the command begins to change something: it may
    // have selected its node itself.
    std::function<std::pair<QString, QString>()> selected;
    // Tells, behind the command, what it did beyond what was asked.
    std::function<QString(const CommandFrame&, const QList<Change>&)> note;
    // Asks the user, before anything is changed, whether commands may go on without being recorded;
    // it is given the reason.
    Question goOnWithout = {};
    // Tells, behind the command, which plan it was about; null for `plan`.
    std::function<QString()> planBehind = {};
    // Asks whether an undo or redo may leave out files that are out of reach.
    Question leaveOut = {};
};

} // namespace qvnd::history
