#include "support/Text.h"
#include "whole/model/Steps.h"

#include <gtest/gtest.h>

namespace qvnd::model {

namespace {

constexpr int stepsOfOne = 50;
constexpr int shards = 8;

struct Outcome {
    QString difference;
    int failedAt = -1;
    QStringList done;
};

Outcome play(const std::vector<Step>& steps) {
    SideBySide pair;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const QString difference = pair.run(steps[i]);
        if (!difference.isEmpty()) {
            return {difference, static_cast<int>(i), pair.done()};
        }
    }
    return {};
}

// Leaves out what a difference does not need.
Outcome shrunk(std::vector<Step> steps, Outcome outcome) {
    steps.resize(static_cast<std::size_t>(outcome.failedAt) + 1);
    for (std::size_t i = steps.size() - 1; i-- > 0;) {
        std::vector<Step> fewer = steps;
        fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
        const Outcome again = play(fewer);
        if (again.failedAt >= 0) {
            fewer.resize(static_cast<std::size_t>(again.failedAt) + 1);
            steps = fewer;
            outcome = again;
            i = std::min(i, steps.size() - 1);
        }
    }
    return outcome;
}

class RandomCommands : public testing::TestWithParam<int> {};

TEST_P(RandomCommands, LeaveRowsTreesAndFilesAsTheRulesSay) {
    const int share = (numberAskedFor("QVND_SEQUENCES", 400) + shards - 1) / shards;
    for (int seed = GetParam() * share; seed < (GetParam() + 1) * share; ++seed) {
        const auto steps = randomSteps(static_cast<unsigned>(seed), stepsOfOne);
        const Outcome outcome = play(steps);
        if (outcome.failedAt >= 0) {
            const Outcome small = shrunk(steps, outcome);
            FAIL() << "seed " << seed << ":\n  " << small.done.join("\n  ").toStdString() << "\n"
                   << small.difference.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, RandomCommands, testing::Range(0, shards));

} // namespace

} // namespace qvnd::model
