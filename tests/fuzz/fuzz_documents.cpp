// Damages documents at random and puts each into a new document: what the reader accepts must give
// a sound file, in time and with bounded memory.
//
//   fuzz_documents [--seed N] [--count N] [--keep FOLDER] [FILE...]
//
// Without files a small document with one of everything is damaged. The faults are printed, one
// line each with the number of the input; --keep writes those inputs into a folder. Ends with 1
// when there was a fault.

#include "fuzz/DocumentTarget.h"
#include "fuzz/Mutation.h"
#include "platform/word/check/SoundDocument.h"

#include <sys/resource.h>

#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace qvnd::test {
namespace {

struct Options {
    std::uint32_t seed = 1;
    std::uint32_t count = 1000;
    std::filesystem::path keep;
    std::vector<std::filesystem::path> files;
};

Options readOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == "--seed" && hasValue) {
            options.seed = static_cast<std::uint32_t>(std::stoul(arguments[++i]));
        } else if (arguments[i] == "--count" && hasValue) {
            options.count = static_cast<std::uint32_t>(std::stoul(arguments[++i]));
        } else if (arguments[i] == "--keep" && hasValue) {
            options.keep = arguments[++i];
        } else {
            options.files.emplace_back(arguments[i]);
        }
    }
    return options;
}

word::Bytes contents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    return {text.begin(), text.end()};
}

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

std::uint64_t peakBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

class Run {
public:
    explicit Run(Options options) : options_(std::move(options)) {
        for (const std::filesystem::path& file : options_.files) {
            sources_.push_back(contents(file));
        }
        if (sources_.empty()) {
            sources_.push_back(SoundDocument().bytes());
        }
        if (!options_.keep.empty()) {
            std::filesystem::create_directories(options_.keep);
        }
    }

    int all() {
        for (std::uint32_t number = 0; number < options_.count; ++number) {
            // A generator for each input, so that one can be had again by its number.
            Mutation mutation(options_.seed * 1000003U + number);
            const std::size_t source = mutation.below(sources_.size());
            one(number, source, mutation.mutated(sources_[source]));
        }
        std::cout << options_.count << " inputs, seed " << options_.seed << ", " << accepted_
                  << " accepted, " << faults_ << " faults\n";
        return faults_ == 0 ? 0 : 1;
    }

private:
    void one(std::uint32_t number, std::size_t source, const word::Bytes& input) {
        if (!options_.keep.empty()) {
            write("current", input); // left behind by what ends the process
        }
        const double start = processorSeconds();
        const std::uint64_t before = peakBytes();
        std::string fault;
        try {
            const InsertionOutcome outcome = insertAndCheck(input);
            accepted_ += outcome.accepted ? 1 : 0;
            for (const std::string& rule : outcome.broken) {
                fault += " " + rule;
            }
        } catch (const std::exception& error) {
            fault += std::string(" threw ") + error.what();
        }
        const double seconds = processorSeconds() - start;
        const std::uint64_t grown = peakBytes() - before;
        if (seconds > 10.0 * (1.0 + static_cast<double>(input.size()) / 1e8)) {
            fault += " took " + std::to_string(seconds) + " s";
        }
        if (grown > 20 * input.size() + (std::uint64_t{50} << 20)) {
            fault += " took " + std::to_string(grown >> 20) + " MB";
        }
        if (!fault.empty()) {
            tell(number, source, fault, input);
        }
    }

    void tell(std::uint32_t number, std::size_t source, const std::string& fault,
              const word::Bytes& input) {
        ++faults_;
        const std::string name =
            options_.files.empty() ? "sound" : options_.files[source].filename().string();
        std::cout << number << " of " << name << ":" << fault << std::endl;
        if (!options_.keep.empty()) {
            write(std::to_string(options_.seed) + "-" + std::to_string(number) + ".doc", input);
        }
    }

    void write(const std::string& name, const word::Bytes& bytes) const {
        std::ofstream out(options_.keep / name, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }

    Options options_;
    std::vector<word::Bytes> sources_;
    std::uint32_t accepted_ = 0;
    std::uint32_t faults_ = 0;
};

} // namespace
} // namespace qvnd::test

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return qvnd::test::Run(qvnd::test::readOptions(arguments)).all();
}
