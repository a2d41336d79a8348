#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"

#include <charconv>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::test {

// The lines that recording objects write, one a call, in the order of the calls. A test may have
// something happen at a line: an error, a pressed stop button.
class CallLog {
public:
    std::vector<std::string> lines;
    // Paths below this folder are written relative to it, with "/".
    std::filesystem::path base;

    void write(const std::string& line) {
        lines.push_back(line);
        for (auto& event : events_) {
            if (line.starts_with(event.prefix) && ++event.seen == event.occurrence)
                event.action();
        }
    }

    // Runs the action when the n-th line that begins with `prefix` has been written.
    void at(std::string prefix, std::function<void()> action, int occurrence = 1) {
        events_.push_back({std::move(prefix), std::move(action), occurrence, 0});
    }
    // That call fails with the error.
    void failAt(std::string prefix, long number, std::u16string description, int occurrence = 1) {
        at(
            std::move(prefix),
            [number, text = std::move(description)] { throw RunTimeError(number, text); },
            occurrence);
    }

    std::string text(const std::filesystem::path& path) const {
        const auto relative = path.lexically_relative(base);
        const bool inside = !relative.empty() && *relative.begin() != "..";
        return toUtf8((inside ? relative : path).generic_u16string());
    }
    static std::string text(std::u16string_view value) { return toUtf8(value); }
    static std::string text(bool value) { return value ? "true" : "false"; }
    static std::string text(int value) { return std::to_string(value); }
    static std::string text(float value) { return shortest(value); }
    static std::string text(double value) { return shortest(value); }

private:
    struct Event {
        std::string prefix;
        std::function<void()> action;
        int occurrence;
        int seen;
    };

    template <class Number>
    static std::string shortest(Number value) {
        char digits[40];
        return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
    }

    std::vector<Event> events_;
};

// A recording object: it writes "<name>.<call>" lines.
class Recorded {
public:
    Recorded(CallLog& log, std::string name) : log_(log), name_(std::move(name)) {}

protected:
    void called(const std::string& call) { log_.write(name_ + "." + call); }
    template <class Value>
    void set(const std::string& property, Value value) {
        called(property + " = " + log_.text(value));
    }

    CallLog& log_;
    std::string name_;
};

} // namespace qvnd::test
