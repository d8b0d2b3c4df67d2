#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace quillmere {

// The letters that texts use beside those of English, to show a font in.
class UsedLetters
{
public:
    void add(const QString &text);
    // A line for each script, the letters that are used most, in alphabetical order.
    QStringList lines() const;

private:
    QHash<char32_t, int> m_counts;
};

// A font of the catalogue: what its row says.
struct SampledFont
{
    QString file, size, style;
};

// Why a font file is not to be read: it is not in the theme, or too large. A sentence; empty where it may be.
// Nothing outside of the theme is looked at.
QString whyNoFont(const QString &path, const QString &theme);

// How a font's sample looks.
struct SampleLook
{
    QString family;          // the font's, as the page calls it
    QString ground, letters; // colours, as CSS has them
};
// The page with a sentence that has all letters of English, then the lines, in the font's size and style.
QString fontSamplePage(const SampledFont &font, const SampleLook &look, const QStringList &lines);

} // namespace quillmere
