#include "catalogues/UsageScan.h"
#include "Fuzz.h"
#include "catalogues/LiteralScan.h"
#include "files/TestFiles.h"

// The rows that are checked are those that a search for each name finds. Names are lines.
void fuzz(const Input &input)
{
    static const TestFiles files;
    const QStringList names = input.lines(0) + QStringList(QString());
    const QStringList documents = {input.text(1), input.text(2)};
    ListRows windows({QString()}), images({QString()}), colours({QString()}), both({QString()});
    for (int i = 0; i < 2; ++i)
        windows.add(files.write(u"%1.xml"_s.arg(i), input.bytes(i + 1)));
    for (const QString &name : names) {
        images.add({}, {name});
        colours.add({}, {name});
        both.add({}, {name});
    }
    const auto checks = [](const ListRows &rows) {
        QList<bool> result;
        for (const ListRows::Row &row : rows.rows())
            result.append(row.checked);
        return result;
    };
    const auto quietly = [](int, int) {};
    scanWindows(windows, images, colours, quietly);
    check(checks(images) + checks(colours) == literal::scan(documents, names, names),
          "used names are checked");
    const int found = checkNamesIn(documents[0], {&both}).first();
    check(checks(both) == literal::namesIn(documents[0], names), "names in a text are checked");
    check(found == checks(both).count(true), "tells how many");
    const int windowsWith = checkWindowsWith(names[0], windows, quietly);
    check(windowsWith == literal::scan({documents[0]}, {names[0]}, {}).count(true) +
                             literal::scan({documents[1]}, {names[0]}, {}).count(true),
          "windows with an image are checked");
}
