#include "platform/history/RunningCommand.h"

#include "platform/error/RunTimeError.h"

#include <QDataStream>

#include <utility>

namespace qvnd::history {

namespace {

// The first field of an entry says what it is.
const QString commandEntry = QStringLiteral("command");
const QString touchedEntry = QStringLiteral("touched");
const QString committedEntry = QStringLiteral("committed");

constexpr qsizetype fieldsOfCommand = 8;

} // namespace

RunningCommand::RunningCommand(const QString& file, Places places)
    : path_(file), places_(std::move(places)) {}

std::optional<RunningCommand> RunningCommand::left(const QString& file, const Places& places) {
    QFile rest(file);
    if (!rest.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    RunningCommand found(file, places);
    QDataStream in(&rest);
    for (;;) {
        QStringList fields;
        in >> fields;
        if (in.status() != QDataStream::Ok || fields.isEmpty()) {
            break;
        }
        found.read(fields);
    }
    return found;
}

void RunningCommand::begin(std::int64_t step, const CommandFrame& frame, const QString& program) {
    step_ = step;
    frame_ = frame;
    program_ = program;
    time_ = QDateTime::currentDateTime();
    write({commandEntry, QString::number(step), frame.caption, frame.plan, frame.selectedKey,
           frame.selectedName, program, time_.toString(Qt::ISODateWithMs)});
}

void RunningCommand::touch(const QString& path, Touched::Kind kind, const QString& before) {
    if (!touched_.contains(path)) {
        write(
            {touchedEntry, QString::number(static_cast<int>(kind)), places_.shortOf(path), before});
        touched_[path] = {kind, before};
    }
}

void RunningCommand::willCommit(const QByteArray& digest) {
    if (!committed_.contains(digest)) {
        write({committedEntry, QString::fromLatin1(digest)});
        committed_ << digest;
    }
}

QString RunningCommand::nextContent() {
    return QString::number(step_) + QLatin1Char('/') + QString::number(++contents_);
}

// What was written in part goes again: entries behind it would not be read.
void RunningCommand::write(const QStringList& fields) {
    if (file_ == nullptr) {
        file_ = std::make_unique<QFile>(path_);
        file_->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    }
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << fields;
    const qint64 end = file_->size();
    if (file_->write(bytes) != bytes.size()) {
        const QString reason = file_->errorString();
        file_->resize(end);
        throw RunTimeError(
            error::pathAccess,
            QStringLiteral("操作历史『%1』不能写入：%2。").arg(path_, reason).toStdU16String());
    }
}

void RunningCommand::read(const QStringList& fields) {
    if (fields[0] == commandEntry && fields.size() == fieldsOfCommand) {
        step_ = fields[1].toLongLong();
        frame_ = {fields[2], fields[3], fields[4], fields[5], {}, {}, {}};
        program_ = fields[6];
        time_ = QDateTime::fromString(fields[7], Qt::ISODateWithMs);
    } else if (fields[0] == touchedEntry && fields.size() == 4) {
        touched_[places_.longOf(fields[2])] = {static_cast<Touched::Kind>(fields[1].toInt()),
                                               fields[3]};
    } else if (fields[0] == committedEntry && fields.size() == 2) {
        committed_ << fields[1].toLatin1();
    }
}

void RunningCommand::end() {
    file_.reset();
    QFile::remove(path_);
    *this = RunningCommand(path_, places_);
}

} // namespace qvnd::history
