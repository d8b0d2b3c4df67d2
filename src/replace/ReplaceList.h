#pragma once

#include "markup/Matching.h"

#include <QHash>
#include <QList>
#include <QString>

namespace quillmere {

// The section [REPLACE] of an INI text, read the way profile strings are: names ignore letter case, the first
// section and the first key of a name win, blanks around "=" and around a value are dropped and so are quotes
// that match, a value ends after 254 characters.
class ReplaceIni
{
public:
    explicit ReplaceIni(const QString &text);
    // The value of a key; empty where there is none.
    QString ReadReplaceIni(const QString &key) const;

private:
    QHash<QString, QString> m_values; // by lower-case key
};

// The pairs of an INI text: as many as "Total" says, where it is a number; one that is missing is empty. A
// Total that no list could mean is taken for a hundred thousand.
QList<Replacement> readReplaceList(const QString &text);
// The INI text for these pairs. A text that has line breaks is written with a blank for each, for the form
// has one line a text.
QString replaceListText(const QList<Replacement> &pairs);

// A text as somebody types or pastes it, with the line ends that a source text has: CR LF.
QString withSourceLineEnds(const QString &text);

} // namespace quillmere
