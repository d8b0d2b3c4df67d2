#include "stage/FreeNames.h"

#include "markup/Matching.h"

namespace quillmere {

namespace {

constexpr qsizetype kMostDigits = 9; // of a number that is counted up

} // namespace

FreeNames::FreeNames(const Outline &outline)
{
    for (const qint32 block : outline.blocks()) {
        if (const std::optional<Attribute> name = outline.nameAttribute(block))
            m_taken.insert(foldedText(outline.at(name->value)));
    }
}

bool FreeNames::take(const QString &name)
{
    const qsizetype before = m_taken.size();
    m_taken.insert(foldedText(name));
    return m_taken.size() > before;
}

QString FreeNames::after(const QString &name)
{
    qsizetype digits = 0;
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    while (digits < std::min(kMostDigits, name.size()) && isDigit(name[name.size() - 1 - digits]))
        ++digits;
    const qint64 number = digits > 0 ? QStringView(name).last(digits).toLongLong() : 1;
    return freeFrom(name.chopped(digits), number + 1, digits);
}

QString FreeNames::freeFrom(const QString &stem, qint64 number, qsizetype digits)
{
    QHash<qint64, qint64> &next = m_next[stem + u'\n' + QString::number(digits)];
    qint64 free = number;
    QString name;
    for (;;) {
        for (auto known = next.constFind(free); known != next.constEnd(); known = next.constFind(free))
            free = *known;
        name = stem + QString::number(free).rightJustified(digits, u'0');
        if (take(name))
            break;
        next.insert(free, free + 1);
    }
    next.insert(free, free + 1);
    while (number <= free) {
        const qint64 behind = next.value(number, free + 1);
        next.insert(number, free + 1);
        number = behind;
    }
    return name;
}

} // namespace quillmere
