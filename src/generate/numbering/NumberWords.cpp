#include "generate/numbering/NumberWords.h"

#include "platform/error/RunTimeError.h"

namespace qvnd::generate {

namespace {

std::size_t subscript(int number) {
    if (number < 0 || number > NumberWords::last)
        throw RunTimeError(error::subscriptOutOfRange, u"下标越界");
    return static_cast<std::size_t>(number);
}

} // namespace

const QString& NumberWords::at(int number) const { return words_[subscript(number)]; }

void NumberWords::set(int number, const QString& word) { words_[subscript(number)] = word; }

} // namespace qvnd::generate
