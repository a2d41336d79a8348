#include "outline/RecordedCommand.h"

#include "outline/BeyondAsked.h"
#include "outline/QueryText.h"
#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

QString selectedKey(const OutlineTree& tree) {
    const OutlineNode* node = tree.SelectedItem();
    return node == nullptr ? QString() : node->Key();
}

OutlineRows rowsNow(jet::Database& db, const QString& outline) {
    OutlineRows rows;
    ignoringErrors([&] {
        const auto rs =
            db.OpenRecordset("Select * from " + bracketedName(outline) + " order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            rows << std::pair(rs->Get(store::field::key).TextOrEmpty(),
                              rs->Get(store::field::name).TextOrEmpty());
        }
    });
    return rows;
}

// Behind the end of the program the databases are closed, and there is nobody to tell.
OutlineNow outlinesOf(const modMain& state) {
    return [&state](const QString& database, const QString& outline) {
        for (jet::Database* db : {state.gDbUser.get(), state.gDbTemplate.get()}) {
            if (db != nullptr && QFileInfo(db->Name()).fileName() == database) {
                return rowsNow(*db, outline);
            }
        }
        return OutlineRows();
    };
}

history::CommandFrame frameOf(modMain& state, const OutlineTree& tree, const QString& caption) {
    history::CommandFrame frame;
    frame.caption = spokenCaption(caption);
    if (tree.Count() > 0) {
        frame.plan = tree.Item(1).Key();
    }
    frame.selected = [&tree] {
        const OutlineNode* node = tree.SelectedItem();
        return node == nullptr ? std::pair<QString, QString>()
                               : std::pair(node->Key(), node->Text());
    };
    frame.note = [&state, rows = outlinesOf(state)](const history::CommandFrame& done,
                                                    const QList<history::Change>& changes) {
        const QString beyond = beyondAsked(done, changes, rows);
        QStringList lines = beyond.isEmpty() ? QStringList() : QStringList(beyond);
        if (const QString remarks = takeRemarks(state); !remarks.isEmpty()) {
            lines << remarks;
        }
        return lines.join(u'\n');
    };
    return frame;
}

} // namespace

QString takeRemarks(modMain& state) { return std::exchange(state.Remarks, {}).join(u'\n'); }

QString spokenCaption(const QString& caption) {
    static const QRegularExpression silent(u"\\s*\\(&.\\)|\\.\\.\\.|&"_s);
    return QString(caption).remove(silent).trimmed();
}

RecordedCommand::RecordedCommand(modMain& state, const OutlineTree& tree, const QString& caption,
                                 desktop::MessageBoxes& messages)
    : state_(state), isOpen_(state.History && !state.History->isUnderWay()), tree_(tree),
      caption_(spokenCaption(caption)), messages_(messages) {
    if (state.History == nullptr || !state.History->isUnderWay()) {
        state.Remarks.clear();
    }
    if (!isOpen_) {
        return;
    }
    history::CommandFrame frame = frameOf(state, tree, caption);
    frame.planBehind = [this, before = frame.plan] { return planBehind(before); };
    frame.goOnWithout = [this](const QString& reason) { return goesOnWithout(reason); };
    frame.leaveOut = [this](const QString& question) {
        return messages_.ask(question, desktop::Icon::exclamation, u"提示"_s);
    };
    state_.HistoryFound.add(state_.History->begin(frame));
}

bool RecordedCommand::isExit() const { return caption_ == history::caption::exit; }

bool RecordedCommand::goesOnWithout(const QString& reason) {
    wasAsked_ = true;
    const QString question =
        isExit() ? u"操作历史不能写入，退出时把大纲存入方案文件夹就不能撤消：\n%1\n\n仍要存吗？"
                   u"选“否”时大纲不会丢，只是方案文件夹中的那一份仍是旧的。"_s.arg(reason)
                 : u"操作历史不能写入，“%1”做了就不能撤消：\n%2\n\n"
                   u"要不记历史而继续工作吗？选“是”就执行，直到程序结束，"
                   u"所做的都不能撤消；选“否”就什么也不改动。"_s.arg(caption_, reason);
    return messages_.ask(question, desktop::Icon::exclamation, u"提示"_s);
}

// A command may open its plan itself; behind the deletion of a plan the tree is empty.
QString RecordedCommand::planBehind(const QString& planBefore) const {
    if (!about_.isEmpty()) {
        return about_;
    }
    return tree_.Count() > 0 ? tree_.Item(1).Key() : planBefore;
}

history::History* RecordedCommand::open() const {
    return isOpen_ && state_.History && state_.History->isUnderWay() ? state_.History.get()
                                                                     : nullptr;
}

RecordedCommand::~RecordedCommand() {
    ignoringErrors([this] { close(); });
}

// The step of a start may have taken that of a killed command into itself.
history::History::Outcome RecordedCommand::close() {
    history::History* opened = open();
    isOpen_ = false;
    if (opened == nullptr) {
        return {};
    }
    history::History::Outcome outcome = opened->finish(selectedKey(tree_));
    if (outcome.step && outcome.step->kind == history::StepKind::unfinished) {
        state_.HistoryFound.unfinished = outcome.step;
    }
    wasRefused_ = !outcome.refusal.isEmpty();
    return outcome;
}

std::optional<history::Step> RecordedCommand::finish() {
    const history::History::Outcome outcome = close();
    if (wasRefused_) {
        tellRefusal(outcome);
    }
    if (!outcome.note.isEmpty()) {
        state_.Remarks << outcome.note;
    }
    return outcome.step;
}

void RecordedCommand::tellRefusal(const history::History::Outcome& outcome) {
    if (outcome.stands) {
        messages_.tell(u"“%1”所做的不能记入操作历史，也没有能全部收回：\n%2\n\n"
                       u"下一个操作以前或下次启动时会再记一次，那以后可以撤消它。"_s.arg(
                           caption_, outcome.refusal),
                       desktop::Icon::exclamation, u"提示"_s);
    } else if (isExit()) {
        if (!wasAsked_) {
            messages_.tell(u"退出时没有把大纲存入方案文件夹，因为操作历史不能写入：\n%1\n\n"
                           u"大纲不会丢，只是方案文件夹中的那一份仍是旧的。"_s.arg(outcome.refusal),
                           desktop::Icon::exclamation, u"提示"_s);
        }
    } else if (outcome.mayGoOnWithout &&
               messages_.ask(u"“%1”没有执行，因为操作历史不能写入，做了就不能撤消：\n%2\n\n"
                             u"要不记历史而继续工作吗？选“是”后请再操作一次；直到程序结束，"
                             u"所做的都不能撤消。"_s.arg(caption_, outcome.refusal),
                             desktop::Icon::exclamation, u"提示"_s)) {
        state_.History->goOnWithout();
    }
}

} // namespace qvnd::outline
