#include "outline/AddFiles.h"

#include "outline/AddDocument.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace qvnd::outline {

namespace {

// More names of one reason are only counted, so that the box stays on the screen.
constexpr qsizetype mostListed = 20;
// So many fit into the bar.
constexpr qsizetype mostRemarks = 5;

// Answers the question for a file with the one at hand.
class GivenFile : public desktop::FileDialogs {
public:
    explicit GivenFile(const QString& file)
        : file_{QDir::toNativeSeparators(file), QFileInfo(file).fileName()} {}

    desktop::ChosenFile open(const desktop::OpenFileQuestion&) override { return file_; }

private:
    desktop::ChosenFile file_;
};

// Keeps the text of each box for the end, and declines what it asks.
class KeptMessages : public desktop::MessageBoxes {
public:
    desktop::Answer show(const desktop::Message& message) override {
        texts_ << message.text;
        return desktop::declined(message);
    }
    bool askForRetry(const QString& text, desktop::Icon, const QString&) override {
        texts_ << text;
        return false;
    }

    QStringList take() { return std::exchange(texts_, {}); }

private:
    QStringList texts_;
};

// The progress of one file is part of that of all.
class PartOfRun : public desktop::LongRun {
public:
    explicit PartOfRun(desktop::LongRun& whole) : whole_(whole) {}

    void begin(const QString&, int) override {}
    void next(const QString&) override {}
    bool isCancelled() override { return whole_.isCancelled(); }
    void end() override {}

private:
    desktop::LongRun& whole_;
};

class Addition {
public:
    Addition(modMain& state, Workbench& workbench, const Services& services, const QString& key,
             AddMode mode)
        : state_(state), workbench_(workbench), services_(services), key_(key), mode_(mode) {}

    FilesAdded run(const QStringList& files) {
        desktop::LongRun& progress = services_.longRun;
        const desktop::LongRunScope shown(progress, QStringLiteral("添加文档"),
                                          static_cast<int>(files.size()));
        for (qsizetype i = 0; i < files.size(); ++i) {
            const QString name = QFileInfo(files[i]).fileName();
            progress.next(
                QStringLiteral("正在添加 %1（%2/%3）").arg(name).arg(i + 1).arg(files.size()));
            const bool isDone = !progress.isCancelled() && add(files[i], name);
            if (!isDone && progress.isCancelled()) {
                done_.left = static_cast<int>(files.size() - i);
                break;
            }
        }
        return done_;
    }

private:
    // False when it was refused; a file that the user cancelled at is not counted as refused.
    bool add(const QString& file, const QString& name) {
        const QString reason = tryToAdd(file);
        if (!reason.isEmpty() && !services_.longRun.isCancelled()) {
            done_.refused.push_back({name, reason});
        }
        return reason.isEmpty();
    }

    // Why it was not added; empty when it was.
    QString tryToAdd(const QString& file) {
        const QFileInfo info(file);
        if (info.isDir()) {
            return QStringLiteral("这是文件夹，请打开它，拖放其中的文件。");
        }
        if (!info.isFile()) {
            return QStringLiteral("文件已不存在。");
        }
        OutlineNode* node = workbench_.TrvCurrent.find(key_);
        if (!node) {
            return QStringLiteral("要添加到的节点已不存在。");
        }
        workbench_.TrvCurrent.Select(node);
        return addAtSelected(file, info.fileName());
    }

    QString addAtSelected(const QString& file, const QString& name) {
        GivenFile given(file);
        KeptMessages messages;
        PartOfRun part(services_.longRun);
        AddDocument command(
            state_, workbench_,
            {messages, services_.splash, given, services_.events, services_.word, part});
        const Added outcome = mode_ == AddMode::below ? command.mnuLTDoc() : command.mnuEQDoc();
        const QString told = messages.take().join(u'\n');
        if (outcome != Added::added) {
            return told.isEmpty() ? QStringLiteral("没有添加。") : told;
        }
        done_.newKeys << command.newKey();
        if (mode_ == AddMode::beside) {
            key_ = command.newKey();
        }
        if (!told.isEmpty()) {
            done_.warned.push_back({name, told});
        }
        return {};
    }

    modMain& state_;
    Workbench& workbench_;
    const Services& services_;
    QString key_; // of the node that the next file is added to
    AddMode mode_;
    FilesAdded done_;
};

QString listOf(const QStringList& names) {
    const QString shown = names.mid(0, mostListed).join(QStringLiteral("、"));
    return names.size() <= mostListed ? shown
                                      : shown + QStringLiteral(" 等 %1 个文件").arg(names.size());
}

// Each reason once, with the files that it holds for, in the order of the files.
QStringList linesOf(const std::vector<FileRemark>& remarks) {
    QStringList reasons;
    for (const FileRemark& file : remarks) {
        if (!reasons.contains(file.reason)) {
            reasons << file.reason;
        }
    }
    QStringList lines;
    for (const QString& reason : reasons) {
        QStringList names;
        for (const FileRemark& file : remarks) {
            if (file.reason == reason) {
                names << file.name;
            }
        }
        lines << listOf(names) + "：" + reason;
    }
    return lines;
}

QString summaryOf(const FilesAdded& done) {
    QStringList lines{done.newKeys.isEmpty()
                          ? QStringLiteral("没有添加任何文档。")
                          : QStringLiteral("已添加 %1 个文档。").arg(done.newKeys.size())};
    if (!done.refused.empty()) {
        lines << QStringLiteral("下列 %1 个没有添加：").arg(done.refused.size())
              << linesOf(done.refused);
    }
    if (!done.warned.empty()) {
        lines << QStringLiteral("下列 %1 个已添加，但随后出错：").arg(done.warned.size())
              << linesOf(done.warned);
    }
    if (done.left > 0) {
        lines << QStringLiteral("已取消，其余 %1 个没有添加。").arg(done.left);
    }
    return lines.join(u'\n');
}

// Of the files that generation cannot insert.
void shorten(QStringList& remarks, qsizetype most) {
    if (const qsizetype more = remarks.size() - most; more > 0) {
        remarks.resize(most);
        remarks << QStringLiteral("另有 %1 个文件也不能照原样放入。").arg(more);
    }
}

} // namespace

FilesAdded addFiles(modMain& state, Workbench& workbench, const Services& services,
                    const QString& key, const QStringList& files, AddMode mode) {
    const qsizetype earlier = state.Remarks.size();
    FilesAdded done = Addition(state, workbench, services, key, mode).run(files);
    shorten(state.Remarks, earlier + mostRemarks);
    if (!done.refused.empty() || !done.warned.empty() || done.left > 0) {
        services.messages.tell(summaryOf(done), desktop::Icon::information, QStringLiteral("提示"));
    }
    return done;
}

} // namespace qvnd::outline
