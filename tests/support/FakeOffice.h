#pragma once

#include "platform/preview/PageConversion.h"
#include "support/Files.h"

namespace qvnd::test {

// Stands in for the office suite: a shell script. It writes down each start in the file "starts",
// and finds its arguments in $out (a folder that is not there yet) and $in.
class FakeOffice {
public:
    explicit FakeOffice(const QByteArray& script = makePdf()) { setScript(script); }

    static QByteArray makePdf() {
        return "mkdir -p \"$out\"; (printf '%%PDF-1.4 of '; cat \"$in\") > \"$out/document.pdf\"\n";
    }

    void setScript(const QByteArray& script) {
        folder.write("office.sh", "#!/bin/sh\necho start >> '" + folder.path("starts").toUtf8() +
                                      "'\nwhile [ \"$1\" != --outdir ]; do shift; done\n"
                                      "out=$2; in=$3\n" +
                                      script);
        QFile(folder.path("office.sh"))
            .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    int starts() const { return static_cast<int>(folder.read("starts").count('\n')); }

    preview::ConversionSettings settings() const {
        preview::ConversionSettings made;
        made.program = folder.path("office.sh");
        made.profileFolder = folder.path("profile");
        made.cacheFolder = folder.path("cache");
        made.settling = std::chrono::milliseconds(0);
        return made;
    }
    QStringList leftovers() const { return QDir(folder.path("cache")).entryList({"work-*"}); }

    TemporaryFolder folder;
};

} // namespace qvnd::test
