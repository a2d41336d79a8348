#include "tools/Output.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <ostream>

namespace qvnd::tools {

namespace {

QByteArray written(const QJsonValue& json) {
    if (json.isObject()) {
        return QJsonDocument(json.toObject()).toJson(QJsonDocument::Compact);
    }
    if (json.isArray()) {
        return QJsonDocument(json.toArray()).toJson(QJsonDocument::Compact);
    }
    // A bare value: written within an array whose brackets are then left off.
    const QByteArray array = QJsonDocument(QJsonArray{json}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

} // namespace

void Output::result(const QJsonValue& json, const QString& text) {
    if (json_) {
        result_ += written(json) + '\n';
    } else if (!text.isEmpty()) {
        result_ += text.toUtf8() + '\n';
    }
}

void Output::print() {
    out_ << result_.constData();
    out_.flush();
    result_.clear();
}

void Output::note(const QString& line) {
    err_ << line.toUtf8().constData() << '\n';
    err_.flush();
}

} // namespace qvnd::tools
