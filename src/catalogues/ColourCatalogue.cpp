#include "catalogues/ColourCatalogue.h"

#include "files/Files.h"
#include "markup/Matching.h"
#include "markup/mndIni.h"
#include "rows/ListRows.h"

namespace quillmere {

void ColourCatalogue::LoadColorList(const Document &file)
{
    QString text = file.text();
    CloseUpEquals(text);

    QList<ListRows::Row> colours;
    // What stands before the first element is no entry.
    for (QStringView piece : splitIgnoringCase(text, u"<color ").mid(1)) {
        if (containsIgnoringCase(piece, u"name=\""))
            colours.append(
                {QString(),
                 {SplitField(piece, u"name=\"", u"\"", 1, 0), SplitField(piece, u">", u"</", 1, 0)}});
    }
    document.replace(file, std::move(colours));
}

void ColourCatalogue::reload(Files &files)
{
    document.keep(); // before the file is known as it is now
    LoadColorList(document.openedAgain(files));
}

void ColourCatalogue::assign(const ColourCatalogue &other)
{
    document.replace(other.document, other.m_rows.rows());
}

void ColourCatalogue::save(Files &files)
{
    document.save(files, ColourFileText(m_rows));
}

QString ColourCatalogue::GetColor(const QString &NamaColor) const
{
    const int row = m_names.find(NamaColor);
    return row < 0 ? QString() : m_rows.sub(row, 2);
}

std::function<QString(const QString &name)> ColourCatalogue::lookup() const
{
    return [names = m_names.snapshot(), colours = m_rows.rows()](const QString &name) {
        const int row = names.find(name);
        return row < 0 ? QString() : colours.at(row).sub(2);
    };
}

QString ColourCatalogue::nameOf(const QString &code) const
{
    for (const ListRows::Row &row : m_rows.rows()) {
        QString name = row.sub(1), its = row.sub(2);
        if (StripControlChars(its).compare(code, Qt::CaseInsensitive) == 0)
            return StripControlChars(name);
    }
    return {};
}

QString ColourFileText(const ListRows &lvColor)
{
    QString text =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<colors>\r\n");
    for (const ListRows::Row &row : lvColor.rows())
        text += u"<color name=\"" + row.sub(1) + u"\">" + row.sub(2) + u"</color>\r\n";
    return text += u"</colors>\r\n";
}

int RemoveCheckedRows(ListRows &rows)
{
    QList<ListRows::Row> kept;
    for (const ListRows::Row &row : rows.rows()) {
        if (!row.checked)
            kept.append(row);
    }
    const int removed = rows.count() - int(kept.size());
    if (removed > 0) {
        rows.assign(std::move(kept));
        emit rows.edited();
    }
    return removed;
}

} // namespace quillmere
