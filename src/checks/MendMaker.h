#pragma once

#include "checks/Mends.h"

namespace quillmere {

// What the mends of a problem are made of, and where they are put.
class MendMaker
{
public:
    MendMaker(const Problem &given, const MendedTheme &held);

    const Problem &problem;
    const MendedTheme &theme;
    IndexedFile file; // that has the problem
    QString text;     // of it, as it counts now
    QList<Mend> mends;

    // A row as its loader reads it: a name and a file, a code or a translation.
    using Rows = QList<std::pair<QString, QString>>;
    struct Words
    {
        QString title, done; // see Mend
    };

    // Replaces a range of the text of a file.
    void changeText(const Words &words, const IndexedFile &changed, const QString &old, Range range,
                    const QString &after);
    // The same where the loader of the file then reads these rows; nothing where it would read others, as it
    // may in a text that is damaged. Says whether there is a mend.
    bool changeCatalogue(const Words &words, const IndexedFile &changed, const QString &old, Range range,
                         const QString &after, const Rows &expected);
    // Puts lines before the closing tag that ends a catalogue, indented as the last element that begins with
    // `like`, so that these rows are added to it.
    bool addToCatalogue(const Words &words, const IndexedFile &changed, QStringView closing, QStringView like,
                        const QStringList &lines, const Rows &added);
    void changeRows(const Words &words, const QString &catalogue, const QList<RowChange> &changes);

    // Of a catalogue, a language or theme.xml.
    Rows rowsIn(const IndexedFile &of, const QString &content) const;
    const IndexedFile *catalogueOf(FileRole role) const;
    // The entry of the problem's row, as far as it is still there.
    std::optional<CatalogueEntry> entry() const;
    // Whether rows that are open have the problem's row; they may have come and gone since it was found.
    bool isMeant(const QList<ListRows::Row> &rows) const;
    // Whether the problem is about an entry of theme.xml.
    bool isOfConfig() const;

    static Words wordsToChange(const QString &to);
};

// The whole lines that a range stands in, without the end of the last one.
Range linesAround(QStringView text, Range range);
// The name of a file in quotes.
QString quotedFile(const QString &path);

// A file of mends each: for a file that is named and missing, or named in other letters; and for strings that
// a language lacks, and translations that do not begin or end like their sources.
void mendNamedFile(MendMaker &maker);
void addTranslations(MendMaker &maker);
void mendTranslation(MendMaker &maker);

} // namespace quillmere
