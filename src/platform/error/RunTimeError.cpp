#include "platform/error/RunTimeError.h"

#include "platform/error/Utf8.h"

#include <utility>

namespace qvnd {

RunTimeError::RunTimeError(long number, std::u16string description)
    : number_(number), description_(std::move(description)), utf8_(toUtf8(description_)) {}

} // namespace qvnd
