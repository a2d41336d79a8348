#pragma once

#include <QByteArray>
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

    // The result, in the form asked for. It is printed when the command is over.
    void result(const QJsonValue& json, const QString& text);
    // The command is over: prints its result, if it has one.
    void print();
    // The command was taken back: there is no result.
    void withdraw() { result_.clear(); }
    // A line on standard error.
    void note(const QString& line);

    std::ostream& err() { return err_; }

private:
    std::ostream& out_;
    std::ostream& err_;
    bool json_ = false;
    QByteArray result_; // to be printed
};

} // namespace qvnd::tools
