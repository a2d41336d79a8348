#pragma once

#include "platform/files/Paths.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"

namespace qvnd::test {

// What is told of such a document when it is inserted.
inline const QString lossOfHeader = QStringLiteral("文件自带的页眉页脚未能带入");

// Writes a document of one paragraph "正文" whose page has a header of its own.
inline void writeWithHeader(const QString& path) {
    ContentBuilder builder;
    builder.add({plain(u"正文\r")});
    builder.content.headers.resize(builder.content.sections.size());
    builder.content.headers[0][static_cast<std::size_t>(word::HeaderKind::oddHeader)] =
        word::slicesOf(builder.fragment({plain(u"眉\r")}));
    word::DocumentWriter().saveAs(files::toPath(path), builder.content);
}

} // namespace qvnd::test
