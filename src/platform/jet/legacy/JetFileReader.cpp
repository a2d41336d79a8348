#include "platform/jet/legacy/JetFileReader.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/legacy/GuardedRun.h"
#include "platform/jet/legacy/JetHeader.h"
#include "platform/jet/legacy/LibmdbFile.h"
#include "platform/jet/legacy/TableStream.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace qvnd::jet::legacy {

namespace {

[[noreturn]] void fail(long number, const QString& description) {
    throw RunTimeError(number, description.toStdU16String());
}

[[noreturn]] void failDamaged(const QString& path) {
    fail(error::unrecognizedFormat,
         QStringLiteral("旧版数据库『%1』已损坏，无法读取。").arg(QDir::toNativeSeparators(path)));
}

[[noreturn]] void failHindered(const QString& path) {
    fail(error::cannotAccessFile,
         QStringLiteral("旧版数据库『%1』现在没能读完：磁盘、内存或时间不够。请关闭其他程序后再试；"
                        "如果总是这样，请先把这个文件移到别处。")
             .arg(QDir::toNativeSeparators(path)));
}

// A disk that fails must not look like a damaged file.
bool canBeReadToItsEnd(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    QByteArray block(1 << 20, Qt::Uninitialized);
    qint64 count = 0;
    qint64 total = 0;
    while ((count = file.read(block.data(), block.size())) > 0) {
        total += count;
    }
    return count == 0 && total == file.size();
}

[[noreturn]] void failUnread(const QString& path) {
    if (!canBeReadToItsEnd(path)) {
        failHindered(path);
    }
    failDamaged(path);
}

QByteArray guarded(const QString& path, std::chrono::milliseconds limit,
                   const std::function<QByteArray()>& work) {
    GuardedResult result = runGuarded(work, limit);
    switch (result.End) {
    case GuardedEnd::whole:
        return std::move(result.Bytes);
    case GuardedEnd::hindered:
        failHindered(path);
    default:
        failUnread(path);
    }
}

class JetFile : public LegacyDatabase {
public:
    JetFile(QString path, std::chrono::milliseconds limit) : path_(std::move(path)), limit_(limit) {
        const auto names =
            namesIn(guarded(path_, limit_, [this] { return bytesOf(readTableNames(path_)); }));
        if (!names) {
            failUnread(path_);
        }
        names_ = *names;
    }

    QStringList TableNames() const override { return names_; }

    LegacyTable Table(const QString& name) const override {
        const auto known = std::find_if(names_.begin(), names_.end(), [&](const QString& there) {
            return there.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (known == names_.end()) {
            fail(error::tableNotFound, QStringLiteral("旧版数据库『%1』中没有表『%2』。")
                                           .arg(QDir::toNativeSeparators(path_), name));
        }
        auto table =
            tableIn(guarded(path_, limit_, [&] { return bytesOf(readTable(path_, *known)); }));
        if (!table) {
            failUnread(path_);
        }
        return *std::move(table);
    }

private:
    QString path_;
    std::chrono::milliseconds limit_;
    QStringList names_;
};

} // namespace

JetFileReader::JetFileReader(std::chrono::milliseconds patience) : patience_(patience) {}

bool JetFileReader::Recognizes(const QString& path) const { return beginsAsJet(path); }

std::unique_ptr<LegacyDatabase> JetFileReader::Open(const QString& path) const {
    if (!QFileInfo(path).isReadable()) {
        fail(error::cannotAccessFile,
             QStringLiteral("无法读取旧版数据库『%1』。").arg(QDir::toNativeSeparators(path)));
    }
    const qint64 megabytes = QFileInfo(path).size() >> 20;
    if (!hasSoundHeader(path)) {
        failUnread(path);
    }
    return std::make_unique<JetFile>(path, patience_ + std::chrono::seconds(megabytes));
}

} // namespace qvnd::jet::legacy
