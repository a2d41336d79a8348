#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QLockFile;

namespace qvnd::office {

// The office suite of the desktop, as a separate process with a profile of its own, so that a
// suite that the user has open is neither needed nor disturbed.
class OfficeSuite {
public:
    // Asked now and then while the suite works; true ends the work.
    using Stop = std::function<bool()>;

    // `profileFolder`: where the suite may keep its profile; made when needed. `program`: the
    // suite's program, empty when it is not installed.
    explicit OfficeSuite(QString profileFolder, QString program = installedProgram(),
                         Stop stop = {});

    // The program as this desktop finds it; empty when there is none.
    static QString installedProgram();
    // Whether it can show documents in windows: packages for servers cannot, and end without a
    // word.
    static bool hasWindows(const QString& program);
    // The option that names the folder of the suite's profile. It is plain ASCII, as arguments go
    // through the locale's encoding, which may know no Chinese.
    static QString profileOption(const QString& folder);
    // Where profiles and files on their way to the suite may lie on this desktop: plain ASCII as
    // far as it is in our hands.
    static QString cacheFolder();
    bool isInstalled() const { return !program_.isEmpty(); }

    // Converts `source` into `target`, replacing it whole. `filter` is the suite's name of the
    // output format with its options, such as "doc:MS Word 97".
    // Throws RunTimeError with a Chinese description: 53 when the suite or the source is not
    // there, 5 when it fails or is stopped, 462 when it hangs, 70 or 75 when the target cannot be
    // written; the target is then as it was.
    void convert(const QString& source, const QString& target, const QString& filter) const;

private:
    bool isStopped() const { return stop_ && stop_(); }
    void awaitTurn(QLockFile& turn) const;
    void run(const QStringList& arguments, const QString& source) const;

    QString profileFolder_;
    QString program_;
    Stop stop_;
};

} // namespace qvnd::office
