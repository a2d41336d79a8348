#include "outline/TemplateCopy.h"

#include "outline/BeyondAsked.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/OutlineFolders.h"

#include <algorithm>
#include <optional>

namespace qvnd::outline {

using desktop::Icon;

namespace {

const QString notice = QStringLiteral("提示");

// What a walk over the target's children finds out before it ends at a child of the same text.
struct Siblings {
    const OutlineNode* clash = nullptr;
    // The largest last part of the keys walked over.
    std::optional<std::int16_t> largest;
};

// Errors 13 and 6 for a part that is no number of 16 bits.
std::int16_t lastNumberOf(const QString& key) {
    const QStringView part = QStringView(key).mid(key.lastIndexOf(u'.') + 1);
    bool isPlain = false;
    const std::int16_t number = part.toShort(&isPlain);
    return isPlain ? number : jet::Value(part).ToInteger();
}

Siblings walk(const OutlineNode& target, const QString& text) {
    Siblings found;
    for (const OutlineNode* child : target.childList()) {
        if (child->Text() == text) {
            found.clash = child;
            break;
        }
        const std::int16_t number = lastNumberOf(child->Key());
        found.largest = std::max(found.largest.value_or(number), number);
    }
    return found;
}

QString numberBehind(const Siblings& siblings) {
    return QString::number(siblings.largest ? toInteger(*siblings.largest + 1) : 1);
}

} // namespace

TemplateCopy::TemplateCopy(modMain& state, Workbench& workbench, const Services& services)
    : state_(state), workbench_(workbench), services_(services),
      trvCurrent_(*state.gDbUser, workbench.TrvCurrent, services.splash) {}

Copied TemplateCopy::DragDrop(const QString& targetKey, const QString& sourceKey,
                              const OutlineNode* sourceNode) {
    if (sourceNode) {
        return guarded(targetKey, sourceKey, sourceNode);
    }
    jet::Workspace& workspace = *state_.gWs;
    const bool begins = !workspace.InTransaction();
    try {
        if (begins) {
            workspace.BeginTrans();
        }
        const Copied outcome = guarded(targetKey, sourceKey, nullptr);
        names_.reset();
        if (begins) {
            workspace.CommitTrans();
        }
        remarkLeftOut();
        return outcome;
    } catch (const RunTimeError& failure) {
        services_.messages.tell(desktop::descriptionOf(failure));
        return Copied::incomplete;
    }
}

Copied TemplateCopy::guarded(const QString& targetKey, const QString& sourceKey,
                             const OutlineNode* given) {
    try {
        return copy(targetKey, sourceKey, given);
    } catch (const RunTimeError& failure) {
        trvCurrent_.forget();
        names_.reset();
        tellFailure(failure, sourceKey);
        return Copied::incomplete;
    }
}

// The one that stopped the copy was named in its box; alone it needs no further word.
void TemplateCopy::remarkLeftOut() {
    if (leftOut_.size() > 1) {
        state_.Remarks << QStringLiteral("复制到“%1”停止了，没有复制 %2 项（连同它们的下级）：%3")
                              .arg(leftOut_.front())
                              .arg(leftOut_.size())
                              .arg(listed(leftOut_));
    }
}

// A node that is missing from a tree says nothing of what was being copied.
void TemplateCopy::tellFailure(const RunTimeError& failure, const QString& sourceKey) {
    const bool isNamed = failure.number() == error::elementNotFound;
    services_.messages.tell(
        failureText({}, failure, isNamed ? workbench_.TrvTemplate.find(sourceKey) : nullptr));
}

Copied TemplateCopy::copy(const QString& targetKey, const QString& sourceKey,
                          const OutlineNode* given) {
    if (targetKey.isEmpty()) {
        return Copied::stopped;
    }
    if (isRefusedByDocument()) {
        return refuse(QStringLiteral("文档下面不能包含文件夹，此时文档不能作为拖放对象."));
    }
    const OutlineNode& source = given ? *given : sourceOf(sourceKey);
    switch (source.Image()) {
    case image::document:
        return copyDocument(targetKey, sourceKey, source);
    case image::root:
        return copyChildren(targetKey, source);
    default:
        return copyFolder(targetKey, source);
    }
}

const OutlineNode& TemplateCopy::sourceOf(const QString& key) const {
    const OutlineNode* other = workbench_.TrvTemplate_Us.find(key);
    if (other && !workbench_.TrvTemplate.find(key)) {
        throw RunTimeError(
            error::elementNotFound,
            QStringLiteral("“%1”（%2）在“用户方案”中，不能复制。只能复制“施工方案模板”"
                           "中的节点。")
                .arg(other->Text(), key)
                .toStdU16String());
    }
    return workbench_.TrvTemplate.Item(key, workbench_.copySourceText);
}

// Looks at the node that is selected, which need not be the one that is copied.
bool TemplateCopy::isRefusedByDocument() const {
    if (workbench_.dropTargetImage != image::document) {
        return false;
    }
    return workbench_.TrvTemplate.Selected().Image() != image::document;
}

Copied TemplateCopy::copyFolder(const QString& targetKey, const OutlineNode& source) {
    const QString table = bareName(tableOfKey(targetKey));
    const OutlineNode& target = workbench_.TrvCurrent.Item(targetKey);
    const Siblings siblings = walk(target, source.Text());
    if (siblings.clash) {
        leftOut_ << source.Text();
        return refuse("[ " + source.Text() + " ]已存在,无法复制!");
    }
    const OutlineRow row = addRow(target, source, numberBehind(siblings));
    trvCurrent_.refill(table, &row, {});
    return copyChildren(row.key, source);
}

Copied TemplateCopy::copyDocument(const QString& targetKey, const QString& sourceKey,
                                  const OutlineNode& source) {
    const QString table = bareName(tableOfKey(targetKey));
    const OutlineNode& target = workbench_.TrvCurrent.Item(targetKey);
    const Siblings siblings = walk(target, source.Text());
    if (!siblings.clash) {
        const QString file = templateDocumentPath(state_, tableOfKey(sourceKey), sourceKey);
        const OutlineRow row = addRow(target, source, numberBehind(siblings));
        copyFile(file, documentPath(state_, table, row.key));
        trvCurrent_.refill(table, &row, targetKey);
        return Copied::copied;
    }
    const QString clashKey = siblings.clash->Key(); // the tree may change while the user is asked
    state_.gWs->Settle();
    names_.reset();
    if (!services_.messages.ask("[ " + source.Text() + " ]已存在，是否覆盖？", Icon::information,
                                notice)) {
        return Copied::incomplete;
    }
    const QString file = templateDocumentPath(state_, tableOfKey(sourceKey), sourceKey);
    copyFile(file, documentPath(state_, table, clashKey));
    // There is no new key here: the second copy bears what the walk over the children left.
    const QString left = siblings.largest ? QString::number(*siblings.largest) : QString();
    copyFile(file, store::planFolder(state_, table) + files::separator() + left + ".doc");
    trvCurrent_.refill(table, nullptr, targetKey);
    return Copied::copied;
}

Copied TemplateCopy::copyChildren(const QString& targetKey, const OutlineNode& source) {
    QStringList keys; // the nodes may be others behind a question
    QStringList names;
    for (const OutlineNode* child : source.childList()) {
        keys << child->Key();
        names << child->Text();
    }
    Copied outcome = Copied::copied;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const OutlineNode& child = workbench_.TrvTemplate.Item(keys[i]);
        outcome = std::max(outcome, DragDrop(targetKey, keys[i], &child));
        if (outcome == Copied::stopped) {
            leftOut_ << names.mid(i + 1);
            break;
        }
    }
    return outcome;
}

OutlineRow TemplateCopy::addRow(const OutlineNode& target, const OutlineNode& source,
                                const QString& number) {
    const OutlineNode* first = target.Child();
    const auto rs = state_.gDbUser->OpenRecordset("Select * From " + tableOfKey(target.Key()) +
                                                  " Where [key] = '" +
                                                  (first ? first->Key() : target.Key()) + u'\'');
    OutlineRow row{target.Key() + u'.' + number, source.Text(), source.Image() == image::document};
    outline::addRow(*rs, row);
    newKeys_ << row.key;
    return row;
}

// A template's document without a file is copied as its row alone.
void TemplateCopy::copyFile(const QString& file, const QString& target) {
    if (!names_) {
        names_.emplace(*state_.gFso);
    }
    if (state_.gFso->FileExists(file)) {
        state_.gFso->CopyFile(file, target, true);
    }
}

Copied TemplateCopy::refuse(const QString& text) {
    names_.reset();
    services_.messages.tell(text, Icon::information, notice);
    return Copied::stopped;
}

} // namespace qvnd::outline
