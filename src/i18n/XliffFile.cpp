#include "i18n/XliffFile.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <optional>

namespace quillmere {

namespace {

constexpr int kMostDepth = 64;
constexpr qsizetype kMostAttributes = 64;
constexpr qsizetype kLongestTag = 0x4000; // UTF-16 units
constexpr QStringView kCode = u"x-code-"; // and the character's number, of an empty <ph>

bool isForXml(QChar unit)
{
    return (unit.unicode() >= 0x20 || unit == u'\t' || unit == u'\n') && unit.unicode() < 0xFFFE;
}

void writeText(QXmlStreamWriter &xml, const QString &text)
{
    qsizetype from = 0;
    int codes = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (isForXml(text[at]))
            continue;
        xml.writeCharacters(text.sliced(from, at - from));
        xml.writeEmptyElement(QStringLiteral("ph"));
        xml.writeAttribute(QStringLiteral("id"), QString::number(++codes));
        xml.writeAttribute(QStringLiteral("ctype"),
                           kCode + QString::number(text[at].unicode(), 16).rightJustified(4, u'0'));
        from = at + 1;
    }
    xml.writeCharacters(text.sliced(from));
}

void writeElement(QXmlStreamWriter &xml, const QString &name, const QString &text,
                  std::initializer_list<std::pair<QString, QString>> attributes)
{
    xml.writeStartElement(name);
    for (const auto &[attribute, value] : attributes) {
        if (!value.isEmpty())
            xml.writeAttribute(attribute, value);
    }
    writeText(xml, text);
    xml.writeEndElement();
}

QString nameOf(UnitState state)
{
    switch (state) {
    case UnitState::Fuzzy:
        return QStringLiteral("needs-review-translation");
    case UnitState::Translated:
        return QStringLiteral("translated");
    case UnitState::None:
        break;
    }
    return {};
}

UnitState stateOf(const QString &name, bool isApproved)
{
    if (name.startsWith(u"needs-") || name == u"new")
        return UnitState::Fuzzy;
    return isApproved || name == u"translated" || name == u"final" || name == u"signed-off"
               ? UnitState::Translated
               : UnitState::None;
}

void writePlaces(QXmlStreamWriter &xml, const QStringList &places, const QString &indent)
{
    for (const QString &place : places) {
        const qsizetype colon = place.lastIndexOf(u':');
        xml.writeCharacters(indent);
        xml.writeStartElement(QStringLiteral("context-group"));
        xml.writeAttribute(QStringLiteral("purpose"), QStringLiteral("location"));
        const QString type = QStringLiteral("context-type");
        writeElement(xml, QStringLiteral("context"), inOneLine(place.first(std::max<qsizetype>(colon, 0))),
                     {{type, QStringLiteral("sourcefile")}});
        writeElement(xml, QStringLiteral("context"), inOneLine(place.sliced(colon + 1)),
                     {{type, QStringLiteral("linenumber")}});
        xml.writeEndElement();
    }
}

void writeUnit(QXmlStreamWriter &xml, const ExchangeUnit &unit, qsizetype number)
{
    const QString indent = QStringLiteral("\n        ");
    xml.writeCharacters(QStringLiteral("\n      "));
    xml.writeStartElement(QStringLiteral("trans-unit"));
    xml.writeAttribute(QStringLiteral("id"), QString::number(number));
    xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml.writeCharacters(indent);
    writeElement(xml, QStringLiteral("source"), unit.source, {});
    if (!unit.translation.isEmpty() || unit.state != UnitState::None) {
        xml.writeCharacters(indent);
        writeElement(xml, QStringLiteral("target"), unit.translation,
                     {{QStringLiteral("state"), nameOf(unit.state)}});
    }
    writePlaces(xml, unit.places, indent);
    xml.writeCharacters(QStringLiteral("\n      "));
    xml.writeEndElement();
}

// The name of a language in a catalogue is rarely a code, such as "de" or "pt-BR".
bool isLanguageCode(QStringView name)
{
    const QList<QStringView> parts = name.split(u'-');
    return std::all_of(parts.begin(), parts.end(), [](QStringView part) {
        return (part.size() == 2 || part.size() == 3) &&
               std::all_of(part.begin(), part.end(),
                           [](QChar unit) { return unit.unicode() < 0x80 && unit.isLetter(); });
    });
}

int lineOf(QStringView text, qsizetype at)
{
    return int(text.first(at).count(u'\n')) + 1;
}

// Where the tag that begins at `at` ends; none where it is longer than any.
std::optional<qsizetype> endOfTag(QStringView text, qsizetype at)
{
    QChar quote;
    const qsizetype last = std::min(text.size(), at + kLongestTag);
    for (; at < last; ++at) {
        if (!quote.isNull())
            quote = text[at] == quote ? QChar() : quote;
        else if (text[at] == u'"' || text[at] == u'\'')
            quote = text[at];
        else if (text[at] == u'>')
            return at;
    }
    return last == text.size() ? std::optional(last) : std::nullopt;
}

// The library compares each attribute of a tag with all others, and reads a document type with all that it
// declares before it tells of it. So both are looked for before it gets the text.
void refuseWhatNobodyWrites(QStringView text)
{
    for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at)) {
        const QStringView rest = text.sliced(at);
        qsizetype end = 0;
        if (rest.startsWith(u"<!--")) {
            end = text.indexOf(u"-->", at + 4);
        } else if (rest.startsWith(u"<![CDATA[")) {
            end = text.indexOf(u"]]>", at);
        } else if (rest.startsWith(u"<?")) {
            end = text.indexOf(u"?>", at);
        } else if (rest.startsWith(u"<!")) {
            throw LineError(lineOf(text, at), QStringLiteral("document types are not read"));
        } else if (const auto behind = endOfTag(text, at)) {
            end = *behind;
        } else {
            throw LineError(lineOf(text, at), QStringLiteral("a tag is too long"));
        }
        if (end < 0)
            return;
        at = end;
    }
}

class XliffReader
{
public:
    explicit XliffReader(QStringView text) : m_lines(lineOf(text, text.size())), m_xml(text.toString())
    {
        m_xml.setNamespaceProcessing(false);
    }

    ExchangeTable read()
    {
        while (next()) {
            if (!m_xml.isStartElement())
                continue;
            if (m_depth == 1)
                checkRoot();
            else if (name() == u"trans-unit")
                readUnit();
            else if (name() == u"file" && m_table.language.isEmpty())
                m_table.language = attribute(QLatin1String("target-language"));
        }
        return std::move(m_table);
    }

private:
    [[noreturn]] void fail(const QString &reason) const { throw LineError(line(), reason); }
    int line() const { return int(std::clamp<qint64>(m_xml.lineNumber(), 1, m_lines)); }

    // False at the end of the text.
    bool next()
    {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++m_depth > kMostDepth)
                fail(QStringLiteral("elements are nested more than %1 deep").arg(kMostDepth));
            if (m_xml.attributes().size() > kMostAttributes)
                fail(QStringLiteral("an element has more than %1 attributes").arg(kMostAttributes));
            break;
        case QXmlStreamReader::EndElement:
            --m_depth;
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            fail(QStringLiteral("document types are not read"));
        case QXmlStreamReader::Invalid:
            fail(QString(m_xml.errorString()).remove(u'\n'));
        case QXmlStreamReader::EndDocument:
            return false;
        default:
            break;
        }
        return true;
    }

    // Without the prefix of a namespace: whatever it is called, there is only one.
    QStringView name() const
    {
        const QStringView name = m_xml.qualifiedName();
        return name.sliced(name.lastIndexOf(u':') + 1);
    }

    QString attribute(QLatin1String name) const { return m_xml.attributes().value(name).toString(); }

    void checkRoot() const
    {
        if (name() != u"xliff")
            fail(QStringLiteral("this is not an XLIFF file"));
        const QString version = attribute(QLatin1String("version"));
        if (!version.isEmpty() && version != u"1" && !version.startsWith(u"1."))
            fail(QStringLiteral("this is XLIFF %1; only 1.2 is read").arg(version));
    }

    void readUnit()
    {
        ExchangeUnit unit;
        unit.line = line();
        const bool isApproved = attribute(QLatin1String("approved")) == u"yes";
        const int depth = m_depth;
        m_foreign.clear();
        while (m_depth >= depth && next()) {
            // Other translations stand deeper.
            if (!m_xml.isStartElement() || m_depth != depth + 1)
                continue;
            if (name() == u"source") {
                unit.source = readText();
            } else if (name() == u"target") {
                unit.state = stateOf(attribute(QLatin1String("state")), isApproved);
                unit.translation = readText();
            }
        }
        if (!m_foreign.isEmpty())
            m_table.refuse(unit.line, QStringLiteral("a language file has no element <%1>").arg(m_foreign));
        else if (unit.source.isEmpty())
            m_table.refuse(unit.line, QStringLiteral("the source is empty"));
        else
            m_table.add(unit);
    }

    QString readText()
    {
        QString text;
        const int depth = m_depth;
        while (m_depth >= depth && next()) {
            if (m_xml.isCharacters())
                text += m_xml.text();
            else if (m_xml.isStartElement() && name() != u"mrk" && !readCode(text))
                m_foreign = name().toString();
        }
        return text;
    }

    bool readCode(QString &text) const
    {
        const QString type = attribute(QLatin1String("ctype"));
        if (name() != u"ph" || !type.startsWith(kCode))
            return false;
        bool isNumber = false;
        const QChar code(type.sliced(kCode.size()).toUShort(&isNumber, 16));
        if (!isNumber || isForXml(code))
            return false;
        text += code;
        return true;
    }

    int m_lines;
    QXmlStreamReader m_xml;
    ExchangeTable m_table;
    QString m_foreign; // an element in a text of the unit
    int m_depth = 0;
};

} // namespace

QString xliffText(const ExchangeTable &table)
{
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(QStringLiteral("xliff"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.2"));
    xml.writeAttribute(QStringLiteral("xmlns"), QStringLiteral("urn:oasis:names:tc:xliff:document:1.2"));
    xml.writeCharacters(QStringLiteral("\n  "));
    xml.writeStartElement(QStringLiteral("file"));
    xml.writeAttribute(QStringLiteral("original"), inOneLine(table.language));
    xml.writeAttribute(QStringLiteral("source-language"), QStringLiteral("en"));
    if (isLanguageCode(table.language))
        xml.writeAttribute(QStringLiteral("target-language"), table.language);
    xml.writeAttribute(QStringLiteral("datatype"), QStringLiteral("plaintext"));
    xml.writeCharacters(QStringLiteral("\n    "));
    xml.writeStartElement(QStringLiteral("body"));
    for (qsizetype i = 0; i < table.units.size(); ++i)
        writeUnit(xml, table.units[i], i + 1);
    xml.writeCharacters(QStringLiteral("\n    "));
    xml.writeEndElement();
    xml.writeCharacters(QStringLiteral("\n  "));
    xml.writeEndElement();
    xml.writeCharacters(QStringLiteral("\n"));
    xml.writeEndElement();
    xml.writeCharacters(QStringLiteral("\n"));
    return text;
}

ExchangeTable readXliff(QStringView text)
{
    refuseWhatNobodyWrites(text);
    return XliffReader(text).read();
}

} // namespace quillmere
