#include "Fuzz.h"
#include "checks/ThemeCheck.h"
#include "files/TestFiles.h"

// Every problem lies in the text of its file, at its line and column; messages are one line; problems are in
// order; and a window alone gives what it gives in its theme. The parts are the files of a theme.
void fuzz(const Input &input)
{
    static const TestFiles files;
    int part = 0;
    files.write(u"theme/widget.xml"_s,
                "<width>9</width><height>9</height><widget class=\"window\" name=\"a\"/>");
    files.write(u"theme/i18n.xml"_s, "<language id=\"l\">l.xml</language>");
    for (const char *name : {"a", "image", "color", "font", "l", "theme"})
        files.write(u"theme/%1.xml"_s.arg(QLatin1String(name)), input.bytes(part++));
    if (input.bytes(--part).isEmpty())
        files.write(
            u"theme/theme.xml"_s,
            "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image><file_color>"
            "color.xml</file_color><file_i18n>i18n.xml</file_i18n><file_font>font.xml</file_font></config>");
    ThemeSources sources;
    sources.folder = files.path(u"theme"_s);
    const ThemeIndex index = *ThemeIndex::build(sources);
    PictureStore pictures([](const QByteArray &bytes) {
        return PictureReading{QSize(int(bytes.size()), 1), true};
    });
    const CheckedTheme checked = *checkTheme(sources, index, pictures);

    QList<Problem> sorted = checked.problems;
    sortByPlace(sorted);
    const auto asOneText = [](const QList<Problem> &problems, const QString &file) {
        QString text;
        for (const Problem &problem : problems) {
            if (file.isEmpty() || problem.file == file)
                text += u"%1:%2 %3\n"_s.arg(problem.line).arg(problem.column).arg(problem.message());
        }
        return text;
    };
    same(asOneText(checked.problems, {}), asOneText(sorted, {}), "in order");
    for (const Problem &problem : checked.problems) {
        const QString text = LoadFile(problem.file);
        const Range range = problem.range;
        check(range.start >= 0 && range.start <= range.end && range.end <= text.size(), "lies in the text",
              problem.message());
        const QString before = text.first(range.start);
        check(before.count(u'\n') + 1 == problem.line, "on its line", problem.message());
        check(range.start - before.lastIndexOf(u'\n') == problem.column, "in its column", problem.message());
        check(!holdsAny(problem.message(), u"\n\r\t"), "one line", problem.message());
    }
    for (const IndexedFile &file : index.files()) {
        if (file.role == FileRole::Window && file.isListed && file.isReadable)
            same(asOneText(checkWindow(Outline(LoadFile(file.found)), file, index, checked.facts), {}),
                 asOneText(checked.problems, file.found), "alone as in its theme");
    }
}
