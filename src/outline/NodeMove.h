#pragma once

#include "outline/DocumentMove.h"
#include "outline/Services.h"
#include "outline/Workbench.h"
#include "platform/error/RecordedErrors.h"
#include "store/modMain.h"

#include <QSet>
#include <QString>

#include <memory>
#include <optional>

namespace qvnd::outline {

enum class Moved {
    moved,
    // Dropped on itself, or the root: nothing to do.
    notMovable,
    // There is no row of the node or of the target, or no key for the new place: 16-bit numbers
    // are used up, the target's key is no key, or a key would be longer than its field. Nothing
    // was changed.
    notPossible,
};

// Moves the node dragKey of the open plan: before a document, or into a folder as its first child.
// The node and all that is below a folder get new keys, and their documents new file names. Works
// on the plan that 当前表 names, in the working database alone.
//
// Nothing but a document in use is told to the user: a failing statement is recorded and the rest
// goes on, so a failure leaves what the other statements made of the table. There is no look at
// the depth, at a folder coming below a document, or at a node going into its own child; what is
// below a moved document keeps its keys.
class NodeMove {
public:
    NodeMove(modMain& state, Workbench& workbench, const Services& services);

    // Runs once. At its end dragKey is empty.
    Moved run(const OutlineNode& target);

    const QString& newKey() const { return newKey_; }
    // The first statement that failed; nothing when all went well.
    const std::optional<RunTimeError>& failure() const { return errors_.first(); }

private:
    struct Row {
        QString key;
        jet::Value name;
        jet::Value kind; // 是否文档
        std::int16_t id = 0;
        bool isDocument() const;
    };

    bool prepare(const QString& targetKey);
    bool find(const QString& key, Row& row);
    bool formNewKey();
    bool keysFit();
    void copyFiles();
    bool moveRows();
    void takeOut();
    void putBack();
    void putDescendantsLast();
    void renameDescendants();
    void addFromTemp();
    void execute(const QString& statement);
    QSet<QString> keysNow();
    void refreshTrees();
    QString moved(const QString& key) const;
    QString below() const;

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    RecordedErrors errors_;
    QString plan_;
    QString dragKey_;
    QString newKey_;
    bool upward_ = false;
    Row source_;
    Row target_;
    std::unique_ptr<jet::Recordset> rows_;
    std::optional<DocumentMove> documents_;
};

} // namespace qvnd::outline
