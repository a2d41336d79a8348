#pragma once

#include "platform/office/OfficeSuite.h"
#include "platform/word/model/Application.h"

#include <memory>
#include <utility>

namespace qvnd::office {

// A word processor that opens more than its engine reads: a file that is no .doc or .dot is first
// turned into a .doc by the office suite. All else goes to the engine.
class ConvertingWordProcessor : public word::ApplicationFactory {
public:
    // The engine must outlive the object and the applications that it creates.
    ConvertingWordProcessor(word::ApplicationFactory& engine, OfficeSuite suite)
        : engine_(engine), suite_(std::move(suite)) {}

    // Documents::Open of the application throws what OfficeSuite::convert() throws, and 53 with a
    // word about the suite when there is none.
    std::unique_ptr<word::Application> create() override;

private:
    word::ApplicationFactory& engine_;
    OfficeSuite suite_;
};

} // namespace qvnd::office
