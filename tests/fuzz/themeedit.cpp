#include "theme/ThemeEdit.h"
#include "Fuzz.h"
#include "files/TestFiles.h"

// An edit changes its ranges and nothing else, and its inverse gives back the very bytes. The parts are two
// files, the ranges as bytes (start and length by turns, for the files by turns), and what is put there.
void fuzz(const Input &input)
{
    static const TestFiles files;
    const QString names[] = {u"theme/a.xml"_s, u"theme/b.xml"_s};
    QString paths[2], texts[2];
    for (int i = 0; i < 2; ++i) {
        paths[i] = files.write(names[i], input.bytes(i));
        texts[i] = LoadFile(paths[i]);
    }
    const QString put = input.text(3);
    Files door;
    door.backups().setFolder(files.path(u"backup"_s));
    const EditTargets targets = {door, files.path(u"theme"_s), {}, {}};
    ThemeEdit edit;
    const QByteArray places = input.bytes(2);
    for (qsizetype i = 0; i + 1 < places.size(); i += 2) {
        const int file = int(i / 2 % 2);
        const Range range = {uint8_t(places[i]), uint8_t(places[i]) + uint8_t(places[i + 1]) % 16};
        edit.replace(paths[file], texts[file], range, put);
    }
    bool differs[2] = {};
    const ThemeEdit inverse = edit.apply(targets);
    for (int i = 0; i < 2; ++i) {
        QString expected = texts[i];
        const QList<RangeChange> changes = edit.changesOf(paths[i]);
        for (auto change = changes.crbegin(); change != changes.crend(); ++change) {
            same(change->before, change->range.in(texts[i]).toString(), "what stood there");
            expected.replace(change->range.start, change->range.size(), put);
        }
        same(LoadFile(paths[i]), expected, "the ranges change and nothing else");
        differs[i] = expected != texts[i];
    }
    const ThemeEdit again = inverse.apply(targets);
    for (int i = 0; i < 2; ++i) {
        check(files.read(names[i]) == input.bytes(i), "the bytes come back", texts[i]);
        check(again.changesOf(paths[i]) == (differs[i] ? edit.changesOf(paths[i]) : QList<RangeChange>()),
              "back again it is the same edit", texts[i]);
    }
    QDir(door.backups().folder()).removeRecursively();
}
