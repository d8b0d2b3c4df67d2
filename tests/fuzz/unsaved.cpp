#include "Fuzz.h"
#include "files/TestFiles.h"
#include "keeping/UnsavedTexts.h"
#include "rows/RowsText.h"

// An unsaved text comes back to the letter, for whatever document; a damaged file of such a text is no text
// or some text. The same for rows.
void fuzz(const Input &input)
{
    static const TestFiles files;
    const QString folder = files.path(u"recovery"_s);
    const QString document = input.text(0);
    const QByteArray units = input.bytes(1);
    QString text(units.size() / 2, Qt::Uninitialized); // halves of pairs and all
    std::copy_n(units.constData(), text.size() * 2, reinterpret_cast<char *>(text.data()));

    const UnsavedFile lock = UnsavedFile::forNew(folder, document);
    const QString file = lock.path();
    for (const QString &typed : {text, input.text(1)}) {
        keepUnsaved(file, document, typed);
        const QList<UnsavedText> kept = unsavedTextsOf(folder, document, InUse::Include);
        check(kept.size() == 1 && kept[0].file == file, "one text is kept", document);
        same(kept[0].text, typed, "it comes back");
    }
    files.write(QDir(files.folder()).relativeFilePath(file), input.bytes(2));
    check(unsavedTextsOf(folder, document, InUse::Include).size() <= 1, "a damaged file");
    QFile::remove(file);

    QList<ListRows::Row> rows;
    for (const QString &line : input.text(1).split(u'|')) {
        const QStringList cells = line.split(u'*');
        rows.append({cells.first(), cells.mid(1), cells.size() % 2 == 0});
    }
    const auto read = rowsFromText(rowsToText(rows));
    check(read.has_value(), "rows come back");
    same(rowsAsText(*read), rowsAsText(rows), "they are the same");
    if (const auto damaged = rowsFromText(text))
        check(rowsFromText(rowsToText(*damaged)).has_value(), "a damaged text of rows");
}
