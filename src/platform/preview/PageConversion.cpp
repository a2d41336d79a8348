#include "platform/preview/PageConversion.h"

#include "platform/office/OfficeSuite.h"
#include "platform/preview/ConversionRun.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

ConversionSettings ConversionSettings::ofDesktop() {
    const QString cache = office::OfficeSuite::cacheFolder();
    ConversionSettings settings;
    settings.program = office::OfficeSuite::installedProgram();
    settings.profileFolder = cache + u"/preview-office"_s;
    settings.cacheFolder = cache + u"/preview"_s;
    return settings;
}

PageConversion::Wish::Wish(PageConversion& conversion, int number)
    : conversion_(conversion.self_), number_(number) {}

PageConversion::Wish::~Wish() {
    if (const auto conversion = conversion_.lock()) {
        (*conversion)->cancel(number_);
    }
}

PageConversion::PageConversion(ConversionSettings settings)
    : settings_(std::move(settings)), cache_(settings_.cacheFolder, settings_.cache),
      self_(std::make_shared<PageConversion*>(this)) {
    ConversionRun::clearLeftovers(settings_.cacheFolder);
}

PageConversion::~PageConversion() = default;

std::unique_ptr<PageConversion::Wish> PageConversion::convert(const QString& document,
                                                              Answer answer) {
    requests_.push_back({++lastNumber_, document, std::move(answer)});
    startNext();
    return std::unique_ptr<Wish>(new Wish(*this, lastNumber_));
}

void PageConversion::startNext() {
    if (run_ || requests_.empty()) {
        return;
    }
    run_ = std::make_unique<ConversionRun>(
        settings_, cache_, requests_.front().document, [this](const Outcome& outcome) {
            // The run cannot end itself.
            QMetaObject::invokeMethod(
                this,
                [this, outcome, number = requests_.front().number] {
                    if (!requests_.empty() && requests_.front().number == number) {
                        finished(outcome);
                    }
                },
                Qt::QueuedConnection);
        });
}

void PageConversion::finished(const Outcome& outcome) {
    const Answer answer = std::move(requests_.front().answer);
    requests_.pop_front();
    run_.reset();
    startNext();
    answer(outcome);
}

void PageConversion::cancel(int number) {
    const auto found = std::find_if(requests_.begin(), requests_.end(),
                                    [&](const Request& it) { return it.number == number; });
    if (found == requests_.end()) {
        return;
    }
    if (found == requests_.begin()) {
        run_.reset();
    }
    requests_.erase(found);
    startNext();
}

} // namespace qvnd::preview
