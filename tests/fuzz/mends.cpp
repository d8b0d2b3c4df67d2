#include "checks/Mends.h"
#include "Fuzz.h"
#include "checks/ThemeCheck.h"
#include "files/TestFiles.h"

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QList<Problem> problemsIn(const ThemeSources &sources, const ThemeIndex &index)
{
    PictureStore pictures([](const QByteArray &bytes) {
        return PictureReading{QSize(int(bytes.size()), 1), true};
    });
    return checkTheme(sources, index, pictures)->problems;
}

qsizetype countOf(const QList<Problem> &problems, const Problem &like)
{
    return std::count_if(problems.begin(), problems.end(), [&](const Problem &each) {
        return each.rule == like.rule && each.file == like.file && each.name == like.name;
    });
}

// Whether an edit that does away with a problem leaves no other of the same kind in its place: the next row
// of a name that stands in a catalogue twice is unused, too, and what is behind a tag may be read as another
// one.
bool isGoneForGood(const QList<Problem> &problems, const Problem &problem)
{
    return problem.rule != Rule::Untranslated && problem.rule != Rule::UnclosedElement &&
           std::none_of(problems.begin(), problems.end(), [&](const Problem &each) {
               return each.rule == Rule::DuplicateId && each.name.trimmed() == problem.name.trimmed();
           });
}

} // namespace

// What a mend changes stands in its file as it says, it changes that file alone, and the problem is gone
// then. The parts are the files of a theme.
void fuzz(const Input &input)
{
    static const TestFiles files;
    int part = 0;
    for (const char *name : {"a", "image", "color", "font", "l", "widget", "i18n", "theme"}) {
        QByteArray bytes = input.bytes(part++);
        if (bytes.isEmpty() && qstrcmp(name, "theme") == 0)
            bytes =
                "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image><file_color>"
                "color.xml</file_color><file_i18n>i18n.xml</file_i18n><file_font>font.xml</file_font></"
                "config>";
        if (bytes.isEmpty() && qstrcmp(name, "widget") == 0)
            bytes = "<interface><width>9</width><height>9</height><widget class=\"window\" "
                    "name=\"a\"/></interface>";
        if (bytes.isEmpty() && qstrcmp(name, "i18n") == 0)
            bytes = "<language id=\"l\">l.xml</language>";
        files.write(u"theme/%1.xml"_s.arg(QLatin1String(name)), bytes);
    }
    ThemeSources sources;
    sources.folder = files.path(u"theme"_s);
    const ThemeIndex index = *ThemeIndex::build(sources);
    const QList<Problem> problems = problemsIn(sources, index);
    const MendedTheme theme = {sources, index,
                               [](const QString &) { return std::optional<QList<ListRows::Row>>(); }};
    constexpr int most = 8; // each has the theme checked again, so others come first for another window
    const qsizetype first = input.bytes(0).size();
    int tried = 0;
    for (qsizetype i = 0; i < problems.size(); ++i) {
        const Problem &problem = problems.at((first + i) % problems.size());
        for (const Mend &mend : mendsFor(problem, theme)) {
            if (mend.edit.isEmpty() || ++tried > most)
                continue;
            const QString about = problem.message() + u'\n' + mend.title;
            check(mend.edit.paths() == QStringList{mend.file}, "one file changes", about);
            const QString text = LoadFile(mend.file);
            const QList<RangeChange> changes = mend.edit.changesOf(mend.file);
            for (const RangeChange &change : changes) {
                check(change.range.start >= 0 && change.range.end <= text.size(), "lies in the text", about);
                same(change.before, change.range.in(text).toString(), "what stood there");
            }
            ThemeSources mended = sources;
            mended.texts.insert(mend.file, changedText(text, changes));
            if (!isGoneForGood(problems, problem))
                continue;
            const QList<Problem> left = problemsIn(mended, *ThemeIndex::build(mended));
            check(countOf(left, problem) < countOf(problems, problem), "the problem is gone", about);
        }
    }
}
