#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The slow, step by step forms of the text routines. The quick ones are held to them on random text and timed
// against them.
namespace twins {

inline void replaceAll(QString &text, const char16_t *from, const char16_t *to)
{
    text.replace(QString::fromUtf16(from), QString::fromUtf16(to), Qt::CaseInsensitive);
}

inline QString splitField(const QString &text, const QString &separator1, const QString &separator2,
                          int index1, int index2)
{
    QString field;
    if (text.isEmpty())
        return field;
    if (text.contains(separator1))
        field = text.split(separator1, Qt::KeepEmptyParts, Qt::CaseInsensitive).value(index1);
    if (!separator2.isEmpty() && field.contains(separator2)) {
        const QStringList pieces = field.split(separator2, Qt::KeepEmptyParts, Qt::CaseInsensitive);
        if (index2 < pieces.size())
            field = pieces[index2];
    }
    return field;
}

inline void trimBlanks(QString &s)
{
    while (s.startsWith(u' '))
        s.remove(0, 1);
    while (s.endsWith(u' '))
        s.chop(1);
}

inline QString stripControlChars(QString s)
{
    for (qsizetype times = s.size(); times > 0; --times) {
        for (char16_t code = 1; code <= 32; ++code) {
            if (s.startsWith(QChar(code))) {
                s.remove(0, 1);
                trimBlanks(s);
            }
            if (s.endsWith(QChar(code))) {
                s.chop(1);
                trimBlanks(s);
            }
        }
    }
    return s;
}

inline QString closeUpEquals(QString text)
{
    for (int pass = 0; pass < 100; ++pass) {
        replaceAll(text, u" =", u"=");
        replaceAll(text, u"= ", u"=");
    }
    return text;
}

inline QString formatXml(const QString &xml)
{
    QString text;
    for (qsizetype i = 0; i < xml.size(); ++i) {
        if (xml[i] == u'\n' && (i == 0 || xml[i - 1] != u'\r'))
            text += u'\r';
        text += xml[i];
    }
    replaceAll(text, u"\r\n", u"\r\n\r\n");
    for (int pass = 0; pass < 100; ++pass) {
        replaceAll(text, u"  ", u" ");
        replaceAll(text, u"\r\n\r\n", u"\r\n");
        replaceAll(text, u"\t", u"");
    }
    replaceAll(text, u"\r\n ", u"\r\n");
    replaceAll(text, u"\r\n\r\n", u"\r\n");
    replaceAll(text, u"<", u"     <");
    for (int pass = 0; pass < 100; ++pass) {
        replaceAll(text, u"\t <widget ", u"<widget ");
        replaceAll(text, u"     <widget ", u"<widget ");
        replaceAll(text, u"     </", u"</");
        replaceAll(text, u"     <?", u"<?");
        replaceAll(text, u"     <property>", u"<property>");
    }
    replaceAll(text, u"<img/>", u"<img></img>");
    replaceAll(text, u"<string/>", u"<string></string>");
    replaceAll(text, u"<string/>", u"<string></string>");
    replaceAll(text, u"\r\n\r\n", u"\r\n");
    replaceAll(text, u"\r\n\n", u"\r\n");
    return text;
}

inline QString getRemoveComment(QString html)
{
    enum { Star, Inside, Ended } state = Star;
    QString collected;
    const qsizetype length = html.size();
    for (qsizetype i = 0; i < length; ++i) {
        const QChar c = html[i];
        if (c == u'<' && QStringView(html).mid(i + 1, 3) == u"!--")
            state = Inside;
        if (c == u'-' && QStringView(html).mid(i + 1, 2) == u"->")
            state = Ended;
        if (state == Inside) {
            collected += c;
        } else if (state == Ended) {
            html.replace(collected + QStringLiteral("-->"), QString(), Qt::CaseInsensitive);
            break;
        }
    }
    return html;
}

inline QString removeComment(QString html)
{
    for (qsizetype times = html.size(); times > 0; --times) {
        if (html.contains(QStringLiteral("<!--")))
            html = getRemoveComment(html);
    }
    return html;
}

} // namespace twins
