#include "startup/windows/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>

namespace qvnd::startup {

namespace {

constexpr int patience = 500; // milliseconds that an answer on this machine may take

QString nameOf(const QString& folder) {
    const QByteArray path = QDir(folder).absolutePath().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    return QStringLiteral("qvnd-") + QString::fromLatin1(hash.left(16));
}

} // namespace

SingleInstance::SingleInstance(const QString& programFolder, QObject* parent)
    : QObject(parent), name_(nameOf(programFolder)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, [this] {
        delete server_.nextPendingConnection();
        emit startedAgain();
    });
}

bool SingleInstance::begin() {
    if (reachOther()) {
        return false;
    }
    // Made with rights of its own, the socket takes the place of one that a killed run has left.
    // Where the name cannot be listened on, the program still runs, only without this guard.
    server_.listen(name_);
    return true;
}

bool SingleInstance::reachOther() const {
    QLocalSocket socket;
    socket.connectToServer(name_);
    return socket.waitForConnected(patience);
}

} // namespace qvnd::startup
