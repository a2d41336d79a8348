#pragma once

#include "outline/TreeDrag.h"
#include "support/OutlineWorld.h"

#include <functional>

namespace qvnd::test {

// A disk whose failures a test decides: `fail` is asked before each call and gives the number of
// the error to raise, 0 for none.
class FailingDisk : public files::DiskFileSystem {
public:
    enum class Call { copy, remove };
    using Failure = std::function<long(Call, const QString& path)>;
    explicit FailingDisk(Failure fail) : fail_(std::move(fail)) {}

    void CopyFile(const QString& source, const QString& target, bool overwrite) override {
        raise(Call::copy, target);
        DiskFileSystem::CopyFile(source, target, overwrite);
    }
    void DeleteFile(const QString& path) override {
        raise(Call::remove, path);
        DiskFileSystem::DeleteFile(path);
    }

private:
    void raise(Call call, const QString& path) {
        if (const long number = fail_(call, path)) {
            throw RunTimeError(number, u"磁盘出错");
        }
    }

    Failure fail_;
};

// Does something when a box is shown: `onBox` gets how many were shown.
class ActingMessageBoxes : public desktop::MessageBoxes {
public:
    desktop::Answer show(const desktop::Message& message) override {
        shown.push_back(message);
        if (onBox) {
            onBox(shown.size());
        }
        return desktop::declined(message);
    }
    bool askForRetry(const QString& text, desktop::Icon icon, const QString& title) override {
        tell(text, icon, title);
        return shown.size() < mostBoxes;
    }
    std::function<void(std::size_t)> onBox;
    std::size_t mostBoxes = 100;
    std::vector<desktop::Message> shown;
};

// An OutlineWorld with what dragging and pasting start from: plans with files, templates with
// files, and a current plan.
class DragWorld : public OutlineWorld {
public:
    // As makePlan; each document has a file whose text is its key. The plan becomes the current
    // one and is shown in TrvCurrent.
    void plan(const QStringList& rows) {
        makePlan(rows);
        makeCurrent(rows.front());
        for (const QString& row : rows) {
            if (row.endsWith(u'd')) {
                folder.write(documentName(row.chopped(1)), row.chopped(1).toUtf8());
            }
        }
        openPlan(rows.front());
    }
    void makeCurrent(const QString& name) {
        state.gDbUser->Execute("Delete * from 当前表");
        const auto rs = state.gDbUser->OpenRecordset("Select * from 当前表");
        rs->AddNew();
        rs->Set(u"名称", name);
        rs->Update();
    }

    // A system template in TrvTemplate, with a file for each document whose text is its key.
    void systemTemplate(const std::vector<OutlineRowText>& rows) {
        const QString name = rows.front().key;
        makeTable(*state.gDbTemplate, name, rows);
        registerName(*state.gDbTemplate, name);
        folder.makeFolder("Sys/标书模板/" + name);
        for (const auto& row : rows) {
            if (row.isDocument == "是") {
                folder.write("Sys/标书模板/" + name + "/" + row.key + ".doc", row.key.toUtf8());
            }
        }
        const auto rs = state.gDbTemplate->OpenRecordset("Select * from " + name);
        outline::FillOutlineTree(*rs, workbench.TrvTemplate);
    }

    static QString documentName(const QString& key) {
        return "用户模板/" + outline::tableOfKey(key) + "/" + key + ".doc";
    }
    QByteArray document(const QString& key) const { return folder.read(documentName(key)); }
    // The names of the documents in the plan's folder.
    QStringList documents(const QString& plan = "T") const {
        return folder.names("用户模板/" + plan).filter(".doc");
    }

    outline::Dropped dropOn(const QString& key) {
        outline::OutlineNode& node = workbench.TrvCurrent.Item(key);
        outline::OLEDragOver(workbench, &node);
        return outline::OLEDragDrop(state, workbench, services(), &node);
    }
    void startDrag(const QString& key) {
        workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(key));
        outline::OLEStartDrag(workbench);
    }
    outline::Dropped drag(const QString& key, const QString& targetKey) {
        startDrag(key);
        return dropOn(targetKey);
    }
    // As MouseDown in TrvTemplate does it, then the drop.
    outline::Dropped dragTemplate(const QString& key, const QString& targetKey) {
        outline::OutlineTree& tree = workbench.TrvTemplate;
        tree.Select(&tree.Item(key));
        workbench.copySourceKey = key;
        return dropOn(targetKey);
    }
};

} // namespace qvnd::test
