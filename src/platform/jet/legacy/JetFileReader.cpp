#include "platform/jet/legacy/JetFileReader.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/legacy/GuardedRun.h"
#include "platform/jet/legacy/JetHeader.h"
#include "platform/jet/legacy/LibmdbFile.h"
#include "platform/jet/legacy/TableStream.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace qvnd::jet::legacy {

namespace {

[[noreturn]] void fail(long number, const QString& description) {
    throw RunTimeError(number, description.toStdU16String());
}

[[noreturn]] void failDamaged(const QString& path) {
    fail(error::unrecognizedFormat,
         QStringLiteral("旧版数据库『%1』已损坏，无法读取；文件保持原样。")
             .arg(QDir::toNativeSeparators(path)));
}

class JetFile : public LegacyDatabase {
public:
    JetFile(QString path, std::chrono::milliseconds limit) : path_(std::move(path)), limit_(limit) {
        const auto bytes = runGuarded([this] { return bytesOf(readTableNames(path_)); }, limit_);
        const auto names = bytes ? namesIn(*bytes) : std::nullopt;
        if (!names) {
            failDamaged(path_);
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
        const auto bytes = runGuarded([&] { return bytesOf(readTable(path_, *known)); }, limit_);
        auto table = bytes ? tableIn(*bytes) : std::nullopt;
        if (!table) {
            failDamaged(path_);
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
        failDamaged(path);
    }
    return std::make_unique<JetFile>(path, patience_ + std::chrono::seconds(megabytes));
}

} // namespace qvnd::jet::legacy
