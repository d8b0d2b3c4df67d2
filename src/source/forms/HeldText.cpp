#include "source/forms/HeldText.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kObject = QTextFormat::UserObject + 1;
constexpr int kNumber = QTextFormat::UserProperty + 1;
constexpr qsizetype kLongLine = 10000; // units; a longer one is shown shortened
constexpr qsizetype kHead = 2000;      // units of it that are shown
constexpr qsizetype kTail = 500;
constexpr qsizetype kAround = 1000; // on each side of a place that was asked for
constexpr qsizetype kSeekCut = 64;  // how far a cut moves to stay clear of what belongs together
constexpr qreal kPadding = 4;       // pixels left and right of a caption

// The document would break the line there, or show nothing.
bool isHeld(QStringView text, qsizetype at)
{
    switch (text[at].unicode()) {
    case u'\r':
    case QChar::ParagraphSeparator:
    case 0xfdd0: // these two begin and end a frame there
    case 0xfdd1:
    case QChar::ObjectReplacementCharacter:
        return true;
    default:
        return false;
    }
}

qsizetype nextHeld(QStringView text, qsizetype from)
{
    while (from < text.size() && !isHeld(text, from))
        ++from;
    return from;
}

// A place near `at` that splits neither a pair nor what begins or ends a comment, or the colours behind would
// be others.
qsizetype cutNear(QStringView line, qsizetype at)
{
    const auto belongs = [&](QChar c) { return c == u'<' || c == u'!' || c == u'-' || c == u'>'; };
    at = std::clamp<qsizetype>(at, 0, line.size());
    for (const qsizetype most = std::min(at + kSeekCut, line.size()); at > 0 && at < most; ++at) {
        if (!belongs(line[at]) && !belongs(line[at - 1]) && !line[at].isLowSurrogate())
            break;
    }
    return at > 0 && at < line.size() && line[at].isLowSurrogate() ? at + 1 : at;
}

} // namespace

HeldText::HeldText(QTextDocument *document) : QObject(document), m_document(document)
{
    document->documentLayout()->registerHandler(kObject, this);
}

const HeldText::Held *HeldText::find(int position) const
{
    if (m_texts.empty() || m_document->characterAt(position) != QChar::ObjectReplacementCharacter)
        return nullptr;
    QTextCursor behind(m_document);
    behind.setPosition(position + 1);
    const QTextCharFormat format = behind.charFormat();
    const int number = format.intProperty(kNumber);
    const bool isOurs = format.objectType() == kObject && size_t(number) < m_texts.size();
    return isOurs ? &m_texts[size_t(number)] : nullptr;
}

std::vector<HeldText::Place> HeldText::places() const
{
    std::vector<Place> all;
    if (m_texts.empty())
        return all;
    const QString raw = m_document->toRawText();
    qsizetype more = 0; // units that the objects before stand for beyond their own one
    for (qsizetype at = raw.indexOf(QChar::ObjectReplacementCharacter); at >= 0;
         at = raw.indexOf(QChar::ObjectReplacementCharacter, at + 1)) {
        if (const Held *held = find(int(at))) {
            all.push_back({int(at), at + more, held->text.size()});
            more += held->text.size() - 1;
        }
    }
    return all;
}

QString HeldText::text() const
{
    return text(0, m_document->characterCount() - 1);
}

QString HeldText::text(int from, int to) const
{
    // toPlainText() would turn every no-break space into a blank.
    QTextCursor stretch(m_document);
    stretch.setPosition(from);
    stretch.setPosition(to, QTextCursor::KeepAnchor);
    const bool isAll = from == 0 && to == m_document->characterCount() - 1;
    QString raw = isAll ? m_document->toRawText() : stretch.selectedText();
    raw.truncate(to - from);
    raw.replace(QChar::ParagraphSeparator, u'\n');
    if (m_texts.empty())
        return raw;
    QString all;
    qsizetype done = 0;
    for (qsizetype at = raw.indexOf(QChar::ObjectReplacementCharacter); at >= 0;
         at = raw.indexOf(QChar::ObjectReplacementCharacter, at + 1)) {
        if (const Held *held = find(from + int(at))) {
            all += QStringView(raw).sliced(done, at - done);
            all += held->text;
            done = at + 1;
        }
    }
    return all + QStringView(raw).sliced(done);
}

int HeldText::toDocument(qsizetype position) const
{
    qsizetype more = 0;
    for (const Place &place : places()) {
        if (position <= place.start)
            break;
        if (position < place.end())
            return place.position;
        more += place.length - 1;
    }
    return int(std::clamp<qsizetype>(position - more, 0, m_document->characterCount() - 1));
}

qsizetype HeldText::fromDocument(int position) const
{
    qsizetype more = 0;
    for (const Place &place : places()) {
        if (place.position >= position)
            break;
        more += place.length - 1;
    }
    return position + more;
}

bool HeldText::hides(qsizetype position) const
{
    const std::vector<Place> all = places();
    return std::any_of(all.begin(), all.end(),
                       [&](const Place &place) { return place.start < position && position < place.end(); });
}

QString HeldText::heldAt(int position) const
{
    const Held *held = find(position);
    return held ? held->text : QString();
}

void HeldText::hold(QTextCursor &cursor, QStringView text)
{
    QTextCharFormat format;
    format.setObjectType(kObject);
    format.setProperty(kNumber, int(m_texts.size()));
    m_texts.push_back({text.toString(), {}});
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
}

// A text without a line so long that its middle would have to be held.
void HeldText::insertShort(QTextCursor &cursor, QStringView text)
{
    for (qsizetype done = 0; done < text.size();) {
        const qsizetype end = nextHeld(text, done);
        if (end > done)
            cursor.insertText(text.sliced(done, end - done).toString(), QTextCharFormat());
        if (end < text.size())
            hold(cursor, text.sliced(end, 1));
        done = end + 1;
    }
}

void HeldText::insert(QTextCursor &cursor, QStringView text)
{
    qsizetype done = 0;
    for (qsizetype start = 0; text.size() - start > kLongLine;) {
        const qsizetype lineBreak = text.indexOf(u'\n', start);
        const qsizetype end = lineBreak < 0 ? text.size() : lineBreak;
        if (end - start > kLongLine) {
            insertShort(cursor, text.sliced(done, start - done));
            insertLine(cursor, text.sliced(start, end - start), {});
            done = end;
        }
        if (lineBreak < 0)
            break;
        start = end + 1;
    }
    insertShort(cursor, text.sliced(done));
}

bool HeldText::isTooLong(const QTextBlock &line)
{
    return line.length() > 2 * kLongLine;
}

void HeldText::shortenLine(QTextCursor &cursor, const QList<qsizetype> &shown)
{
    const QTextBlock block = cursor.block();
    const qsizetype caret = fromDocument(cursor.position());
    const qsizetype start = fromDocument(block.position());
    const QString line = text(block.position(), block.position() + block.length() - 1);
    QList<qsizetype> inLine;
    for (const qsizetype position : shown) {
        if (position >= start && position <= start + line.size())
            inLine.append(position - start);
    }
    cursor.movePosition(QTextCursor::StartOfBlock);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    insertLine(cursor, line, inLine);
    cursor.setPosition(toDocument(caret));
}

// A text without a line break, `shown` positions in it.
void HeldText::insertLine(QTextCursor &cursor, QStringView line, const QList<qsizetype> &shown)
{
    if (line.size() <= kLongLine) {
        insertShort(cursor, line);
        return;
    }
    QList<std::pair<qsizetype, qsizetype>> parts = {{0, kHead}, {line.size() - kTail, line.size()}};
    for (const qsizetype at : shown)
        parts.append({at - kAround, at + kAround});
    std::sort(parts.begin(), parts.end());
    qsizetype done = 0;
    for (const auto &[from, to] : parts) {
        const qsizetype start = cutNear(line, std::max(from, done)), end = cutNear(line, to);
        if (end <= done)
            continue;
        if (start > done)
            hold(cursor, line.sliced(done, start - done));
        insertShort(cursor, line.sliced(start, end - start));
        done = end;
    }
    if (done < line.size())
        hold(cursor, line.sliced(done));
}

LineState HeldText::stateBehind(int position, LineState before) const
{
    const Held *held = find(position);
    if (!held)
        return before;
    auto &states = const_cast<Held *>(held)->states;
    const auto known = states.find(before);
    if (known != states.end())
        return known->second;
    LineState state = before;
    tokensOf(held->text, state);
    states[before] = state;
    return state;
}

QString HeldText::captionOf(const QTextFormat &format) const
{
    const auto number = size_t(format.intProperty(kNumber));
    const QString text = number < m_texts.size() ? m_texts[number].text : QString();
    if (text.size() != 1)
        return tr("%1 more characters: double-click to see some").arg(QLocale().toString(text.size()));
    return text == u"\r"
               ? QStringLiteral("CR")
               : QStringLiteral("U+%1").arg(uint(text[0].unicode()), 4, 16, QLatin1Char('0')).toUpper();
}

QSizeF HeldText::intrinsicSize(QTextDocument *document, int position, const QTextFormat &format)
{
    Q_UNUSED(position);
    const QFontMetricsF metrics(document->defaultFont());
    return {metrics.horizontalAdvance(captionOf(format)) + 2 * kPadding, metrics.ascent() + 1};
}

void HeldText::drawObject(QPainter *painter, const QRectF &rect, QTextDocument *document, int position,
                          const QTextFormat &format)
{
    Q_UNUSED(position);
    const QPalette palette = QGuiApplication::palette();
    painter->save();
    painter->setFont(document->defaultFont());
    painter->setPen(palette.color(QPalette::PlaceholderText));
    painter->drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), kPadding, kPadding);
    painter->drawText(rect, Qt::AlignCenter | Qt::TextDontClip, captionOf(format));
    painter->restore();
}

} // namespace quillmere
