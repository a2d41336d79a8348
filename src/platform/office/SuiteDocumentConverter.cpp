#include "platform/office/SuiteDocumentConverter.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace qvnd::office {

SuiteDocumentConverter::SuiteDocumentConverter()
    : suite_(OfficeSuite::cacheFolder() + u"/office"_s) {}

word::Bytes SuiteDocumentConverter::converted(const std::filesystem::path& file) {
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"converted.doc"_s);
    suite_.convert(files::fromPath(file), target, u"doc:MS Word 97"_s);
    QFile result(target);
    if (!result.open(QIODevice::ReadOnly)) {
        throw RunTimeError(error::pathAccess, u"无法读取转换后的文件。");
    }
    const QByteArray bytes = result.readAll();
    return {bytes.begin(), bytes.end()};
}

} // namespace qvnd::office
