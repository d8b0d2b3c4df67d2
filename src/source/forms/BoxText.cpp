#include "source/forms/BoxText.h"

#include "source/forms/HeldText.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMostFollowed = 10000; // units of a change; all of the text is read sooner than more

QString withCarriageReturns(const QString &lines)
{
    QString text(lines.size() + std::ranges::count(lines, QChar(u'\n')), Qt::Uninitialized);
    QChar *to = text.data();
    for (const QChar unit : lines) {
        if (unit == u'\n')
            *to++ = u'\r';
        *to++ = unit;
    }
    return text;
}

// Of a text with CR LF line ends whose document holds nothing back.
qsizetype lengthOf(const QTextDocument &document)
{
    return document.characterCount() - 1 + document.blockCount() - 1;
}

// Behind so many units of the document, of which a line break is one.
qsizetype behind(QStringView text, qsizetype from, int units)
{
    for (; units > 0 && from < text.size(); --units)
        from += text[from] == u'\r' ? 2 : 1;
    return units == 0 ? from : -1;
}

} // namespace

void BoxText::set(const QString &text, const HeldText &held)
{
    m_text = text;
    m_isKnown = true;
    m_isOwn = !held.holdsAny() && text.size() == lengthOf(*held.document());
}

QString BoxText::of(const HeldText &held)
{
    if (!m_isKnown)
        set(withCarriageReturns(held.text()), held);
    return m_text;
}

void BoxText::forget()
{
    m_text.clear();
    m_isKnown = m_isOwn = false;
}

void BoxText::follow(const HeldText &held, int from, int removed, int added)
{
    const QTextDocument &document = *held.document();
    const bool isSmall =
        removed <= kMostFollowed && added <= kMostFollowed && from + added < document.characterCount();
    if (!m_isOwn || !isSmall || held.holdsAny()) {
        forget();
        return;
    }
    const qsizetype start = from + document.findBlock(from).blockNumber();
    const qsizetype end = behind(m_text, start, removed);
    if (end < 0) {
        forget();
        return;
    }
    m_text.replace(start, end - start, withCarriageReturns(held.text(from, from + added)));
    if (m_text.size() != lengthOf(document))
        forget(); // the document has told of a change that is another one than it was
}

qsizetype BoxText::positionOf(const HeldText &held, int position)
{
    const QString all = of(held);
    if (m_isOwn)
        return std::min<qsizetype>(position + held.document()->findBlock(position).blockNumber(), all.size());
    qsizetype at = held.fromDocument(position);
    const QLatin1String lineBreak("\r\n");
    for (qsizetype end = all.indexOf(lineBreak); end >= 0 && end < at; end = all.indexOf(lineBreak, end + 2))
        ++at;
    return std::min(at, all.size());
}

} // namespace quillmere
