#include "outline/LibraryTree.h"

#include "outline/InformationTable.h"
#include "outline/TreeLoading.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/Names.h"

#include <functional>

namespace qvnd::outline {

namespace {

class LibraryRefresh {
public:
    LibraryRefresh(modMain& state, jet::Database& db, OutlineTree& tree, bool keepMissing,
                   desktop::SplashScreen& splash)
        : state_(state), db_(db), tree_(tree), splash_(splash), keepMissing_(keepMissing),
          isTemplates_(tree.Name() == u"TrvTemplate") {}

    // True when an error is pending at the end.
    bool run() {
        tree_.Clear();
        statement([&] {
            list_ = db_.OpenRecordset(QStringLiteral("Select * from 遍历表"));
            for (; !list_->Eof(); list_->MoveNext()) {
                statement([&] { visit(list_->Get(store::field::name).ToText()); });
            }
        });
        return pending_;
    }

private:
    using Statement = std::function<void()>;

    void statement(const Statement& action) {
        try {
            action();
        } catch (const RunTimeError&) {
            pending_ = true;
        }
    }

    QString folderOf(const QString& name) const {
        return isTemplates_ ? state_.gSysPath + "标书模板" + files::separator() + name
                            : state_.gUserTplPath + name;
    }

    void visit(const QString& name) {
        if (state_.gFso->FolderExists(folderOf(name))) {
            load(name);
        } else if (isTemplates_ || !keepMissing_) {
            forget(name);
        }
    }

    void load(const QString& name) {
        try {
            const auto rs = db_.OpenRecordset("Select * from " + name + " order by ID asc");
            updateTree(*rs, tree_, {}, splash_);
        } catch (const RunTimeError& failure) {
            if (failure.number() != error::tableNotFound) {
                throw;
            }
            dropRowWithoutTable(name);
        }
    }

    void dropRowWithoutTable(const QString& name) {
        statement([&] { list_->Delete(); });
        if (isTemplates_) {
            const QString file = folderOf(name) + files::separator() + name + ".mdb";
            if (state_.gFso->FileExists(file)) {
                statement([&] { state_.gFso->DeleteFile(file); });
            }
        }
    }

    void forget(const QString& name) {
        statement([&] { list_->Delete(); });
        if (db_.TableDefs().Contains(name)) {
            statement([&] { db_.TableDefs().Delete(name); });
        }
        if (hasInformationTable(db_, name)) {
            statement([&] { deleteInformationTable(db_, name); });
        }
    }

    modMain& state_;
    jet::Database& db_;
    OutlineTree& tree_;
    desktop::SplashScreen& splash_;
    bool keepMissing_;
    bool isTemplates_;
    std::unique_ptr<jet::Recordset> list_;
    bool pending_ = false;
};

} // namespace

void updateTreeTemplate(modMain& state, jet::Database& db, OutlineTree& tree, bool keepMissing,
                        desktop::MessageBoxes& messages, desktop::SplashScreen& splash) {
    const bool pending = LibraryRefresh(state, db, tree, keepMissing, splash).run();
    splash.unload();
    if (pending) {
        messages.tell(QStringLiteral("更新标书模板库时发生错误!"), desktop::Icon::exclamation);
    }
}

} // namespace qvnd::outline
