#pragma once

#include "platform/history/StepWords.h"
#include "support/PlainSqlite.h"
#include "support/Planner.h"
#include "support/Text.h"
#include "whole/WorkSpaceState.h"

#include <gtest/gtest.h>

#include <QDirIterator>

#include <random>

namespace qvnd::model {

// What others do to the work space while the program runs: a word processor saves a document, a
// file is copied into a plan's folder, another tool changes a row. Nothing of it may be lost: it
// stays, or is kept by a step.
class OutsideWork {
public:
    OutsideWork(test::Planner& planner, std::mt19937& random)
        : planner_(planner), random_(random) {}

    // Saves a document of a plan, or copies a file in beside it, whose text no other file has.
    // False without a document.
    bool saveFile() {
        QStringList documents;
        QDirIterator at(planner_.folder.path("Sys/用户模板"), {"*.doc"}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (at.hasNext()) {
            const QString path = at.next();
            if (!path.contains(".~history")) {
                documents << path;
            }
        }
        if (documents.isEmpty()) {
            return false;
        }
        documents.sort();
        const QString& document = documents[number(documents.size())];
        number(3) == 0 ? copyIn(QFileInfo(document).path()) : save(document);
        return true;
    }

    // Changes a row of the open plan in the central database, or in its own one. The file that was
    // changed; empty without a plan.
    QString changeRow(const QString& plan) {
        const QString own = "Sys/用户模板/" + plan + "/" + plan + ".mdb";
        const QString file = number(2) == 0 ? own : "Sys/用户模板/Db_UsTemplate.mdb";
        const QString path = planner_.folder.path(file);
        planner_.state().gWs->Settle();
        if (plan.isEmpty() || !planner_.folder.exists(file)) {
            return {};
        }
        name_ = "外" + QString::number(++count_);
        lastStep_ = lastStep();
        test::PlainSqlite tool(path);
        tool.rows("UPDATE [" + plan + "] SET 名称='" + name_ + "' WHERE Key=(SELECT Key FROM [" +
                  plan + "] LIMIT 1)");
        return tool.rows("SELECT count(*) FROM [" + plan + "] WHERE 名称='" + name_ + "'") ==
                       QStringList("1")
                   ? path
                   : QString();
    }
    // A command that writes to the database, and changes nothing.
    void writeTo(const QString& database, const QString& plan) {
        const auto db = planner_.state().gWs->OpenDatabase(database);
        db->Execute("Delete * from [" + plan + "] where Key='没有'");
    }
    // The last changed row is in a step from outside, which names it where it is of the central
    // database.
    void expectRowKept(const QString& database) {
        const QString title = "外部改动[" + history::databaseWord(database) + "]";
        history::History& history = *planner_.state().History;
        for (const history::Step& step : history.steps()) {
            if (step.id > lastStep_ && step.kind == history::StepKind::outside &&
                step.title == title) {
                const QList<history::Change> changes = history.changesOf(step.id);
                EXPECT_TRUE(history::isOwnCopy(database) ||
                            std::any_of(changes.begin(), changes.end(), [this](const auto& change) {
                                return change.name == name_;
                            }));
                ++rowsKept;
                return;
            }
        }
        ADD_FAILURE() << "no step keeps the row " << name_.toStdString();
    }

    // Each saved file still stands, or a step since keeps it.
    void expectFilesKept() {
        for (auto saved = files_.begin(); saved != files_.end();) {
            if (contentOf(saved.key()) == saved->content) {
                ++saved;
                continue;
            }
            EXPECT_TRUE(isKept(saved.key(), *saved)) << saved.key().toStdString() << " is lost";
            ++filesKept;
            saved = files_.erase(saved);
        }
    }

    // The state as it was without this work: files under their earlier content, and without those
    // that were copied in, for which a folder stays.
    test::WorkSpaceState without(test::WorkSpaceState state) const {
        for (const QString& name : copied_) {
            state.remove(name);
            const QString folder = QFileInfo(name).path();
            const auto within = state.lowerBound(folder + '/');
            if (within == state.end() || !within.key().startsWith(folder + '/')) {
                state.remove(folder);
            }
        }
        for (auto earlier = earlier_.begin(); earlier != earlier_.end(); ++earlier) {
            const auto file = state.find(earlier.key());
            while (file != state.end() && earlier->contains(file->first())) {
                *file = QStringList((*earlier)[file->first()]);
            }
        }
        return state;
    }

    int filesKept = 0;
    int rowsKept = 0;

private:
    struct Saved {
        QByteArray content;
        std::int64_t behind = history::beginning; // the last step before
    };

    qsizetype number(qsizetype below) {
        return static_cast<qsizetype>(random_() % static_cast<unsigned>(below));
    }
    std::int64_t lastStep() {
        const QList<history::Step> steps = planner_.state().History->steps();
        return steps.isEmpty() ? history::beginning : steps.last().id;
    }
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QString digestOf(const QByteArray& content) {
        return QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
    }
    // Of a size that no other file has, as two writes may have one time.
    void write(const QString& path) {
        const QByteArray content = "outside " + QByteArray(++count_, 'x');
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        files_[path] = {content, lastStep()};
    }
    void copyIn(const QString& folder) {
        const QString path = folder + "/拷入" + QString::number(count_) + ".doc";
        write(path);
        copied_ << path.mid(planner_.folder.path().size());
    }
    void save(const QString& path) {
        const QString name = path.mid(planner_.folder.path().size());
        const QString before = digestOf(contentOf(path));
        write(path);
        if (!copied_.contains(name)) {
            earlier_[name][digestOf(files_[path].content)] = before;
        }
    }
    bool isKept(const QString& path, const Saved& saved) {
        history::History& history = *planner_.state().History;
        for (const history::Step& step : history.steps()) {
            if (step.id > saved.behind &&
                contentOf(history.contentBefore(step.id, path)) == saved.content) {
                return true;
            }
        }
        return false;
    }

    test::Planner& planner_;
    std::mt19937& random_;
    QMap<QString, Saved> files_;                    // by path
    QStringList copied_;                            // names in the state
    QMap<QString, QMap<QString, QString>> earlier_; // digests by later ones, by name
    QString name_;                                  // of the last changed row
    std::int64_t lastStep_ = history::beginning;    // before it
    int count_ = 0;
};

} // namespace qvnd::model
