#include "widgets/WidgetCatalogue.h"
#include "Fuzz.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/TestFiles.h"
#include "markup/TagWidget.h"

namespace {

QString literalWithout(QString text, const QString &name)
{
    const QString tag = GetTagWidget(text, name);
    if (!tag.isEmpty())
        text.replace(tag, QString(), Qt::CaseInsensitive);
    text.replace(u"  "_s, u" "_s).replace(u"  "_s, u" "_s);
    return text.remove(u"\r\n"_s).remove(u'\n');
}

} // namespace

// A row a window element, with the mark of a file that is there; a window that was added is a row, and adding
// it again changes nothing; removing is as step by step.
void fuzz(const Input &input)
{
    static const TestFiles files({"A.xml", "b.xml", "sub/A.xml"});
    Files disk;
    const QString text = input.text(0), folder = files.folder() + separator();
    const QString path = files.write(u"widget.xml"_s, input.bytes(0));
    FileList list;
    WidgetCatalogue catalogue;
    const auto names = [&] {
        catalogue.LoadWidgetList(Document::open(disk, path), folder, list);
        QStringList result;
        for (const ListRows::Row &row : catalogue.LvWidget.rows())
            result.append(row.sub(1));
        return result;
    };

    const QStringList before = names();
    QStringList expected;
    for (const QString &piece : text.split(u"<widget "_s, Qt::KeepEmptyParts, Qt::CaseInsensitive).mid(1)) {
        if (piece.contains(u"class=\"window\""))
            expected.append(
                piece.contains(u"name=\"")
                    ? piece.split(u"name=\""_s, Qt::KeepEmptyParts, Qt::CaseInsensitive)[1].section(u'"', 0,
                                                                                                    0)
                    : QString());
    }
    check(before == expected, "a row a window", before.join(u'|'));
    for (const ListRows::Row &row : catalogue.LvWidget.rows()) {
        same(row.text, folder + withOwnSeparators(row.sub(1)) + u".xml", "path of a window");
        check(row.sub(3).isEmpty() || QFileInfo(findFile(row.text)).isFile(), "marked where it is there",
              row.text);
    }

    QString name;
    for (const QChar unit : input.text(1)) {
        if (unit.isLetterOrNumber())
            name += unit;
    }
    const QString with = WidgetCatalogue::withWindow(text, name);
    const bool ends = text.contains(u"</interface>", Qt::CaseInsensitive);
    if (ends)
        same(WidgetCatalogue::withWindow(with, name), with, "adding again changes nothing");
    files.write(u"widget.xml"_s, with.toUtf8());
    const QStringList after = names();
    check(!ends || after.contains(name), "an added window is a row", name);
    check(with.endsWith(u"\r\n") && after.size() >= before.size(), "no window goes", with);
    if (!hasSurrogates(text))
        same(WidgetCatalogue::withoutWindow(text, input.text(1)), literalWithout(text, input.text(1)),
             "removes");
}
