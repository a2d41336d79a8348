#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace qvnd::startup {

// Keeps two runs of the program off one program folder: the first one listens under a name made of
// the folder, a later one reaches it there. Two folders do not disturb each other.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString& programFolder, QObject* parent = nullptr);

    // False when another run of this folder answers; it has been asked to come to front.
    bool begin();

signals:
    // Another start has been made.
    void startedAgain();

private:
    bool reachOther() const;

    QString name_;
    QLocalServer server_;
};

} // namespace qvnd::startup
