#include "generate/driver/WordSession.h"

#include "platform/error/RunTimeError.h"

#include <utility>

namespace qvnd::generate {

namespace {

template <class Object>
Object& referenced(Object* object) {
    if (object == nullptr)
        throw RunTimeError(error::objectNotSet, u"文字处理软件没有启动，或者其中没有打开的文档。");
    return *object;
}

} // namespace

void WordSession::hold(std::unique_ptr<word::Application> application) {
    dropApplication();
    application_ = std::move(application);
}

void WordSession::dropApplication() {
    document_ = nullptr;
    application_.reset();
}

word::Application& WordSession::application() const { return referenced(application_.get()); }

word::Document& WordSession::document() const { return referenced(document_); }

} // namespace qvnd::generate
