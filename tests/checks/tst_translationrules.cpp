#include "checks/CheckedFiles.h"
#include "checks/FontLetters.h"
#include "checks/MadeFont.h"
#include "checks/TranslationText.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// What is found in a language, "LINE RULE", that has these rows from line 2 on; its font has ASCII and "ä".
QStringList foundIn(const QStringList &rows)
{
    QStringList lines = {u"<language name=\"L\"><font>F</font>"_s};
    lines += rows;
    for (int i = 0; i < 40; ++i) // a language that translates
        lines.append(u"<tran id=\"source %1\">says %1</tran>"_s.arg(i));
    const ThemeFiles theme = {
        {u"theme.xml"_s, "<config><file_i18n>i18n.xml</file_i18n><file_font>font.xml</file_font></config>"},
        {u"i18n.xml"_s, "<language id=\"L\">l.xml</language>"},
        {u"font.xml"_s, "<font><name>F</name><file>f.ttf</file></font>"},
        {u"f.ttf"_s, fontWithGroups({{0x20, 0x7e}, {0xe4, 0xe4}})},
        {u"l.xml"_s, lines.join(u'\n').toUtf8() + "\n</language>"},
    };
    QStringList found;
    for (const QString &line : problemsOf(theme)) {
        if (line.startsWith(u"l.xml:"_s) && !line.contains(u"unused-string"_s))
            found.append(line.section(u' ', 0, 1).mid(6));
    }
    return found;
}

} // namespace

class tst_translationrules : public QObject
{
    Q_OBJECT

private slots:
    void pairs_data();
    void pairs();
    void languages_data();
    void languages();
    void mended_data();
    void mended();
    void letters_data();
    void letters();
};

void tst_translationrules::pairs_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    QTest::addColumn<QString>("found"); // rules, by "|"
    const auto row = [](const char *source, const char *translation, const char *found) {
        QTest::addRow("%s / %s", source, translation)
            << QString::fromUtf8(source) << QString::fromUtf8(translation) << QString::fromLatin1(found);
    };
    row("Save", "Sichern", "");
    row("Save", "", "");
    row("Save", " Sichern", "blank-ends");
    row("Name: ", "Name:", "blank-ends");
    row("  Name\t", "  Titel\t", "");
    row("%d of %d", "%d von %d", "");
    row("%s of %d", "%d von %s", "");
    row("%d of %d", "%d von %s", "placeholders");
    row("%d channels", "viele", "placeholders");
    row("%1 of %2", "%2 mal %1", "");
    row("%1 of %2", "%1 von %1", "placeholders");
    row("%2$s and %1$s", "%1$s und %2$s", "");
    row("%-5.1f dB", "%5.1f dB", "placeholders");
    row("{name} is {count}", "{count} hat {name}", "");
    row("{name}", "{Name}", "placeholders");
    row("{ a set }", "( ein Satz )", "");
    row("100 % sure", "ganz sicher", "");
    row("100% sure", "100%ig sicher", "");
    row("50 %%", "halb", "");
    row("Sure?", "Sicher?", "");
    row("Sure?", "Sicher", "end-punctuation");
    row("Sure?", "Sicher!", "end-punctuation");
    row("Sure? (yes)", "Sicher? (ja)", "");
    row("\"Done.\"", "'Fertig'.", "");
    row("Please wait...", "Bitte warten", "end-punctuation");
    row("It is done.", "Es ist fertig", "end-punctuation");
    row("Minutes", "Min.", "");
    row("No.", "Nummer", "");
    row("Name:", "Name des Senders", "end-punctuation");
    row("one\\ntwo", "eins\\nzwei", "");
    row("one\\ntwo", "eins zwei", "line-breaks");
    row("Menu", "Menü", "missing-letters");
    row("Menu", "Mänu", "");
    row("Menu", "メニュー", "missing-letters");
    row("EPG", "EPG", "");
    row("12:00", "12:00", "");
    row("Stereo", "Stereo", "same-as-source");
}

void tst_translationrules::pairs()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QFETCH(QString, found);
    QStringList expected;
    for (const QString &rule : found.split(u'|', Qt::SkipEmptyParts))
        expected.append(u"2 "_s + rule);
    QCOMPARE(foundIn({u"<tran id=\"%1\">%2</tran>"_s.arg(source, translation)}), expected);
}

void tst_translationrules::languages_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("twice") << QStringList{u"<tran id=\"Yes\">Ja</tran>"_s, u"<tran id=\"Yes\">Ja</tran>"_s}
                           << QStringList{u"3 duplicate-source"_s};
    QTest::newRow("twice, once without")
        << QStringList{u"<tran id=\"Yes\"></tran>"_s, u"<tran id=\"Yes\">Ja</tran>"_s}
        << QStringList{u"3 duplicate-source"_s};
    QTest::newRow("two ways") << QStringList{u"<tran id=\"Yes\">Ja</tran>"_s,
                                             u"<tran id=\"Yes\">Jawohl</tran>"_s}
                              << QStringList{u"3 duplicate-source"_s, u"3 two-translations"_s};
    QTest::newRow("two ways in other letters")
        << QStringList{u"<tran id=\"Yes\">Ja</tran>"_s, u"<tran id=\"YES\">Jawohl</tran>"_s}
        << QStringList{u"3 two-translations"_s};
    QTest::newRow("other letters for both")
        << QStringList{u"<tran id=\"Yes\">Ja</tran>"_s, u"<tran id=\"YES\">JA</tran>"_s} << QStringList();
    QTest::newRow("in two rows") << QStringList{u"<tran id=\"one\ntwo\">eins zwei</tran>"_s}
                                 << QStringList{u"2 line-breaks"_s};
    QStringList sources;
    for (int i = 0; i < 800; ++i)
        sources.append(u"<tran id=\"Text %1\">Text %1</tran>"_s.arg(i));
    QTest::newRow("language of the sources") << sources << QStringList();
}

void tst_translationrules::languages()
{
    QFETCH(QStringList, rows);
    QFETCH(QStringList, found);
    QCOMPARE(foundIn(rows), found);
}

void tst_translationrules::mended_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    QTest::addColumn<QString>("after"); // empty where nothing is certain
    const auto row = [](const char *source, const char *translation, const char *after) {
        QTest::addRow("%s / %s", source, translation)
            << QString::fromUtf8(source) << QString::fromUtf8(translation) << QString::fromUtf8(after);
    };
    // Marks of other scripts count as ours: the first of each pair needs no mend, and has none.
    row("Sure?", "Sicher!", "Sicher?");
    row("Sure?", "Sicher", "Sicher?");
    row("Please wait...", "Bitte warten", "Bitte warten...");
    row("Sure", "Sicher? ", "Sicher ");
    row("Are you sure?", "你确定吗", "你确定吗？");
    row("Are you sure?", "هل أنت متأكد", "هل أنت متأكد؟");
    row("Are you sure?", "Είσαι σίγουρος", "Είσαι σίγουρος;");
    row("(Sure?)", "(Sicher)", "");
    row("It is done.", "Es (ist) (fertig)", "");
    for (const auto &[source, translation] :
         {std::pair(u"Are you sure?"_s, u"你确定吗？"_s), std::pair(u"It is done."_s, u"完成了。"_s),
          std::pair(u"Are you sure?"_s, u"هل أنت متأكد؟"_s), std::pair(u"one, two,"_s, u"واحد، اثنان،"_s),
          std::pair(u"Are you sure?"_s, u"Είσαι σίγουρος;"_s), std::pair(u"It is done."_s, u"เสร็จแล้วครับ"_s),
          std::pair(u"It is done."_s, u"हो गया है।"_s), std::pair(u"wait..."_s, u"warten…"_s)})
        QVERIFY2(endsAlike(source, translation), qPrintable(translation));
}

void tst_translationrules::mended()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QFETCH(QString, after);
    QVERIFY(!endsAlike(source, translation));
    QCOMPARE(withEndOf(source, translation), after);
    QVERIFY(hasSameBlanks(u" a\t"_s, withBlanksOf(u" a\t"_s, translation)));
}

void tst_translationrules::letters_data()
{
    QTest::addColumn<QByteArray>("font");
    QTest::addColumn<QString>("has"); // of "aZé€😀"; "none" where nothing is known
    const auto segments = [](const QList<std::array<quint32, 4>> &each, const QByteArray &glyphs = {}) {
        QByteArray columns[4];
        for (const auto &[start, end, delta, offset] : each) {
            columns[0] += bigEndian(end, 2);
            columns[1] += bigEndian(start, 2);
            columns[2] += bigEndian(delta, 2);
            columns[3] += bigEndian(offset, 2);
        }
        return fontWithMap(bigEndian(4, 2) + bigEndian(0, 4) + bigEndian(quint32(each.size()) * 2, 2) +
                               QByteArray(6, '\0') + columns[0] + QByteArray(2, '\0') + columns[1] +
                               columns[2] + columns[3] + glyphs,
                           1);
    };
    const QByteArray groups = fontWithGroups({{'Z', 'a'}, {0x1F600, 0x1F600}});
    QTest::newRow("groups") << groups << u"aZ😀"_s;
    QTest::newRow("group without end") << fontWithGroups({{0xe9, 0xffffffff}}) << u"é€😀"_s;
    QTest::newRow("groups out of order") << fontWithGroups({{0x100, 0x2fff}, {'a', 0xe9}}) << u"€"_s;
    QTest::newRow("segments") << segments({{'a', 'a', 5, 0}, {0x20ac, 0x20ac, 1, 0}, {0xffff, 0xffff, 1, 0}})
                              << u"a€"_s;
    QTest::newRow("no glyph by delta") << segments({{'a', 'a', 0x10000 - 'a', 0}}) << u"none"_s;
    QTest::newRow("glyphs") << segments({{'Y', 'Z', 0, 2}}, bigEndian(0, 2) + bigEndian(9, 2)) << u"Z"_s;
    QTest::newRow("no glyph in the list") << segments({{'Z', 'Z', 3, 2}}, bigEndian(0, 2)) << u"none"_s;
    QTest::newRow("glyphs behind the end") << segments({{'Z', 'Z', 3, 0xfffe}}) << u"none"_s;
    QTest::newRow("symbols") << fontWithMap(bigEndian(4, 2) + QByteArray(30, '\0'), 0) << u"none"_s;
    QTest::newRow("cut off") << groups.left(50) << u"none"_s;
    QTest::newRow("cut off in its groups") << groups.chopped(12) << u"aZ"_s;
    QTest::newRow("no font") << QByteArray("font") << u"none"_s;
    QTest::newRow("nothing") << QByteArray() << u"none"_s;
}

void tst_translationrules::letters()
{
    QFETCH(QByteArray, font);
    QFETCH(QString, has);
    const std::optional<FontLetters> letters = FontLetters::read(font);
    QString found = letters ? QString() : u"none"_s;
    for (const uint letter : u"aZé€😀"_s.toUcs4()) {
        if (letters && letters->has(letter))
            found += QString::fromUcs4(reinterpret_cast<const char32_t *>(&letter), 1);
    }
    QCOMPARE(found, has);
}

QTEST_GUILESS_MAIN(tst_translationrules)
#include "tst_translationrules.moc"
