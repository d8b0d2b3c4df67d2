#include "keeping/VersionPreview.h"

#include "asking/LineCount.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"

#include <QFileInfo>
#include <QObject>

namespace quillmere {

namespace {

constexpr qint64 kMostBytesCompared = 8'000'000;
constexpr qsizetype kMostLines = 2000;
constexpr qsizetype kLongestLine = 500; // characters

// A text has no such byte; pictures and fonts have.
bool isText(const QByteArray &bytes)
{
    return !bytes.contains('\0');
}

QString tr(const char *text)
{
    return QObject::tr(text);
}

QList<VersionPreview::Line> linesOf(const LineDifference &difference)
{
    using Kind = VersionPreview::Kind;
    QList<VersionPreview::Line> lines;
    qsizetype left = 0;
    for (const LineDifference::Hunk &hunk : difference.hunks) {
        if (lines.size() < kMostLines)
            lines.append({Kind::Place, tr("Line %1").arg(hunk.from + 1)});
        for (const LineDifference::Line &line : hunk.lines) {
            if (lines.size() >= kMostLines) {
                ++left;
                continue;
            }
            const Kind kind = line.kind == LineDifference::Kind::Same      ? Kind::Same
                              : line.kind == LineDifference::Kind::Removed ? Kind::Removed
                                                                           : Kind::Added;
            QString text = line.text.first(std::min(line.text.size(), kLongestLine)).toString();
            for (QChar &c : text) {
                if (c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
                    c = QChar(0xB6); // shown as they are, they would break the line
            }
            if (text.size() < line.text.size())
                text += QChar(0x2026);
            lines.append({kind, text});
        }
    }
    if (left > 0)
        lines.append({Kind::Place, tr("%1 more lines are not shown").arg(left)});
    return lines;
}

void showDifference(VersionPreview &preview, const QByteArray &now, const QByteArray &then,
                    Indentation indentation)
{
    constexpr qsizetype kContext = 3;
    const QString from = decodeText(now).text, to = decodeText(then).text;
    const LineDifference difference = compareLines(from, to, kContext, indentation);
    const qsizetype indented = indentation == Indentation::Ignored ? onlyIndented(from, to) : 0;
    const bool sameLines = difference.hunks.isEmpty() && !now.isEmpty();
    if (!sameLines)
        preview.heading += lineCountText(difference);
    else if (indented == 0)
        preview.heading += tr("only line ends or the code page differ.");
    if (indented > 0)
        preview.heading += (sameLines ? QString() : QStringLiteral(" ")) + indentedLinesText(indented);
    preview.lines = linesOf(difference);
}

std::optional<QByteArray> bytesOf(const QString &path)
{
    try {
        return LoadBytes(path, {}, kMostBytesCompared);
    } catch (const RunTimeError &) {
        return {};
    }
}

} // namespace

QString timeText(const Version &version)
{
    return version.time().toString(u"yyyy-MM-dd hh:mm:ss");
}

VersionPreview previewOf(const Version &version, Indentation indentation)
{
    const QFileInfo file(version.path);
    const bool exists = file.isFile();
    VersionPreview preview;
    preview.heading = tr("%1 of %2").arg(fileNameOf(version.path).toString(), timeText(version));
    preview.heading +=
        exists ? tr(" compared with the current file: ") : tr("; the file does not exist now: ");
    const qint64 sizeNow = exists ? file.size() : 0;
    const QString sizes = exists ? tr("%1 bytes become %2 bytes.").arg(sizeNow).arg(version.size)
                                 : tr("%1 bytes.").arg(version.size);
    if (std::max(version.size, sizeNow) > kMostBytesCompared) {
        preview.heading += sizes;
        return preview;
    }
    const auto then = bytesOf(version.copy);
    const auto now = exists ? bytesOf(version.path) : QByteArray();
    preview.same = exists && then && now && *then == *now;
    if (!then || !now)
        preview.heading += then ? tr("the file cannot be read.") : tr("the version can no longer be read.");
    else if (preview.same)
        preview.heading += tr("no difference.");
    else if (!isText(*then) || !isText(*now))
        preview.heading += sizes;
    else
        showDifference(preview, *now, *then, indentation);
    return preview;
}

} // namespace quillmere
