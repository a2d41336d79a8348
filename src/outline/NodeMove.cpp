#include "outline/NodeMove.h"

#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "outline/TreeLoading.h"
#include "store/Names.h"
#include "store/PlanLists.h"

#include <algorithm>

namespace qvnd::outline {

namespace {

// The width of the field of a key.
constexpr qsizetype longestKey = 255;

} // namespace

bool NodeMove::Row::isDocument() const { return kind.TextOrEmpty() == u"是"; }

NodeMove::NodeMove(modMain& state, Workbench& workbench, const Services& services)
    : state_(state), workbench_(workbench), services_(services) {}

Moved NodeMove::run(const OutlineNode& target) {
    dragKey_ = workbench_.dragKey;
    if (target.Key() == dragKey_ || workbench_.dragIndex == 1) {
        workbench_.dragKey.clear();
        return Moved::notMovable;
    }
    upward_ = target.Index() <= workbench_.dragIndex;
    if (!prepare(target.Key())) {
        workbench_.dragKey.clear();
        return Moved::notPossible;
    }
    copyFiles();
    if (moveRows()) {
        documents_->deleteOld(keysNow());
    }
    workbench_.dragKey = newKey_;
    refreshTrees();
    workbench_.dragKey.clear();
    return Moved::moved;
}

// Finds out all that the later statements are built from; they would strike the wrong rows without.
bool NodeMove::prepare(const QString& targetKey) {
    return errors_.statement([&] {
        jet::Database& db = *state_.gDbUser;
        plan_ = bareName(store::openCurrentPlan(db)->Get(store::field::name).TextOrEmpty());
        rows_ = db.OpenRecordset("Select * From " + plan_);
    }) && find(dragKey_, source_) &&
           find(targetKey, target_) && formNewKey() && keysFit();
}

bool NodeMove::find(const QString& key, Row& row) {
    return errors_.statement([&] {
        rows_->FindFirst("key = '" + key + u'\'');
        // An apostrophe in the key could make the condition another one.
        if (rows_->NoMatch() ||
            rows_->Get(store::field::key).ToText().compare(key, Qt::CaseInsensitive)) {
            throw RunTimeError(
                error::noCurrentRecord,
                QStringLiteral("方案“%1”中没有编号为“%2”的行").arg(plan_, key).toStdU16String());
        }
        row.key = rows_->Get(store::field::key).ToText();
        row.name = rows_->Get(store::field::name);
        row.kind = rows_->Get(store::field::isDocument);
        row.id = rows_->Get(store::field::id).ToInteger();
    });
}

bool NodeMove::formNewKey() {
    return errors_.statement([&] {
        rows_->MoveLast();
        const std::int16_t lastId = rows_->Get(store::field::id).ToInteger();
        const std::int16_t base = toInteger(lastId - toInteger(rows_->RecordCount()));
        const QString parent = target_.isDocument() ? parentKeyOf(target_.key) : target_.key;
        const auto family = rowsLike(*state_.gDbUser, plan_, parent);
        newKey_ = outline::newKey(parent, base, toInteger(family->RecordCount()));
        if (!isKeyOf(tableOfKey(newKey_), newKey_)) {
            throw RunTimeError(
                error::keyInvalid,
                QStringLiteral("“%1”不是节点的编号，不能移到那里").arg(parent).toStdU16String());
        }
    });
}

QString NodeMove::moved(const QString& key) const {
    return QString(key).replace(dragKey_, newKey_, Qt::CaseSensitive);
}

// The condition for the rows below the moved folder.
QString NodeMove::below() const { return " Where instr(key,'" + dragKey_ + ".') > 0"; }

// A row whose new key the field cannot take would be cut off from its parent.
bool NodeMove::keysFit() {
    return errors_.statement([&] {
        qsizetype longest = newKey_.size();
        if (!source_.isDocument()) {
            const auto rs = state_.gDbUser->OpenRecordset("Select key From " + plan_ + below());
            for (; !rs->Eof(); rs->MoveNext()) {
                longest = std::max(longest, moved(rs->Get(store::field::key).ToText()).size());
            }
        }
        if (longest > longestKey) {
            throw RunTimeError(error::textTooLong, u"移动后的键超过 255 个字符，不能移动");
        }
    });
}

void NodeMove::copyFiles() {
    documents_.emplace(state_, services_.messages, errors_, plan_);
    if (source_.isDocument()) {
        documents_->copy(dragKey_, newKey_);
        return;
    }
    const files::NameScope names(*state_.gFso);
    errors_.statement([&] {
        const auto rs = state_.gDbUser->OpenRecordset("Select * From " + plan_ + below());
        for (; !rs->Eof(); rs->MoveNext()) {
            if (rs->Get(store::field::isDocument).TextOrEmpty() == u"是") {
                const QString key = rs->Get(store::field::key).ToText();
                documents_->copy(key, moved(key));
            }
        }
    });
}

// The changes last together, so that a killed process leaves the earlier outline or the new one.
// True when they last.
bool NodeMove::moveRows() {
    jet::Workspace& workspace = *state_.gWs;
    const bool begun =
        !workspace.InTransaction() && errors_.statement([&] { workspace.BeginTrans(); });
    takeOut();
    putBack();
    if (!upward_ && !source_.isDocument()) {
        putDescendantsLast();
    }
    if (!source_.isDocument()) {
        renameDescendants();
    }
    return errors_.statement([&] { begun ? workspace.CommitTrans() : workspace.Settle(); });
}

void NodeMove::execute(const QString& statement) {
    errors_.statement([&] { state_.gDbUser->Execute(statement); });
}

void NodeMove::takeOut() {
    execute("Delete From " + plan_ + " Where [Key] = '" + dragKey_ + u'\'');
    execute(QStringLiteral("Delete * FROM  temp"));
    const QString behind =
        QStringLiteral(" Where [id] %1 %2")
            .arg(target_.isDocument() ? QStringLiteral(">=") : QStringLiteral(">"))
            .arg(target_.id);
    // Rows that did not get into the scratch table stay.
    if (errors_.statement(
            [&] { state_.gDbUser->Execute("Insert Into temp Select * From " + plan_ + behind); })) {
        execute("Delete From " + plan_ + behind);
    }
}

void NodeMove::putBack() {
    errors_.statement([&] {
        rows_->AddNew();
        rows_->Set(store::field::name, source_.name);
        rows_->Set(store::field::key, newKey_);
        rows_->Set(store::field::isDocument, source_.kind);
        rows_->Update();
    });
    addFromTemp();
}

void NodeMove::addFromTemp() {
    errors_.statement([&] {
        const auto temp = state_.gDbUser->OpenRecordset(QStringLiteral("Select * From temp"));
        for (; !temp->Eof(); temp->MoveNext()) {
            errors_.statement([&] { addRowOf(*rows_, *temp); });
        }
    });
}

// Rows below the folder may stand before the place where it is now, and a child has to come behind
// its parent.
void NodeMove::putDescendantsLast() {
    execute(QStringLiteral("Delete From temp"));
    if (errors_.statement([&] {
            state_.gDbUser->Execute("Insert Into temp Select * From " + plan_ + below());
        })) {
        execute("Delete From " + plan_ + below());
        addFromTemp();
    }
}

void NodeMove::renameDescendants() {
    errors_.statement([&] {
        const auto rs = state_.gDbUser->OpenRecordset("Select * From " + plan_ + below());
        for (; !rs->Eof(); rs->MoveNext()) {
            errors_.statement([&] {
                const QString newKey = moved(rs->Get(store::field::key).ToText());
                rs->Edit();
                rs->Set(store::field::key, newKey);
                rs->Update();
            });
        }
    });
}

QSet<QString> NodeMove::keysNow() {
    QSet<QString> keys;
    errors_.statement([&] {
        const auto rs = state_.gDbUser->OpenRecordset("Select key From " + plan_);
        for (; !rs->Eof(); rs->MoveNext()) {
            keys.insert(rs->Get(store::field::key).TextOrEmpty());
        }
    });
    return keys;
}

void NodeMove::refreshTrees() {
    errors_.statement([&] { rows_->Close(); });
    OutlineTree& tree = workbench_.TrvCurrent;
    errors_.statement([&] {
        const auto rs = state_.gDbUser->OpenRecordset("Select * From " + plan_);
        tree.Clear();
        updateTree(*rs, tree, {}, services_.splash);
    });
    refreshUserPlans(state_, workbench_, services_.messages, services_.splash);
    errors_.statement([&] { tree.Select(&tree.Item(newKey_)); });
    execute(QStringLiteral("Delete From temp"));
}

} // namespace qvnd::outline
