#include "generate/SuiteReading.h"

#include <QStringList>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace qvnd::test {

namespace {

double millimetres(QStringView length) {
    const QStringView number = length.first(std::max<qsizetype>(length.size() - 2, 0));
    return number.toDouble() * (length.endsWith(u"in") ? 25.4 : length.endsWith(u"cm") ? 10 : 1);
}

QString whole(QStringView length) { return QString::number(std::lround(millimetres(length))); }

} // namespace

// Walks the elements of the file in their order.
class SuiteReading::Reader {
public:
    Reader(SuiteReading& into, const QString& flatText) : into_(into), xml_(flatText) {}

    void read() {
        while (!xml_.atEnd()) {
            xml_.readNext();
            if (xml_.isStartElement()) {
                begin(xml_.qualifiedName());
            } else if (xml_.isEndElement()) {
                end(xml_.qualifiedName());
            } else if (xml_.isCharacters()) {
                take(xml_.text().toString());
            }
        }
    }

private:
    QString attribute(const char* name) const {
        return xml_.attributes().value(QLatin1String(name)).toString();
    }

    void begin(QStringView name) {
        if (name == u"style:style") {
            style_ = attribute("style:name");
            into_.styles_[style_].parent = attribute("style:parent-style-name");
        } else if (name == u"style:text-properties" || name == u"style:paragraph-properties") {
            keepProperties();
        } else if (name == u"style:page-layout-properties") {
            keepLengths(u"page."_s);
        } else if (name == u"style:header-style" || name == u"style:footer-style") {
            side_ = name == u"style:header-style" ? u"header."_s : u"footer."_s;
        } else if (name == u"style:header-footer-properties") {
            keepLengths(side_);
        } else {
            beginText(name);
        }
    }

    void beginText(QStringView name) {
        if (name == u"style:header" || name == u"style:footer") {
            place_ = name.sliced(6).toString();
        } else if (name == u"office:body" || name == u"style:header-first" ||
                   name == u"style:footer-first") {
            place_ = u"text"_s;
        } else if (name == u"text:index-body") {
            place_ = u"contents"_s;
        } else if (name == u"text:p" || name == u"text:h") {
            const bool isHeading = name == u"text:h";
            open_.push_back(into_.paragraphs_.size());
            into_.paragraphs_.push_back(
                {isHeading ? u"heading"_s : place_, attribute("text:style-name"), {}, {}});
        } else if (name == u"text:span") {
            spans_ << attribute("text:style-name");
        } else if (name == u"text:tab") {
            take(u"\t"_s);
        } else if (name == u"text:s") {
            take(u" "_s);
        } else if (name == u"text:index-entry-tab-stop" && into_.leader_.isEmpty()) {
            into_.leader_ = attribute("style:leader-char");
        } else if (name == u"draw:frame") {
            frame_ = whole(attribute("svg:width")) + u" x "_s + whole(attribute("svg:height"));
        } else if (name == u"draw:image" && into_.picture_.isEmpty()) {
            into_.picture_ = frame_;
        }
    }

    void end(QStringView name) {
        if (name == u"style:style") {
            style_.clear();
        } else if (name == u"text:index-body") {
            place_ = u"text"_s;
        } else if (name == u"text:p" || name == u"text:h") {
            open_.pop_back();
        } else if (name == u"text:span") {
            spans_.removeLast();
        }
    }

    // Of styles with a name; what stands in lists and defaults is passed over.
    void keepProperties() {
        if (style_.isEmpty()) {
            return;
        }
        for (const QXmlStreamAttribute& each : xml_.attributes()) {
            into_.styles_[style_].properties[each.qualifiedName().toString()] =
                each.value().toString();
        }
    }

    void keepLengths(const QString& of) {
        for (const QXmlStreamAttribute& each : xml_.attributes()) {
            if (const QString name = of + each.qualifiedName().toString();
                !into_.lengths_.contains(name)) {
                into_.lengths_[name] = millimetres(each.value());
            }
        }
    }

    void take(const QString& text) {
        if (open_.empty()) {
            return;
        }
        Paragraph& paragraph = into_.paragraphs_[open_.back()];
        if (paragraph.text.trimmed().isEmpty() && !text.trimmed().isEmpty()) {
            paragraph.runStyle = spans_.isEmpty() ? QString() : spans_.last();
        }
        paragraph.text += text;
    }

    SuiteReading& into_;
    QXmlStreamReader xml_;
    QString style_;
    QString side_;
    QString place_ = u"text"_s;
    QString frame_;
    QStringList spans_;
    std::vector<std::size_t> open_; // paragraphs, the innermost last
};

SuiteReading::SuiteReading(const QString& flatText) { Reader(*this, flatText).read(); }

const SuiteReading::Paragraph* SuiteReading::find(const QString& text) const {
    for (const Paragraph& paragraph : paragraphs_) {
        if (paragraph.text.trimmed() == text) {
            return &paragraph;
        }
    }
    return nullptr;
}

QString SuiteReading::textsOf(QStringView place) const {
    QStringList texts;
    for (const Paragraph& paragraph : paragraphs_) {
        if (paragraph.place == place && !paragraph.text.trimmed().isEmpty()) {
            texts << paragraph.text.trimmed();
        }
    }
    return texts.join(u'|');
}

QString SuiteReading::propertyOf(QString style, const QString& name) const {
    for (; styles_.contains(style); style = styles_[style].parent) {
        const auto& properties = styles_[style].properties;
        if (properties.contains(name)) {
            return properties[name];
        }
    }
    return {};
}

QString SuiteReading::property(const Paragraph& paragraph, const QString& name) const {
    const QString own = propertyOf(paragraph.runStyle, name);
    return own.isEmpty() ? propertyOf(paragraph.style, name) : own;
}

QString SuiteReading::lookOf(const QString& text) const {
    const Paragraph* found = find(text);
    if (!found) {
        return u"none"_s;
    }
    const bool isBold = property(*found, u"style:font-weight-asian"_s) == u"bold";
    return property(*found, u"style:font-name-asian"_s) + u' ' +
           property(*found, u"style:font-size-asian"_s) + (isBold ? u" bold "_s : u" plain "_s) +
           property(*found, u"fo:text-align"_s);
}

bool SuiteReading::startsPage(const QString& text) const {
    const Paragraph* found = find(text);
    return found && property(*found, u"fo:break-before"_s) == u"page";
}

} // namespace qvnd::test
