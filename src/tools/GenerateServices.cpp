#include "tools/GenerateServices.h"

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

QString fileName(const std::filesystem::path& path) {
    return QString::fromStdU16String(path.filename().u16string());
}

} // namespace

void LossMessages::notCarried(const std::filesystem::path& path, std::u16string_view what) {
    const QString loss = QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size()));
    dlgTB_.hide();
    messages_.tell(fileName(path) + u'：' + loss, desktop::Icon::information, u"提示"_s);
    dlgTB_.show();
}

bool AskedQuestion::save(const std::filesystem::path& document) {
    return messages_.ask(u"是否将更改保存到“%1”中？"_s.arg(fileName(document)),
                         desktop::Icon::question, u"提示"_s);
}

} // namespace qvnd::tools
