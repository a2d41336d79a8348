#include "platform/history/PageDelta.h"

#include "platform/error/RunTimeError.h"

#include <QDataStream>
#include <QIODevice>
#include <QMap>

#include <algorithm>

namespace qvnd::history {

namespace {

// Any size serves, as both images are cut in the same way; SQLite's own pages have this one.
constexpr qsizetype pageSize = 4096;
constexpr int fast = 1; // compression

struct Pages {
    QByteArray before;
    QByteArray after;
};

// Written as it stands: sizes of both images, then the pages by number.
struct Delta {
    qint64 sizeBefore = 0;
    qint64 sizeAfter = 0;
    QMap<qint64, Pages> pages;
};

QByteArray pageOf(const QByteArray& image, qint64 page) {
    return image.mid(page * pageSize, pageSize);
}

QByteArray packed(const Delta& delta) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << delta.sizeBefore << delta.sizeAfter << qint64{delta.pages.size()};
    for (auto page = delta.pages.begin(); page != delta.pages.end(); ++page) {
        out << page.key() << page->before << page->after;
    }
    return qCompress(bytes, fast);
}

Delta unpacked(const QByteArray& bytes) {
    Delta delta;
    const QByteArray plain = qUncompress(bytes);
    QDataStream in(plain);
    qint64 count = 0;
    in >> delta.sizeBefore >> delta.sizeAfter >> count;
    for (qint64 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        qint64 page = 0;
        Pages pages;
        in >> page >> pages.before >> pages.after;
        delta.pages[page] = pages;
    }
    if (in.status() != QDataStream::Ok) {
        throw RunTimeError(error::pathAccess, u"操作历史中的记录已损坏。");
    }
    return delta;
}

} // namespace

QByteArray deltaOf(const QByteArray& before, const QByteArray& after) {
    Delta delta{before.size(), after.size(), {}};
    const qint64 pages = (std::max(before.size(), after.size()) + pageSize - 1) / pageSize;
    for (qint64 page = 0; page < pages; ++page) {
        const qsizetype at = page * pageSize;
        const QByteArrayView one = QByteArrayView(before).sliced(std::min(at, before.size()));
        const QByteArrayView other = QByteArrayView(after).sliced(std::min(at, after.size()));
        if (one.first(std::min(pageSize, one.size())) !=
            other.first(std::min(pageSize, other.size()))) {
            delta.pages[page] = {pageOf(before, page), pageOf(after, page)};
        }
    }
    return delta.pages.isEmpty() ? QByteArray() : packed(delta);
}

QByteArray applied(const QByteArray& delta, QByteArray image, Direction direction) {
    if (delta.isEmpty()) {
        return image;
    }
    const Delta pages = unpacked(delta);
    const bool isForward = direction == Direction::forward;
    image.resize(isForward ? pages.sizeAfter : pages.sizeBefore);
    for (auto page = pages.pages.begin(); page != pages.pages.end(); ++page) {
        const QByteArray& bytes = isForward ? page->after : page->before;
        std::copy(bytes.begin(), bytes.end(), image.begin() + page.key() * pageSize);
    }
    return image;
}

QByteArray joinedDelta(const QList<QByteArray>& deltas) {
    Delta all = unpacked(deltas.first());
    for (const QByteArray& next : deltas.mid(1)) {
        const Delta later = unpacked(next);
        all.sizeAfter = later.sizeAfter;
        for (auto page = later.pages.begin(); page != later.pages.end(); ++page) {
            const auto known = all.pages.find(page.key());
            if (known == all.pages.end()) {
                all.pages[page.key()] = *page;
            } else {
                known->after = page->after;
            }
        }
    }
    all.pages.removeIf(
        [](const QMap<qint64, Pages>::iterator& page) { return page->before == page->after; });
    return all.pages.isEmpty() ? QByteArray() : packed(all);
}

} // namespace qvnd::history
