#include "fuzz/FuzzRun.h"

#include "platform/word/CountedMemory.h"

#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <utility>

namespace qvnd::test {

using word::Bytes;

namespace {

Bytes contents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    return {text.begin(), text.end()};
}

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// A second, and ten for each 100 MB; sanitizers take longer.
double mostSeconds(std::size_t size) {
#ifdef __SANITIZE_ADDRESS__
    constexpr double slower = 10;
#else
    constexpr double slower = 1;
#endif
    return slower * (1.0 + static_cast<double>(size) / 1e7);
}

std::size_t mostBytes(std::size_t size) { return 20 * size + (std::size_t{50} << 20); }

class Run {
public:
    Run(FuzzTarget& target, const FuzzOptions& options) : target_(target), options_(options) {
        for (const std::filesystem::path& file : options_.files) {
            sources_.push_back(contents(file));
        }
        if (sources_.empty()) {
            sources_ = target_.ownFiles();
        }
        if (!options_.keep.empty()) {
            std::filesystem::create_directories(options_.keep);
        }
    }

    bool all() {
        for (std::uint32_t number = 0; number < options_.count; ++number) {
            // A generator for each input, so that one can be had again by its number.
            Mutation mutation(options_.seed * 1000003U + number);
            const std::size_t source = mutation.below(sources_.size());
            one(number, source, mutation.damaged(sources_[source]));
        }
        std::cout << options_.target << ": " << options_.count << " inputs, seed " << options_.seed
                  << ", " << accepted_ << " accepted, " << faults_ << " faults\n";
        return faults_ == 0;
    }

private:
    void one(std::uint32_t number, std::size_t source, DamagedFile input) {
        const std::string fault = faultOf(input.bytes(), &accepted_);
        if (fault.empty()) {
            return;
        }
        ++faults_;
        const std::string name = options_.files.empty()
                                     ? "own file " + std::to_string(source)
                                     : options_.files[source].filename().string();
        std::cout << number << " of " << name << ":" << fault << std::endl;
        if (!options_.keep.empty()) {
            write(std::to_string(options_.seed) + "-" + std::to_string(number),
                  smallest(std::move(input)).bytes());
        }
    }

    std::string faultOf(const Bytes& input, std::uint32_t* accepted) {
        if (!options_.keep.empty()) {
            write("current", input); // left behind by what ends the process
        }
        return faultWith(target_, input, accepted);
    }

    // Without the changes that the fault does not need.
    DamagedFile smallest(DamagedFile input) {
        std::uint32_t ignored = 0;
        for (std::size_t change = 0; change < input.changes();) {
            DamagedFile fewer = input.without(change);
            if (faultOf(fewer.bytes(), &ignored).empty()) {
                ++change;
            } else {
                input = std::move(fewer);
            }
        }
        return input;
    }

    void write(const std::string& name, const Bytes& bytes) const {
        std::ofstream out(options_.keep / name, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }

    FuzzTarget& target_;
    const FuzzOptions& options_;
    std::vector<Bytes> sources_;
    std::uint32_t accepted_ = 0;
    std::uint32_t faults_ = 0;
};

} // namespace

std::string faultWith(FuzzTarget& target, word::ByteView input, std::uint32_t* accepted) {
    const double start = processorSeconds();
    std::string fault;
    const MemoryUse use = memoryUseOf([&] {
        try {
            const FuzzTarget::Outcome outcome = target.run(input);
            *accepted += outcome.accepted ? 1 : 0;
            fault += outcome.fault;
        } catch (const std::exception& error) {
            fault += std::string(" threw ") + error.what();
        }
    });
    const double seconds = processorSeconds() - start;
    if (seconds > mostSeconds(input.size())) {
        fault += " took " + std::to_string(seconds) + " s";
    }
    if (use.peak > mostBytes(input.size())) {
        fault += " took " + std::to_string(use.peak >> 20) + " MB";
    }
    return fault;
}

FuzzOptions fuzzOptions(const std::vector<std::string>& arguments) {
    FuzzOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == "--seed" && hasValue) {
            options.seed = static_cast<std::uint32_t>(std::stoul(arguments[++i]));
        } else if (arguments[i] == "--count" && hasValue) {
            options.count = static_cast<std::uint32_t>(std::stoul(arguments[++i]));
        } else if (arguments[i] == "--keep" && hasValue) {
            options.keep = arguments[++i];
        } else if (arguments[i] == "--target" && hasValue) {
            options.target = arguments[++i];
        } else {
            options.files.emplace_back(arguments[i]);
        }
    }
    return options;
}

bool fuzz(FuzzTarget& target, const FuzzOptions& options) { return Run(target, options).all(); }

} // namespace qvnd::test
