#pragma once

#include "browser/PagePatch.h"

#include <QSet>
#include <QStringList>

namespace quillmere {

// A page in which a few numbers change again and again, such as those of what is dragged. In its text stands
// a mark for each of them. Made from a text with the marks in it, it is the page of that text for any
// numbers, since nothing in the making of a page looks at the digits of a number.
class PageForm
{
public:
    // The mark of the value with this number.
    static QString mark(qsizetype value);
    // Whether the text has nothing in it that could be taken for a part of a mark.
    static bool isFree(QStringView text);
    // The text with the values instead of their marks.
    static QString filled(QStringView marked, const QStringList &values);

    // Nothing where it cannot be told for certain what the browser makes of the page.
    static std::optional<PageForm> read(const QString &marked);

    // The page with these values.
    QString page(const QStringList &values) const { return filled(m_tree.text(), values); }
    // The same, but with this sheet.
    QString page(QStringView sheet, const QStringList &values) const;

    // What brings a document from the values it has to others.
    struct Step
    {
        QJsonArray changes; // as changesBetween() has them, without the sheet
        QString rules;      // which count behind those of the sheet, whatever values that has
    };
    // Nothing where the rules would not do that: for what is no whole number, and for negative sizes.
    std::optional<Step> step(const QStringList &now, const QStringList &next) const;

private:
    bool readRules();
    bool copy(QStringView declaration, QSet<QString> &positions, QString &copied);
    bool mayStand(const QStringList &values) const;

    PageTree m_tree;
    std::vector<PageText> m_texts; // those with marks
    QString m_rules;               // with marks
    QSet<qsizetype> m_sizes;       // the values that must not be negative
};

} // namespace quillmere
