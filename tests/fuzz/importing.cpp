#include "Fuzz.h"
#include "commands/ExchangeCommand.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "i18n/LanguageStrings.h"

#include <QTextStream>

namespace {

int run(Files &disk, const QStringList &words)
{
    const CommandLine line = parseCommandLine(QStringList{u"quillmere"_s} + words);
    QString said;
    QTextStream out(&said);
    return line.action == CommandLine::Action::Export ? runExport(disk, line, out)
                                                      : runImport(disk, line, out, out);
}

QString sourcesOf(const QString &text)
{
    QString sources;
    for (const LanguageString &string : languageStrings(text))
        sources += QString(string.source + u'\0');
    return sources;
}

} // namespace

// A language that was exported and comes back unchanged is the same, byte for byte. Whatever else comes
// leaves its sources as they are, and has nothing to change a second time.
void fuzz(const Input &input)
{
    static const TestFiles files;
    static Files disk;
    disk.backups().setFolder(files.path(u"backup"_s));
    const QString name = QStringList{u"a.po"_s, u"a.xlf"_s, u"a.csv"_s}.at(input.choice(1, 3));
    const QString theme = files.path(u"theme"_s), file = files.path(name);
    files.write(u"theme/theme.xml"_s, "<config><file_i18n>i18n.xml</file_i18n></config>");
    files.write(u"theme/i18n.xml"_s, "<language id=\"de\">de.xml</language>");
    files.write(u"theme/de.xml"_s, input.bytes(0));
    if (run(disk, {u"export"_s, theme, u"de"_s, u"--out"_s, file}) != 0)
        return;
    check(run(disk, {u"import"_s, theme, u"de"_s, file}) == 0, "reads what it has written");
    check(files.read(u"theme/de.xml"_s) == input.bytes(0), "leaves every byte as it is");

    files.write(name, input.bytes(2));
    const bool changes = run(disk, {u"import"_s, theme, u"de"_s, file, u"--dry-run"_s}) == 1;
    check(files.read(u"theme/de.xml"_s) == input.bytes(0), "writes nothing in a dry run");
    if (run(disk, {u"import"_s, theme, u"de"_s, file}) != 0)
        return;
    const QByteArray after = files.read(u"theme/de.xml"_s);
    check((after != input.bytes(0)) == changes, "changes what the dry run says", input.text(2));
    same(sourcesOf(decodeText(after).text), sourcesOf(input.text(0)), "leaves the sources as they are");
    check(run(disk, {u"import"_s, theme, u"de"_s, file, u"--dry-run"_s}) == 0, "changes all at once",
          decodeText(after).text);
}
