#include "tools/WordProcessor.h"

#include "platform/error/RunTimeError.h"

namespace qvnd::tools {

namespace {

class NoWordProcessor : public word::ApplicationFactory {
public:
    std::unique_ptr<word::Application> create() override {
        constexpr long cannotCreateObject = 429;
        throw RunTimeError(cannotCreateObject,
                           u"没有可用的文字处理程序，不能新建或转换文档。请选择已有的 .doc 文件。");
    }
};

} // namespace

std::unique_ptr<word::ApplicationFactory> createWordProcessor(const QString&) {
    return std::make_unique<NoWordProcessor>();
}

} // namespace qvnd::tools
