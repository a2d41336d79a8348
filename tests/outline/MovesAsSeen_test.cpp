#include "outline/TreeDrag.h"

#include "support/DragWorld.h"
#include "support/SeenOutline.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <random>

using namespace qvnd;
using namespace qvnd::outline;
using test::SeenOutline;

namespace {

struct MovesAsSeen : testing::Test, test::DragWorld {
    SeenOutline seen() const {
        return test::seenIn(workbench.TrvCurrent,
                            [this](const QString& key) { return document(key); });
    }
    QString keyAt(std::size_t node) const {
        return shown(workbench.TrvCurrent)[static_cast<qsizetype>(node)];
    }
};

TEST_F(MovesAsSeen, EveryMoveBringsTheNodeItsChildrenAndTheirTextsToTheirPlace) {
    plan({"T", "T.1", "T.1.1d", "T.1.2", "T.1.2.1d", "T.1.2.2d", "T.2d", "T.3", "T.3.1d", "T.4",
          "T.5d", "T.6", "T.6.1", "T.6.1.1d"});
    const qsizetype files = documents().size();
    std::mt19937 chance(7);
    int moves = 0;
    for (int step = 0; step < 80; ++step) {
        const SeenOutline before = seen();
        const std::size_t node = 1 + chance() % (before.size() - 1);
        const std::size_t target = chance() % before.size();
        if (test::isWithin(before, target, node)) {
            continue;
        }
        ASSERT_TRUE(drag(keyAt(node), keyAt(target)).done) << step;
        ASSERT_EQ(seen(), test::moved(before, node, target)) << "step " << step;
        ASSERT_EQ(documents().size(), files) << "step " << step;
        ++moves;
    }
    EXPECT_GT(moves, 50);
}

} // namespace
