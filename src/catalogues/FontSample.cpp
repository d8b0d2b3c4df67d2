#include "catalogues/FontSample.h"

#include "files/Paths.h"
#include "markup/Matching.h"

#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QMap>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostOfScript = 48; // letters in a line
constexpr qsizetype kMostLines = 8;
constexpr qint64 kMostBytes = 16 * 1024 * 1024; // of a font file; the cell takes no larger one
constexpr double kLargest = 200;                // pixels

} // namespace

void UsedLetters::add(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() < 128)
            continue;
        char32_t letter = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            letter = QChar::surrogateToUcs4(text[i], text[i + 1]);
        if (QChar::isLetter(letter))
            ++m_counts[letter];
        i += QChar::requiresSurrogates(letter);
    }
}

QStringList UsedLetters::lines() const
{
    QMap<int, QList<char32_t>> scripts;
    for (auto letter = m_counts.keyBegin(); letter != m_counts.keyEnd(); ++letter)
        scripts[int(QChar::script(*letter))].append(*letter);
    QStringList lines;
    for (QList<char32_t> &letters : scripts) {
        std::ranges::sort(letters, [this](char32_t a, char32_t b) {
            const int countA = m_counts[a], countB = m_counts[b];
            return countA != countB ? countA > countB : a < b;
        });
        letters.resize(std::min(letters.size(), kMostOfScript));
        std::ranges::sort(letters);
        lines.append(QString::fromUcs4(letters.constData(), letters.size()));
        if (lines.size() == kMostLines)
            break;
    }
    return lines;
}

QString whyNoFont(const QString &path, const QString &theme)
{
    const QString name = fileNameOf(path).toString();
    if (name.isEmpty())
        return QStringLiteral("The font names no file.");
    const QString folder = QDir::cleanPath(QDir::fromNativeSeparators(theme)) + u'/';
    const bool isWithin = QDir::cleanPath(QDir::fromNativeSeparators(withOwnSeparators(path)))
                              .startsWith(folder, Qt::CaseInsensitive);
    const QString file = isWithin ? findFile(path) : QString();
    if (isWithin && file.isEmpty())
        return QStringLiteral("There is no font file \"%1\".").arg(name);
    if (!isWithin || !liesBelow(file, theme))
        return QStringLiteral("The font file \"%1\" is outside the theme.").arg(name);
    if (QFileInfo(file).size() > kMostBytes)
        return QStringLiteral("The font file \"%1\" is larger than 16 MB.").arg(name);
    return {};
}

QString fontSamplePage(const SampledFont &font, const SampleLook &look, const QStringList &lines)
{
    bool isNumber = false;
    const double size = font.size.trimmed().toDouble(&isNumber);
    QString rules = u"margin:2px 4px;overflow:hidden;overflow-wrap:anywhere;background:" + look.ground +
                    u";color:" + look.letters + u";font-family:" + look.family + u',' + u"sans-serif;";
    if (isNumber && size > 0)
        rules += u"font-size:" + QString::number(std::min(size, kLargest)) + u"px;";
    if (containsIgnoringCase(font.style, u"italic"))
        rules += u"font-style:italic;";
    if (containsIgnoringCase(font.style, u"bold"))
        rules += u"font-weight:bold;";
    QString page = u"<html><head><style>body{" + rules +
                   u"}</style></head><body><div>The quick brown fox jumps over the lazy dog 0123456789</div>";
    for (const QString &line : lines)
        page += u"<div dir=\"auto\">" + line.toHtmlEscaped() + u"</div>";
    return page + u"</body></html>";
}

} // namespace quillmere
