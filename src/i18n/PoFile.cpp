#include "i18n/PoFile.h"

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kLongestReference = 76; // of a line of places
constexpr QStringView kFuzzy = u"fuzzy";
constexpr QStringView kCharsets[] = {u"UTF-8", u"UTF8", u"ASCII", u"US-ASCII",
                                     u"CHARSET"}; // which templates say

struct Escape
{
    char16_t unit, letter;
};
constexpr Escape kEscapes[] = {{u'\a', u'a'}, {u'\b', u'b'}, {u'\t', u't'}, {u'\n', u'n'}, {u'\v', u'v'},
                               {u'\f', u'f'}, {u'\r', u'r'}, {u'"', u'"'},  {u'\\', u'\\'}};

void addEscaped(QString &text, QChar unit)
{
    for (const Escape &escape : kEscapes) {
        if (escape.unit == unit) {
            text += u'\\';
            text += QChar(escape.letter);
            return;
        }
    }
    // Always three digits: what follows may be one.
    if (unit.unicode() < 0x20)
        text += u'\\' + QString::number(unit.unicode(), 8).rightJustified(3, u'0');
    else
        text += unit;
}

// A keyword with its text: in one line, or each line of it in one of its own below.
void addText(QString &text, QStringView keyword, QStringView value)
{
    text += keyword;
    text += u' ';
    const qsizetype lineEnd = value.indexOf(u'\n');
    if (lineEnd >= 0 && lineEnd + 1 < value.size())
        text += u"\"\"\n";
    for (qsizetype from = 0; from < value.size() || from == 0;) {
        const qsizetype end = value.indexOf(u'\n', from);
        const qsizetype next = end < 0 ? value.size() : end + 1;
        text += u'"';
        for (const QChar unit : value.sliced(from, next - from))
            addEscaped(text, unit);
        text += u"\"\n";
        if (next == 0)
            break;
        from = next;
    }
}

void addPlaces(QString &text, const QStringList &places)
{
    qsizetype room = 0;
    for (const QString &each : places) {
        QString place = inOneLine(each);
        // A name with blanks is held together like this.
        if (place.contains(u' ')) {
            const qsizetype colon = std::max<qsizetype>(place.lastIndexOf(u':'), 0);
            place = u'\u2068' + place.first(colon) + u'\u2069' + place.sliced(colon);
        }
        if (room < place.size()) {
            text += room > 0 || text.endsWith(u':') ? QStringView(u"\n#:") : QStringView(u"#:");
            room = kLongestReference;
        }
        text += u' ' + place;
        room = std::max<qsizetype>(room - place.size() - 1, 0);
    }
    if (!places.isEmpty())
        text += u'\n';
}

class PoReader
{
public:
    ExchangeTable read(QStringView text)
    {
        for (qsizetype from = 0; from <= text.size();) {
            qsizetype end = text.indexOf(u'\n', from);
            if (end < 0)
                end = text.size();
            ++m_line;
            readLine(text.sliced(from, end - from).trimmed());
            from = end + 1;
        }
        m_line = std::max(1, m_line - 1);
        finish();
        return std::move(m_table);
    }

private:
    struct Entry
    {
        QString context, id, plural, str;
        bool hasContext = false, hasId = false, hasPlural = false, hasStr = false;
        int line = 0;
    };

    [[noreturn]] void fail(const QString &reason) const { throw LineError(m_line, reason); }

    void readLine(QStringView line)
    {
        if (line.isEmpty())
            return;
        if (line.startsWith(u'#'))
            readComment(line);
        else if (line.startsWith(u'"'))
            addTo(m_open, line);
        else
            readKeyword(line);
    }

    void readComment(QStringView line)
    {
        if (m_entry.hasStr)
            finish();
        if (line.startsWith(u"#~"))
            m_fuzzy = false;
        if (!line.startsWith(u"#,"))
            return;
        for (const QStringView flag : line.sliced(2).split(u',')) {
            if (flag.trimmed() == kFuzzy)
                m_fuzzy = true;
        }
    }

    void readKeyword(QStringView line)
    {
        qsizetype end = 0;
        while (end < line.size() && line[end] != u'"' && !line[end].isSpace() && line[end] != u'[')
            ++end;
        const QStringView keyword = line.first(end);
        QStringView rest = line.sliced(end).trimmed();
        if (keyword == u"msgctxt" || keyword == u"msgid") {
            if (m_entry.hasStr)
                finish();
            const bool isId = keyword == u"msgid";
            if (isId ? m_entry.hasId : m_entry.hasContext || m_entry.hasId)
                fail(QStringLiteral("%1 instead of msgstr").arg(keyword));
            (isId ? m_entry.hasId : m_entry.hasContext) = true;
            if (isId || m_entry.line == 0)
                m_entry.line = m_line;
            m_open = isId ? &m_entry.id : &m_entry.context;
        } else if (keyword == u"msgid_plural" && m_entry.hasId && !m_entry.hasStr && !m_entry.hasPlural) {
            m_entry.hasPlural = true;
            m_open = &m_entry.plural;
        } else if (keyword == u"msgstr" && m_entry.hasId && rest.startsWith(u'[') == m_entry.hasPlural &&
                   (m_entry.hasPlural || !m_entry.hasStr)) {
            m_entry.hasStr = true;
            m_open = &m_entry.str;
            if (m_entry.hasPlural)
                rest = rest.sliced(rest.indexOf(u']') + 1).trimmed();
        } else {
            fail(QStringLiteral("this is not a line of a PO file"));
        }
        addTo(m_open, rest);
    }

    void addTo(QString *text, QStringView quoted)
    {
        if (!text)
            fail(QStringLiteral("a text outside an entry"));
        do {
            if (!quoted.startsWith(u'"'))
                fail(QStringLiteral("a text in double quotes is missing"));
            qsizetype at = 1;
            while (at < quoted.size() && quoted[at] != u'"') {
                if (quoted[at] == u'\\')
                    at = addEscape(*text, quoted, at + 1);
                else
                    *text += quoted[at++];
            }
            if (at >= quoted.size())
                fail(QStringLiteral("a double quote is missing at the end of the line"));
            quoted = quoted.sliced(at + 1).trimmed();
        } while (!quoted.isEmpty());
    }

    // The place behind the escape whose letter stands at `at`.
    qsizetype addEscape(QString &text, QStringView quoted, qsizetype at) const
    {
        const QChar letter = at < quoted.size() ? quoted[at] : QChar();
        for (const Escape &escape : kEscapes) {
            if (escape.letter == letter) {
                text += QChar(escape.unit);
                return at + 1;
            }
        }
        const bool isHex = letter == u'x';
        const qsizetype start = isHex ? at + 1 : at;
        const qsizetype most = isHex ? 2 : 3;
        qsizetype end = start;
        while (end < quoted.size() && end - start < most && isDigit(quoted[end], isHex))
            ++end;
        bool isNumber = false;
        const uint code = quoted.sliced(start, end - start).toUInt(&isNumber, isHex ? 16 : 8);
        // The bytes of letters beyond ASCII would have to be put together first; nobody writes them so.
        if (at >= quoted.size())
            return at;
        if (!isNumber || code >= 0x80)
            fail(QStringLiteral("\"\\%1\" stands for nothing").arg(letter));
        text += QChar(code);
        return end;
    }

    static bool isDigit(QChar letter, bool isHex)
    {
        const char16_t unit = letter.unicode();
        return (unit >= u'0' && unit <= (isHex ? u'9' : u'7')) ||
               (isHex && ((unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F')));
    }

    void finish()
    {
        const Entry entry = std::exchange(m_entry, {});
        const bool isFuzzy = std::exchange(m_fuzzy, false);
        m_open = nullptr;
        if (entry.hasId && !entry.hasStr)
            throw LineError(entry.line, QStringLiteral("there is no msgstr for this msgid"));
        if (entry.hasContext && !entry.hasId)
            throw LineError(entry.line, QStringLiteral("there is no msgid for this msgctxt"));
        if (!entry.hasId)
            return;
        if (entry.id.isEmpty() && !entry.hasContext)
            readHeader(entry);
        else if (entry.hasPlural)
            m_table.refuse(entry.line, QStringLiteral("a language has no plural forms"));
        else if (entry.id.isEmpty())
            m_table.refuse(entry.line, QStringLiteral("the source is empty"));
        else
            m_table.add({entry.id, entry.str, isFuzzy ? UnitState::Fuzzy : UnitState::None, {}, entry.line});
    }

    void readHeader(const Entry &entry)
    {
        constexpr QStringView field = u"Content-Type:", name = u"charset=", language = u"Language:";
        for (const QStringView line : QStringView(entry.str).split(u'\n')) {
            if (line.startsWith(language, Qt::CaseInsensitive))
                m_table.language = line.sliced(language.size()).trimmed().toString();
            const qsizetype at = line.indexOf(name, 0, Qt::CaseInsensitive);
            if (at < 0 || !line.startsWith(field, Qt::CaseInsensitive))
                continue;
            const QStringView charset = line.sliced(at + name.size()).split(u';').first().trimmed();
            const bool isKnown =
                charset.isEmpty() ||
                std::any_of(std::begin(kCharsets), std::end(kCharsets), [&](QStringView known) {
                    return charset.compare(known, Qt::CaseInsensitive) == 0;
                });
            if (!isKnown)
                throw LineError(entry.line,
                                QStringLiteral("its charset is %1; only UTF-8 is read").arg(charset));
        }
    }

    ExchangeTable m_table;
    Entry m_entry;
    QString *m_open = nullptr; // the text of the entry that goes on
    bool m_fuzzy = false;      // the entry that comes, or that is read
    int m_line = 0;
};

} // namespace

QString poText(const ExchangeTable &table)
{
    QString text;
    addText(text, u"msgid", {});
    // The language comes last: some look for the charset in the whole header, and take what they find first.
    addText(text, u"msgstr",
            QString(u"Project-Id-Version: theme\nPO-Revision-Date: 2000-01-01 00:00+0000\n"
                    "Last-Translator: \nLanguage-Team: \nMIME-Version: 1.0\n"
                    "Content-Type: text/plain; charset=UTF-8\nContent-Transfer-Encoding: 8bit\nLanguage: " +
                    inOneLine(table.language) + u'\n'));
    for (const ExchangeUnit &unit : table.units) {
        text += u'\n';
        addPlaces(text, unit.places);
        if (unit.state == UnitState::Fuzzy)
            text += u"#, fuzzy\n";
        addText(text, u"msgid", unit.source);
        addText(text, u"msgstr", unit.translation);
    }
    return text;
}

ExchangeTable readPo(QStringView text)
{
    return PoReader().read(text);
}

} // namespace quillmere
