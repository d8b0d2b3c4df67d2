#include "widgets/WidgetCatalogue.h"

#include "files/FileList.h"
#include "files/Paths.h"
#include "markup/Matching.h"
#include "markup/TagWidget.h"
#include "markup/mndIni.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSet>

namespace quillmere {

namespace {

ListRows::Row windowRow(const QString &folder, const QString &name, FileNames &existing)
{
    ListRows::Row row{folder + withOwnSeparators(name) + QStringLiteral(".xml"),
                      {name, QString(), QString()}};
    // A name may lead into a folder below that of the catalogue.
    if (existing.contains(folderOf(row.text).toString(), fileNameOf(row.text).toString())) {
        const QDateTime written = QFileInfo(findFile(row.text)).lastModified();
        row.subItems[1] = written.toString(u"yyyy-MM-dd hh:mm:ss");
        row.subItems[2] = QStringLiteral("Y");
    }
    return row;
}

} // namespace

WidgetCatalogue::WidgetCatalogue()
    : LvWidget({QStringLiteral("Nama"), QStringLiteral("Status"), QString(), QString()},
               ListRows::Checks::Yes),
      lvWidgetDel({QStringLiteral("File Name")})
{
}

void WidgetCatalogue::LoadWidgetList(const Document &file, const QString &newFolder, FileList &file1,
                                     const Progress &progress)
{
    document = file;
    folder = newFolder;
    LvWidget.clear();
    lvWidgetDel.clear();
    const QString &text = document.text();
    width = SplitField(text, u"<width>", u"</width>", 1, 0);
    height = SplitField(text, u"<height>", u"</height>", 1, 0);
    bpp = SplitField(text, u"<bpp>", u"</bpp>", 1, 0);
    if (text.isEmpty())
        return;

    QList<ListRows::Row> windows;
    QSet<QString> listed;
    FileNames existing;
    const QList<QStringView> pieces = splitIgnoringCase(text, u"<widget ").sliced(1);
    for (const QStringView &piece : pieces) {
        tell(progress, &piece - pieces.data(), pieces.size());
        if (!containsExact(piece, u"class=\"window\""))
            continue;
        windows.append(windowRow(folder, SplitField(piece, u"name=\"", u"\"", 1, 0), existing));
        listed.insert(windows.constLast().text);
    }
    file1.setPath(windows.isEmpty() ? folder : folderOf(windows.constLast().text).toString());
    m_unlistedFolder = findFolder(file1.path());
    LvWidget.assign(std::move(windows));

    QList<ListRows::Row> unlisted;
    for (const QString &name : file1.files()) {
        if (name != u"widget.xml" && !listed.contains(folder + name))
            unlisted.append({name, {}});
    }
    lvWidgetDel.assign(std::move(unlisted));
}

void WidgetCatalogue::assign(const WidgetCatalogue &other)
{
    document = other.document;
    folder = other.folder;
    width = other.width;
    height = other.height;
    bpp = other.bpp;
    m_unlistedFolder = other.m_unlistedFolder;
    LvWidget.assign(other.LvWidget.rows());
    lvWidgetDel.assign(other.lvWidgetDel.rows());
}

QString WidgetCatalogue::unlistedPath(int row) const
{
    return joinPath(m_unlistedFolder, lvWidgetDel.text(row));
}

void WidgetCatalogue::reload(Files &files, FileList &file1)
{
    if (!document.path().isEmpty())
        LoadWidgetList(document.openedAgain(files), QString(folder), file1);
}

QString WidgetCatalogue::withWindow(const QString &text, const QString &name)
{
    const QString line = QStringLiteral("<widget class=\"window\" style=\"default\" name=\"%1\"/>").arg(name);
    QString extended = text;
    if (!containsExact(text, line))
        replaceIgnoringCase(extended, u"</interface>", QString(line + QStringLiteral("</interface>")));
    if (!extended.endsWith(u"\r\n"))
        extended += u"\r\n";
    return extended;
}

QString WidgetCatalogue::withoutWindow(const QString &text, const QString &name)
{
    QString rest = text;
    replaceIgnoringCase(rest, GetTagWidget(text, name), u"");
    for (int pass = 0; pass < 2; ++pass)
        replaceIgnoringCase(rest, u"  ", u" ");
    replaceIgnoringCase(rest, u"\r\n", u"");
    rest.remove(u'\n');
    return rest;
}

} // namespace quillmere
