#pragma once

#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/word/model/Application.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <memory>

// What the benchmarks of the windows share.
namespace qvnd::bench {

// Services that a measured command must not reach: each declines.
class NoMessages : public desktop::MessageBoxes {
    desktop::Answer show(const desktop::Message& /*message*/) override {
        return desktop::Answer::no;
    }
};
class NoFiles : public desktop::FileDialogs {
    desktop::ChosenFile open(const desktop::OpenFileQuestion& /*question*/) override {
        throw RunTimeError(error::dialogCancelled, u"cancelled");
    }
};
class NoWord : public word::ApplicationFactory {
    std::unique_ptr<word::Application> create() override { return nullptr; }
};

// Runs the benchmarks of the program without a screen. 0, for its main.
inline int runWithoutScreen(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace qvnd::bench
