#include "checks/FitFacts.h"
#include "checks/ThemeCheck.h"
#include "files/TestFiles.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// Of letters 10 wide in a line 20 high, with ink from 2 to 18. A "j" at the beginning stands out to the left,
// "?" cannot be measured, and what begins with "new" has not been.
TextMeasures measured(const QList<SetText> &texts)
{
    TextMeasures measures;
    measures.families = {u"known"_s};
    for (const SetText &text : texts) {
        const float width = 10 * float(text.text.size());
        if (text.text == u"?")
            measures.texts.insert(text, std::nullopt);
        else if (!text.text.startsWith(u"new"))
            measures.texts.insert(
                text, TextExtent{width, 20, text.text.startsWith(u'j') ? -3.f : 0.f, width, 2, 18});
    }
    return measures;
}

ReceiverTheme::Font fontOf(const QString &name)
{
    return {name == u"font_prog" ? u"known"_s : QString(), u"16"_s, {}};
}

QString block(const QString &properties, const char *name = "a")
{
    return u"<widget class=\"text\" name=\"%1\"><property>%2</property></widget>"_s.arg(QLatin1String(name),
                                                                                        properties);
}

QString text(const QString &words, int width, int height = 20, const QString &more = {})
{
    return block(u"<rect>[0,0,%1,%2]</rect><string>%3</string>%4"_s.arg(width).arg(height).arg(words, more));
}

} // namespace

class tst_fitrule : public QObject
{
    Q_OBJECT

private slots:
    void found_data();
    void found();
};

void tst_fitrule::found_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("german"); // translations, "" for a theme without languages
    QTest::addColumn<QStringList>("messages");
    const auto row = [](const char *name, const QString &window, const QStringList &messages,
                        const QString &german = {}) { QTest::newRow(name) << window << german << messages; };
    const QString ten = u"abcdefghij"_s;
    row("fits", text(ten, 100), {});
    row("an edge is no cut", text(ten, 99), {});
    row("too wide", text(ten, 98), {u"Cut by 2 pixels: \"abcdefghij\" in the block \"a\""_s});
    row("aligned to the right all the same", text(ten, 70, 20, u"<alignment>right</alignment>"_s),
        {u"Cut by 30 pixels: \"abcdefghij\" in the block \"a\""_s});
    row("ink beside the line", text(u"jot"_s, 100), {u"Cut by 3 pixels: \"jot\" in the block \"a\""_s});
    for (const auto &alignment : {u"right"_s, u"hcentre"_s})
        row(qPrintable(u"with room for it: "_s + alignment),
            text(u"jot"_s, 100, 20, u"<alignment>%1</alignment>"_s.arg(alignment)), {});
    row("right to left", text(u"\u05d0\u05d1\u05d2\u05d3"_s, 30),
        {u"Cut by 10 pixels: \"\u05d0\u05d1\u05d2\u05d3\" in the block \"a\""_s});
    row("a line higher than the block, not its ink", text(u"up"_s, 100, 17), {});
    row("too high", text(u"up"_s, 100, 15), {u"Cut by 3 pixels of its height: \"up\" in the block \"a\""_s});
    row("too high at the top", text(u"up"_s, 100, 15, u"<alignment>bottom</alignment>"_s),
        {u"Cut by 3 pixels of its height: \"up\" in the block \"a\""_s});
    row("in the middle", text(u"up"_s, 100, 16, u"<alignment>vcentre</alignment>"_s), {});
    row("at both sides", text(u"up"_s, 10, 8, u"<alignment>vcentre</alignment>"_s),
        {u"Cut by 10 pixels, and 8 of its height: \"up\" in the block \"a\""_s});
    row("hidden blocks are shown one day", text(ten, 10, 20, u"<state>hide</state>"_s),
        {u"Cut by 90 pixels: \"abcdefghij\" in the block \"a\""_s});
    row("never drawn",
        u"<!-- %1 --><style "
        u"name=\"s\"><property><rect>[0,0,1,20]</rect><string>ab</string></property></style>"
        "%2%3%4"_s.arg(text(ten, 1), block(u"<string>none</string>"_s), text(ten, 0),
                       block(u"<rect>[0,0,9]</rect><string>three</string>"_s)),
        {});
    row("not measured", text(u"?"_s, 1) + text(u"new words"_s, 1), {u"A text could not be measured"_s});
    row("translated", text(u"ab"_s, 30), {u"Cut by 20 pixels (German): \"abcde\" in the block \"a\""_s},
        u"<tran id=\"ab\">abcde</tran>"_s);
    row("the same in both", text(ten, 30),
        {u"Cut by 70 pixels (English, German): \"abcdefghij\" in the block \"a\""_s},
        u"<tran id=\"%1\"></tran>"_s.arg(ten));
    row("only translations are shown", text(ten, 30), {},
        u"<tran id=\"%1\">abc</tran></language><!--both-->"_s.arg(ten));
    row("a font without its file", text(u"ab"_s, 10, 20, u"<font>other</font>"_s),
        {u"Texts in \"other\" are measured in another font: its file is missing"_s,
         u"Cut by 10 pixels: \"ab\" in the block \"a\""_s});
}

void tst_fitrule::found()
{
    QFETCH(const QString, window);
    QFETCH(const QString, german);
    QFETCH(const QStringList, messages);
    const TestFiles files;
    files.write(u"theme/theme.xml"_s, "<config><file_widget>widget.xml</file_widget><file_font>font.xml"
                                      "</file_font><file_i18n>i18n.xml</file_i18n></config>");
    files.write(u"theme/widget.xml"_s, "<widget class=\"window\" name=\"w\"/>");
    files.write(u"theme/font.xml"_s, "<font><name>font_prog</name><file>a.ttf</file></font>"
                                     "<font><name>other</name><file>b.ttf</file></font>");
    files.write(u"theme/w.xml"_s, window.toUtf8());
    if (!german.isEmpty())
        files.write(u"theme/i18n.xml"_s, "<language id=\"English\">e.xml</language>"
                                         "<language id=\"German\">g.xml</language>");
    const QByteArray strings = "<language name=\"x\">" + german.toUtf8() + "</language>";
    files.write(u"theme/e.xml"_s, german.contains(u"both") ? strings : "<language name=\"x\"></language>");
    files.write(u"theme/g.xml"_s, strings);
    ThemeSources sources;
    sources.folder = files.path(u"theme"_s);
    const auto index = ThemeIndex::build(sources);
    MeasuredTheme measures{fontOf, nullptr};
    const QList<SetText> texts = textsToMeasure(sources, *index, measures);
    QCOMPARE(QSet<SetText>(texts.begin(), texts.end()).size(), texts.size());
    measures.measures = std::make_shared<const TextMeasures>(measured(texts));
    PictureStore pictures([](const QByteArray &) { return PictureReading(); });
    QStringList said;
    const CheckedTheme checked = checkTheme(sources, *index, pictures, {}, {}, measures).value();
    for (const Problem &problem : checked.problems) {
        if (problem.rule == Rule::TextFit || problem.rule == Rule::UnmeasuredText)
            said.append(problem.message());
        if (problem.rule == Rule::TextFit)
            QVERIFY(window.mid(problem.range.start, problem.range.size()).size() > 1);
    }
    QCOMPARE(said, messages);
    // Nothing of it without the measures.
    const CheckedTheme plain = checkTheme(sources, *index, pictures).value();
    for (const Problem &problem : plain.problems)
        QVERIFY(problem.rule != Rule::TextFit && problem.rule != Rule::UnmeasuredText);
}

QTEST_GUILESS_MAIN(tst_fitrule)

#include "tst_fitrule.moc"
