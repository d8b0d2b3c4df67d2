#include "Fuzz.h"
#include "widgets/BlockProperties.h"
#include "widgets/LiteralProperties.h"

namespace {

// No row holds a mark of an element or has the name of the element that holds them all.
bool isPlain(const QList<ListRows::Row> &rows)
{
    for (const ListRows::Row &row : rows) {
        if (holdsAny(row.text + row.sub(1), u"/<>") ||
            row.text.compare(u"property", Qt::CaseInsensitive) == 0)
            return false;
    }
    return true;
}

} // namespace

// The rows are those of the slow scan; rows that were written back are read again, and what is not a property
// element stays.
void fuzz(const Input &input)
{
    const QString source = input.text(0), name = input.text(1), properties = input.text(2);
    const QString document = u"\"n\"<property>" + properties + u"</property>";
    if (!properties.contains(u"property>", Qt::CaseInsensitive) && !properties.contains(u"<widget ") &&
        !properties.isEmpty()) {
        const auto cut = GetProperty(document, u"n"_s);
        check(cut.has_value(), "an element", document);
        same(rowsAsText(cut->rows), rowsAsText(literal::propertyRows(properties)), "its rows");
    }
    if (const auto cut = GetProperty(source, name)) {
        const QString written = SaveProperty(source, cut->segment, cut->rows);
        const qsizetype at = source.indexOf(cut->segment, 0, Qt::CaseInsensitive);
        check(cut->segment.isEmpty() || hasSurrogates(source) ||
                  written.startsWith(QStringView(source).first(at)),
              "what stands before stays", written);
        if (cut->segment.contains(u"<property>") && isPlain(cut->rows)) {
            const auto again = GetProperty(written, name);
            check(again.has_value(), "still an element", written);
            same(rowsAsText(again->rows), rowsAsText(cut->rows), "what is written is read");
        }
    }
    const QStringList values = bracketedValues(input.text(3), 4);
    check(values.size() == 4, "four values");
    if (!holdsAny(values.join(u' '), u"[]"))
        check(bracketedValues(bracketed(values), 4) == values, "values come back", values.join(u'|'));
}
