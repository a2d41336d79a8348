#pragma once

#include <QJsonValue>
#include <QString>

#include <iosfwd>

namespace qvnd::tools {

// The two streams of a command. Standard output bears the result alone: with --json one JSON
// value, else text for people; everything that is said on the way goes to standard error.
// Texts are UTF-8.
class Output {
public:
    Output(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    void setJson(bool json) { json_ = json; }
    bool isJson() const { return json_; }

    // The result, in the form asked for; once in a command.
    void result(const QJsonValue& json, const QString& text);
    // A line on standard error.
    void note(const QString& line);

    std::ostream& err() { return err_; }

private:
    std::ostream& out_;
    std::ostream& err_;
    bool json_ = false;
};

} // namespace qvnd::tools
