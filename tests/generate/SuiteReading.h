#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace qvnd::test {

// A document as the office suite reads it: its flat OpenDocument text, with the styles resolved.
class SuiteReading {
public:
    explicit SuiteReading(const QString& flatText);

    // Font, size and alignment of the first paragraph whose text is `text`, as
    // "黑体 15pt bold center"; "none" when there is no such paragraph.
    QString lookOf(const QString& text) const;
    // Whether a page begins with it.
    bool startsPage(const QString& text) const;
    // The headings and the lines of the contents, joined by "|".
    QString headings() const { return textsOf(u"heading"); }
    QString contents() const { return textsOf(u"contents"); }
    // What stands in the header and the footer of all pages but the first.
    QString header() const { return textsOf(u"header"); }
    QString footer() const { return textsOf(u"footer"); }
    // An attribute of the page, its header or its footer: "page.fo:margin-top" in millimetres.
    double length(const QString& name) const { return lengths_.value(name, -1); }
    // The leader of the contents; empty for none.
    QString leader() const { return leader_; }
    // Width and height of the first picture in whole millimetres, as "100 x 50".
    QString picture() const { return picture_; }

private:
    class Reader;

    struct Style {
        QString parent;
        QHash<QString, QString> properties;
    };
    struct Paragraph {
        QString place;
        QString style;
        QString runStyle; // of its first text; empty without one of its own
        QString text;
    };

    const Paragraph* find(const QString& text) const;
    QString textsOf(QStringView place) const;
    QString property(const Paragraph& paragraph, const QString& name) const;
    QString propertyOf(QString style, const QString& name) const;

    QHash<QString, Style> styles_;
    std::vector<Paragraph> paragraphs_;
    QHash<QString, double> lengths_;
    QString leader_;
    QString picture_;
};

} // namespace qvnd::test
