#pragma once

#include <QString>

#include <array>

namespace qvnd::generate {

// The Chinese number words of 序号表, 一型, places 0 to 20; place 0 stays empty. A place outside
// raises error 9 (subscript out of range).
class NumberWords {
public:
    static constexpr int last = 20;

    const QString& at(int number) const;
    void set(int number, const QString& word);

private:
    std::array<QString, last + 1> words_;
};

} // namespace qvnd::generate
