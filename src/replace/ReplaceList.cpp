#include "replace/ReplaceList.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr qsizetype kLongestValue = 254;
constexpr double kMostPairs = 100'000;

// Blanks of both kinds, no line ends: those are gone already.
QStringView trimmed(QStringView text)
{
    const auto isBlank = [](QChar unit) { return unit == u' ' || unit == u'\t' || unit == u'\r'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QString valueOf(QStringView written)
{
    QStringView value = trimmed(written);
    const bool quoted = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    if (quoted)
        value = value.sliced(1, value.size() - 2);
    if (value.size() > kLongestValue)
        value.truncate(value[kLongestValue - 1].isHighSurrogate() ? kLongestValue - 1 : kLongestValue);
    return value.toString();
}

QString onOneLine(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(u'\r', u' ').replace(u'\n', u' ');
}

} // namespace

ReplaceIni::ReplaceIni(const QString &text)
{
    enum { Before, Inside, Behind } place = Before;
    // Some editors put a byte order mark in front of the first line.
    const QStringView all = text.startsWith(QChar::ByteOrderMark) ? QStringView(text).sliced(1) : text;
    for (QStringView line : all.split(u'\n')) {
        line = trimmed(line);
        if (line.startsWith(u'[')) {
            const qsizetype end = line.indexOf(u']');
            const QStringView name = trimmed(line.sliced(1, (end < 0 ? line.size() : end) - 1));
            const bool ours = name.compare(u"REPLACE", Qt::CaseInsensitive) == 0;
            if (place == Inside)
                place = Behind;
            else if (place == Before && ours)
                place = Inside;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (place != Inside || equals < 0 || line.startsWith(u';') || line.startsWith(u'['))
            continue;
        const QString key = trimmed(line.first(equals)).toString().toLower();
        if (!m_values.contains(key))
            m_values.insert(key, valueOf(line.sliced(equals + 1)));
    }
}

QString ReplaceIni::ReadReplaceIni(const QString &key) const
{
    return m_values.value(key.toLower());
}

QList<Replacement> readReplaceList(const QString &text)
{
    const ReplaceIni ini(text);
    bool isNumber = false;
    const double total = ini.ReadReplaceIni(QStringLiteral("Total")).toDouble(&isNumber);
    QList<Replacement> pairs;
    if (!isNumber || !std::isfinite(total))
        return pairs;
    const int count = int(std::clamp(total, 0.0, kMostPairs));
    for (int i = 1; i <= count; ++i) {
        const QString number = QString::number(i);
        pairs.append({ini.ReadReplaceIni(u"TextFind" + number), ini.ReadReplaceIni(u"Replace" + number)});
    }
    return pairs;
}

QString replaceListText(const QList<Replacement> &pairs)
{
    QString text = u"[REPLACE]\r\nTotal = " + QString::number(pairs.size()) + u"\r\n";
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        const QString number = QString::number(i + 1);
        text += u"TextFind" + number + u'=' + onOneLine(pairs[i].from) + u"\r\nReplace" + number + u'=' +
                onOneLine(pairs[i].to) + u"\r\n";
    }
    return text;
}

QString withSourceLineEnds(const QString &text)
{
    QString result = text;
    result.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    return result.replace(QLatin1String("\n"), QLatin1String("\r\n"));
}

} // namespace quillmere
