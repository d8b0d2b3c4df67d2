#pragma once

#include "Fuzz.h"
#include "i18n/ExchangeFile.h"

// What holds of each format: a file is read, or a line of it is named; what was read, or made up from lines
// SOURCE=TRANSLATION, is written and read again as the same. PO does not say that a unit was translated.
inline QString unitsAsText(const ExchangeTable &table, ExchangeFormat format)
{
    QString text;
    for (const ExchangeUnit &unit : table.units) {
        const bool isSaid = format != ExchangeFormat::Po || unit.state == UnitState::Fuzzy;
        text += QString(QString::number(isSaid ? int(unit.state) : 0) + u'{' + unit.source + u"}{" +
                        unit.translation + u"}\n");
    }
    return text;
}

inline int linesIn(const QByteArray &bytes)
{
    return int(QByteArray(bytes).replace("\r\n", "\n").replace('\r', '\n').count('\n')) + 1;
}

inline void exchanges(ExchangeFormat format, const Input &input)
{
    ExchangeTable table;
    const int lines = linesIn(input.bytes(0));
    const auto isLine = [&](int line) { check(line >= 1 && line <= lines, "names a line of the file"); };
    try {
        table = readExchange(format, input.bytes(0));
        for (const LineNote &note : table.refused)
            isLine(note.line);
        for (const ExchangeUnit &unit : table.units)
            isLine(unit.line);
    } catch (const LineError &error) {
        isLine(error.line());
        check(!error.message().isEmpty(), "says why");
    }
    for (const QString &line : input.lines(1)) {
        const UnitState state = UnitState(line.size() % 3);
        const QString source = line.section(u'=', 0, 0).replace(u'|', u'\n');
        if (!source.isEmpty())
            table.add({source, line.section(u'=', 1).replace(u'|', u'\n'), state, {line, u":"_s}, 0});
    }
    table.language = input.text(1);
    const ExchangeTable again = readExchange(format, exchangeBytes(format, table));
    check(again.refused.isEmpty(), "writes what it reads");
    same(unitsAsText(again, format), unitsAsText(table, format), "reads what it writes");
}
