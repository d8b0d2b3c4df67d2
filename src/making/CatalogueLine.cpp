#include "making/CatalogueLine.h"

#include "files/RunTimeError.h"
#include "markup/Matching.h"

#include <QObject>

namespace quillmere {

namespace {

bool isBlank(QStringView text)
{
    return text.trimmed().isEmpty();
}

// The blanks that the line before `start` begins with.
QStringView indentBefore(QStringView text, qsizetype start)
{
    const QStringView before = text.first(start).trimmed();
    const QStringView line = before.sliced(before.lastIndexOf(u'\n') + 1);
    qsizetype blanks = 0;
    while (blanks < line.size() && (line[blanks] == u' ' || line[blanks] == u'\t'))
        ++blanks;
    return line.first(blanks);
}

} // namespace

std::optional<RangeChange> entryBefore(QStringView closing, const QString &text, const QString &entry)
{
    const QList<QStringView> pieces = splitIgnoringCase(text, closing);
    if (pieces.size() < 2)
        return std::nullopt;
    const qint32 at = qint32(pieces.last().data() - text.constData() - closing.size());
    const qint32 start = qint32(at > 0 ? text.lastIndexOf(u'\n', at - 1) + 1 : 0);
    if (!isBlank(QStringView(text).sliced(start, at - start)))
        return RangeChange{{at, at}, {}, entry};
    const QStringView end = start > 1 && text[start - 2] == u'\r' ? u"\r\n" : u"\n";
    return RangeChange{{start, start}, {}, QString(indentBefore(text, start) + entry + end)};
}

QString whyNotIn(const Encoding &encoding, const QString &name)
{
    const bool isOneByte =
        encoding.page == CodePage::Windows1252 || encoding.rule == CodePageRule::Windows1252;
    try {
        encodeText(name, encoding.page, isOneByte ? CodePageRule::Windows1252 : encoding.rule);
    } catch (const RunTimeError &) {
        return QObject::tr("The catalogue is in %1, which lacks a letter of this name.")
            .arg(codePageName(isOneByte ? CodePage::Windows1252 : CodePage::Utf8));
    }
    return {};
}

} // namespace quillmere
