#include "tools/HistoryCommands.h"

#include "outline/PutBack.h"
#include "outline/TakeBack.h"
#include "platform/history/StepWords.h"
#include "tools/Arguments.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QDate>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

using history::Change;
using history::Step;

const QString findOption = u"--find"_s;
const QString commandOption = u"--command"_s;
const QString sinceOption = u"--since"_s;
const QString untilOption = u"--until"_s;
const QString toOption = u"--to"_s;
const QString beforeFlag = u"--before"_s;

history::History& historyOf(Session& session) {
    history::History* history = session.programAsLeft().state().History.get();
    if (history == nullptr) {
        throw StartFailed(); // which was told at the start
    }
    return *history;
}

QString kindOf(const Step& step) {
    switch (step.kind) {
    case history::StepKind::command:
        break;
    case history::StepKind::unfinished:
        return u"未做完"_s;
    case history::StepKind::outside:
        return u"外部改动"_s;
    case history::StepKind::automatic:
        return u"程序自动"_s;
    }
    return u"操作"_s;
}

QString plansOf(const Step& step) { return step.plans().join(u'、'); }

QJsonObject jsonOf(const Step& step, std::int64_t head) {
    return {{"步", qint64{step.id}},
            {"上一步", qint64{step.parent}},
            {"时间", step.time.toString(Qt::ISODate)},
            {"方案", plansOf(step)},
            {"操作", step.title},
            {"种类", kindOf(step)},
            {"说明", step.note},
            {"现在", step.id == head}};
}

QString lineOf(const Step& step, std::int64_t head) {
    const QString kind = step.kind == history::StepKind::unfinished ? u"（未做完）"_s : QString();
    return u"%1%2\t%3\t%4\t%5%6"_s.arg(step.id == head ? u"*"_s : u" "_s)
        .arg(step.id)
        .arg(step.time.toString(u"yyyy-MM-dd HH:mm:ss"_s), plansOf(step), step.title, kind);
}

// The state that is: behind the last step that the list shows, whatever bookkeeping came then.
std::int64_t headOf(history::History& history) { return history.undoable().value_or(Step{}).id; }

QDate dateIn(const Arguments& arguments, const QString& option) {
    const QDate date = QDate::fromString(arguments.option(option), Qt::ISODate);
    if (arguments.hasOption(option) && !date.isValid()) {
        throw UsageError(u"日期应写成 2026-05-01 的样子：%1"_s.arg(arguments.option(option)));
    }
    return date;
}

// Which steps a list shows.
class Wanted {
public:
    explicit Wanted(const Arguments& arguments)
        : plan_(arguments.position(0)), command_(arguments.option(commandOption)),
          since_(dateIn(arguments, sinceOption)), until_(dateIn(arguments, untilOption)) {}

    bool has(const Step& step) const {
        const QDate date = step.time.date();
        const QStringList titles = step.titles();
        const bool isOfCommand =
            std::any_of(titles.begin(), titles.end(),
                        [this](const QString& title) { return title.startsWith(command_); });
        return !step.isBookkeeping() && (plan_.isEmpty() || step.plans().contains(plan_)) &&
               isOfCommand && (since_.isNull() || date >= since_) &&
               (until_.isNull() || date <= until_);
    }

private:
    QString plan_;
    QString command_;
    QDate since_;
    QDate until_;
};

ExitStatus list(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {findOption, commandOption, sinceOption, untilOption}});
    arguments.expectPositions(0, 1);
    const Wanted wanted(arguments);
    history::History& history = historyOf(session);
    const std::int64_t head = headOf(history);
    QJsonArray json;
    QStringList lines;
    for (const Step& step : history.stepsWith(arguments.option(findOption))) {
        if (wanted.has(step)) {
            json << jsonOf(step, head);
            lines << lineOf(step, head);
        }
    }
    session.output().result(json, lines.join('\n'));
    return ExitStatus::done;
}

std::int64_t numberIn(const Arguments& arguments) {
    bool isNumber = false;
    const std::int64_t number = arguments.position(0).toLongLong(&isNumber);
    if (!isNumber) {
        throw UsageError(u"步的编号应是数字：%1"_s.arg(arguments.position(0)));
    }
    return number;
}

// Null for a step that is not there, which then is told.
std::optional<Step> stepIn(Session& session, const Arguments& arguments) {
    std::optional<Step> step = historyOf(session).step(numberIn(arguments));
    if (!step) {
        session.output().note(u"操作历史中没有这一步：%1"_s.arg(arguments.position(0)));
    }
    return step;
}

ExitStatus show(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    history::History& history = historyOf(session);
    const std::optional<Step> step = stepIn(session, arguments);
    if (!step) {
        return ExitStatus::refused;
    }
    QStringList lines{lineOf(*step, headOf(history))};
    if (!step->note.isEmpty()) {
        lines << step->note;
    }
    QJsonArray changes;
    for (const history::Change& change : history.changesOf(step->id)) {
        lines << "  " + history::lineOf(change);
        changes << history::lineOf(change);
    }
    QJsonObject json = jsonOf(*step, headOf(history));
    json["改动"] = changes;
    session.output().result(json, lines.join('\n'));
    return ExitStatus::done;
}

void noteOfRestoration(Session& session) {
    if (const QString note = historyOf(session).note(); !note.isEmpty()) {
        session.output().note(note);
    }
}

using Take = std::optional<Step> (*)(modMain&, outline::Workbench&, const outline::Services&);

ExitStatus take(Session& session, const QStringList& words, Take step, const QString& nothing) {
    Arguments(words, {}).expectPositions(0, 0);
    ProgramRun& run = session.programAsLeft();
    if (session.hasEndedRestoration()) {
        session.output().note(u"没有再撤消或恢复；请看一看现在的状态，再操作。"_s);
        return ExitStatus::refused;
    }
    const std::optional<Step> taken = step(run.state(), run.workbench(), run.services());
    if (!taken) {
        session.output().note(nothing);
        return ExitStatus::refused;
    }
    noteOfRestoration(session);
    session.output().result(jsonOf(*taken, headOf(historyOf(session))), taken->title);
    return ExitStatus::done;
}

ExitStatus undo(Session& session, const QStringList& words) {
    return take(session, words, outline::undo, u"没有可以撤消的操作"_s);
}

ExitStatus redo(Session& session, const QStringList& words) {
    return take(session, words, outline::redo, u"没有可以恢复的操作"_s);
}

ExitStatus restore(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{beforeFlag}, {}});
    arguments.expectPositions(1, 1);
    std::int64_t step = numberIn(arguments);
    ProgramRun& run = session.programAsLeft();
    historyOf(session);
    if (step != history::beginning) {
        const std::optional<Step> wanted = stepIn(session, arguments);
        if (!wanted) {
            return ExitStatus::refused;
        }
        step = arguments.has(beforeFlag) ? wanted->parent : step;
    }
    outline::goToStep(run.state(), run.workbench(), run.services(), step);
    noteOfRestoration(session);
    session.output().result(qint64{step}, QString::number(step));
    return ExitStatus::done;
}

// The change of that key, path or name; a key or path counts more than a name, and the name before
// the step more than the one behind it. A node that was replaced has no name behind it.
std::optional<Change> changeOf(history::History& history, std::int64_t step, const QString& what) {
    using Name = QString (*)(const Change&);
    const std::initializer_list<Name> names = {
        [](const Change& change) { return change.key; }, &history::nameBefore,
        [](const Change& change) {
            return change.kind == Change::Kind::rowReplaced ? QString() : change.name;
        }};
    const QList<Change> changes = history.changesOf(step);
    for (const Name name : names) {
        for (const Change& change : changes) {
            if (name(change) == what && outline::canPutBack(change)) {
                return change;
            }
        }
    }
    return std::nullopt;
}

ExitStatus putBack(Session& session, std::int64_t step, const Change& change) {
    ProgramRun& run = session.programAsLeft();
    const outline::PutBack done =
        outline::putBackAndShow(run.state(), run.workbench(), run.services(), step, change);
    for (const QString& name : done.missing) {
        session.output().note(u"文件已不在，操作历史也没有保留：%1"_s.arg(name));
    }
    session.output().result(QJsonArray::fromStringList(done.names), done.names.join('\n'));
    return ExitStatus::done;
}

ExitStatus takeOne(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {toOption}});
    arguments.expectPositions(2, 2);
    history::History& history = historyOf(session);
    const std::optional<Step> step = stepIn(session, arguments);
    if (!step) {
        return ExitStatus::refused;
    }
    const std::optional<Change> change = changeOf(history, step->id, arguments.position(1));
    if (!change) {
        session.output().note(
            u"这一步没有移除或改动这样的节点或文件：%1"_s.arg(arguments.position(1)));
        return ExitStatus::refused;
    }
    if (!arguments.hasOption(toOption)) {
        return putBack(session, step->id, *change);
    }
    const QString target = QFileInfo(arguments.option(toOption)).absoluteFilePath();
    if (!session.mayWrite(target)) {
        return ExitStatus::refused;
    }
    const QString file = outline::fileBefore(session.programAsLeft().state(), step->id, *change);
    if (file.isEmpty()) {
        session.output().note(u"“%1”在这一步以前没有文件，或者操作历史没有保留它的内容。"_s.arg(
            history::nameBefore(*change)));
        return ExitStatus::refused;
    }
    history.takeOut(step->id, file, target);
    session.output().result(target, target);
    return ExitStatus::done;
}

} // namespace

std::vector<Command> historyCommands() {
    return {
        {"history list", "[方案] [--find 名称] [--command 操作] [--since 日期] [--until 日期]",
         "列出做过的操作，* 为现在的状态", list},
        {"history show", "步", "显示一步改动了什么", show},
        {"history undo", "", "撤消上一步操作", undo},
        {"history redo", "", "恢复撤消的操作", redo},
        {"history restore", "步 [--before]",
         "回到这一步之后的状态，0 为最早的状态；--before 回到这一步之前", restore},
        {"history take", "步 键|名称|文件 [--to 文件]",
         "放回，即一个节点或文件在这一步之前的样子；--to 只把文件的内容取出到别处，已有的文件要有 "
         "--yes 才替换",
         takeOne},
    };
}

} // namespace qvnd::tools
