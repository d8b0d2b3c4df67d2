#include "app/PageOfMarkup.h"
#include "app/WindowFixture.h"

#include "browser/PageForm.h"
#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"
#include "stage/RectChanges.h"

#include <QRandomGenerator>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// All of the document, node by node, and the rules that its sheets have become.
const char kWhole[] = R"((function(){var out=[];
function walk(n,depth){var line=depth+' '+n.nodeType+' '+n.nodeName;
if(n.attributes)for(var i=0;i<n.attributes.length;++i)line+=' '+n.attributes[i].name+'='+JSON.stringify(n.attributes[i].value);
if(n.data!==undefined)line+=' '+JSON.stringify(n.data);
out.push(line);for(var c=n.firstChild;c;c=c.nextSibling)walk(c,depth+1);}
walk(document,0);
for(var s=0;s<document.styleSheets.length;++s)
for(var r=0;r<document.styleSheets[s].cssRules.length;++r)out.push(document.styleSheets[s].cssRules[r].cssText);
out.push(document.compatMode);return out.join('\n');})())";

// All of it but the text of the sheet, and what the rules, wherever they stand, make of each element.
const char kSeen[] = R"((function(){var out=[];
function walk(n,depth){var line=depth+' '+n.nodeName;
if(n.attributes)for(const a of n.attributes)line+=' '+a.name+'='+JSON.stringify(a.value);
if(n.data!==undefined&&n.parentNode.nodeName!='STYLE')line+=' '+JSON.stringify(n.data);
if(n.nodeType==1){var style=getComputedStyle(n),sum=0;for(const p of style){var v=style.getPropertyValue(p);
for(var i=0;i<v.length;++i)sum=(sum*31+v.charCodeAt(i))|0;}
for(const p of ['left','top','width','height','line-height'])line+=' '+style.getPropertyValue(p);line+=' '+sum;}
out.push(line);for(var c=n.firstChild;c;c=c.nextSibling)walk(c,depth+1);}
walk(document,0);return out.join('\n');})())";

// Sets a mark at the body, and tells whether there was one: a document written anew has none.
const char kMark[] =
    "(function(){var b=document.documentElement.lastChild,was=!!b.mark;b.mark=1;return was;})()";

class Cell : public WebBrowser
{
public:
    Cell()
    {
        resize(1024, 576);
        show();
    }

    void bringNow(const QString &page)
    {
        write(page);
        waitForPage();
    }
    bool stepNow(const QStringList &values)
    {
        const bool steps = step(values);
        if (steps)
            waitForPage();
        return steps;
    }
    void waitForPage()
    {
        QEventLoop loop;
        QTimer patience;
        connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
        connect(this, &WebBrowser::written, &loop, &QEventLoop::quit);
        patience.start(20000);
        loop.exec();
    }
    QString js(const QString &script)
    {
        QEventLoop loop;
        QString answer;
        page()->runJavaScript(script, QWebEngineScript::ApplicationWorld, [&](const QVariant &value) {
            answer = value.toString();
            loop.quit();
        });
        loop.exec();
        return answer;
    }
    bool isMarked() { return js(QLatin1String(kMark)) == u"true"; }
    QString whole() { return js(QLatin1String(kWhole)); }
    QString seen() { return js(QLatin1String(kSeen)); }
};

// A page of the renderer's form with anything in its body.
QString frameOf(const QString &body)
{
    QString page = pageOfMarkup({});
    return page.replace(u"<body><body>"_s, QString(u"<body>" + body + u"<body>"));
}

// Texts change by tokens put in and stretches taken out.
class Edits
{
public:
    Edits(quint32 seed, const char *tokens) : m_random(seed), m_tokens(QString::fromUtf8(tokens).split(u'|'))
    {
        for (QString &token : m_tokens)
            token.replace(u"\\r"_s, u"\r"_s)
                .replace(u"\\n"_s, u"\n"_s)
                .replace(u'`', u'"')
                .replace(u'^', u'\'');
    }
    int below(int most) { return m_random.bounded(most); }
    QString token() { return m_tokens[below(int(m_tokens.size()))]; }
    void edit(QString &text)
    {
        const int at = below(int(text.size()) + 1);
        if (below(3) == 0)
            text.remove(at, below(30));
        if (below(4) != 0)
            text.insert(at, token());
    }

private:
    QRandomGenerator m_random;
    QStringList m_tokens;
};

// "`" stands for a double quote and "^" for a single one.
const char kBlockTokens[] =
    "a|7|,|é|😀| |\\n|\\r\\n|\\r|<|>|`|^|-|--|-->|<!--|--!>|&amp;|&|<b>|</b>|<p>|</p>|<table>|<t"
    "d>|</table>|<span>|</span>|<rect>[1,2,3,4]</rect>|<backcolor>[red,,]</backcolor>|<forecolo"
    "r>[blue,x]</forecolor>|hcentre|vcentre|<string>some words</string>|<widget class=`text` na"
    "me=`n1`><property><rect>[5,6,70,80]</rect><string>new</string></property></widget>|<widget"
    " class=`box` name=`n2`>|</widget>|<property>|</property>|<children>|</children>|<signal>|<"
    "/signal>|</style>|<style>|<style a=`b`>|<img src=`x`>|x=`y`|/>|<textarea>|<select>|<svg>|<"
    "!DOCTYPE html>|<?x?>|<a href=`#`>|</a>|</body>|</html>|<body class=`z`>|onclick=`x`";

const char kBodyTokens[] =
    "a|bc|😀| |\\n|\\r\\n|<div>|<div>|</div>|</div>|<span>|</span>|<span class=`string`>|<div id"
    "=`a` class=`b`>|<div class=`b` id=`a`>|<DIV ID=^c^>|<my_tag>|</my_tag>|<rect>|</rect>|</in"
    "terface>|<interface>|<!--x-->|<!---->|<!--->|<!-- -- ->-->|<b>|</b>|&lt;|<p>|</p>|</br>|<d"
    "iv hidden>|<div a=b>|<div a=`1` a=`2`>|<div ";

// What a drag may meet: names that are one to the browser or none, blocks without a rect of their own, rules
// that follow the moved ones, and rects that are not what they look like.
const char kDragTokens[] =
    "<rect>[7,8,90,10]</rect>|<rect>[ 5 , +6,70, 80 ]</rect>|<rect>[1,2,30%,40]</rect>|<rect>[-9,2,0,"
    "4]</rect>|<rect>[1,2,3]</rect>|<alignment>hcentre|vcentre|<unfocus_img>x.png</unfocus_img>|<imgs><m"
    "ode>single</mode><img>y</img></imgs>|<backcolor>[:osd_trans,,]</backcolor>|<backcolor>[red;top:9,,"
    "]</backcolor>|<backcolor>[#00ff00,,]</backcolor>|<backcolor>[red(,,]</backcolor>|<backcolor>[^,,]</"
    "backcolor>| name=`w1`| name=`W2`| name=`w 3`| name=`w1.w2`| "
    "name=`1w`| name=``| name=`a,w1`| name=`w1{}`| name=`w1:x`|<string>a &amp; b</string>|<string>[1,2,"
    "3,4]</string>|<!--|-->|hcentre|</style>|</property>|<children>|</children>|<property>|/>|</"
    "widget>|\\n|😀|&|<b>|"
    "</div>|<widget class=`text` name=`w1`><property>|<widget class=`text` name=`w4`><property><string>x<"
    "/string></property></widget>|x=`y`|>|`";

// A window, what is ticked in it, and which of its blocks are dragged.
struct Drag
{
    // The first block.
    explicit Drag(const QString &window) : text(window), numbers(rectNumbers(Outline(window), {{0, {}}})) {}
    explicit Drag(Edits &edits)
    {
        const auto one = [&edits](const QStringList &of) { return of[edits.below(int(of.size()))]; };
        const QStringList names{u"w1"_s, u"W1"_s, u"w3 "_s, u"w4.b"_s, u"a,#w5"_s};
        for (int block = 0; block < 8; ++block) {
            const QString rect = one({u"<rect>[%1,20,%2,40]</rect>"_s, u"<rect>[%1,20,%2,40]</rect>"_s,
                                      u"<rect>[ %1, +20,%2 , 40 ]</rect>"_s, QString()});
            text += u"<widget class=\"%1\" style=\"default\" name=\"%2\">\r\n<property>%3\r\n"
                    "<string>text</string>%4</property>\r\n%5"_s.arg(
                        one({u"text"_s, u"box"_s}), edits.below(8) ? u"w%1"_s.arg(block % 6) : one(names),
                        rect.contains(u'%') ? rect.arg(block * 9).arg(30 + block) : rect,
                        one({QString(), QString(), u"<alignment>vcentre</alignment>"_s}),
                        one({u"</widget>\r\n"_s, u"</widget>\r\n"_s, QString()}));
        }
        for (int count = edits.below(4) - 1; count > 0; --count)
            edits.edit(text);
        options.shown[ViewOptions::Position] = edits.below(2) != 0;
        options.shown[ViewOptions::Size] = edits.below(2) != 0;
        ticked = edits.below(2) ? edits.below(8) : -1;
        QList<BlockBox> dragged;
        for (int count = edits.below(3); count >= 0; --count)
            dragged.append(BlockBox{edits.below(8), {}});
        numbers = rectNumbers(Outline(text), dragged);
    }

    QStringList valuesNow() const
    {
        QStringList values;
        for (const Range number : numbers)
            values.append(number.in(text).toString());
        return values;
    }
    // Each number anew, or as it stands.
    QStringList values(Edits &edits) const
    {
        QStringList values;
        for (const Range number : numbers)
            values.append(edits.below(3) ? QString::number(edits.below(30) ? edits.below(500) : -7)
                                         : number.in(text).toString());
        return values;
    }
    QString pageWith(const QStringList &values) const
    {
        QList<TextChange> changes;
        for (qsizetype i = 0; i < numbers.size(); ++i)
            changes.append({numbers[i].start, numbers[i].size(), values[i]});
        ListRows blocks({QString(), QString()}, ListRows::Checks::Yes), fonts({QString()});
        const QString html = BuildWidgetHtml(
            withChanges(text, changes), [](const QString &) { return QString(); }, fonts, blocks);
        if (ticked >= 0 && ticked < blocks.count())
            blocks.setChecked(ticked, true);
        return BuildPreviewPage(html, options, u"20"_s, blocks);
    }
    QString marked() const
    {
        QStringList marks;
        for (qsizetype i = 0; i < numbers.size(); ++i)
            marks.append(PageForm::mark(i));
        return pageWith(marks);
    }

    QString text;
    ViewOptions options;
    int ticked = -1;
    QList<Range> numbers; // of what is dragged
};

} // namespace

// What a browser holds after changes is held against what another one makes of the same page written anew.
class TestPagePatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_patched = std::make_unique<Cell>();
        m_anew = std::make_unique<Cell>();
        m_anew->setPatching(false);
    }
    void cleanupTestCase()
    {
        m_patched.reset();
        m_anew.reset();
    }

    void sameDocument_data()
    {
        QTest::addColumn<bool>("isBody");
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 4; ++seed) {
            QTest::addRow("window %u", seed) << false << seed;
            QTest::addRow("body %u", seed) << true << seed;
        }
    }

    void sameDocument()
    {
        QFETCH(const bool, isBody);
        QFETCH(const quint32, seed);
        Edits edits(seed, isBody ? kBodyTokens : kBlockTokens);
        QString text;
        for (int block = 0; !isBody && block < 6; ++block)
            text += u"<widget class=\"box\" style=\"default\" name=\"w%1\">\r\n<property><rect>[%1,20,30,40]"
                    "</rect>\r\n<string>text %1</string></property>\r\n%2</widget>\r\n"_s.arg(block)
                        .arg(block % 2 ? u"<!-- c -->"_s : QString());
        QString good = text;
        int patched = 0;
        for (int step = 0; step < 40; ++step) {
            // Most edits go on from a page that can be changed; broken ones are looked at and taken back.
            QString next = good;
            for (int count = edits.below(3); count >= 0; --count)
                edits.edit(next);
            m_patched->isMarked();
            compare(isBody ? frameOf(next) : pageOfMarkup(next));
            if (QTest::currentTestFailed()) {
                qInfo("before {%s}\nafter {%s}", qPrintable(good), qPrintable(next));
                return;
            }
            if (m_patched->isMarked()) {
                ++patched;
                good = next;
            } else {
                compare(isBody ? frameOf(good) : pageOfMarkup(good));
            }
        }
        QVERIFY2(patched > 4, qPrintable(QString::number(patched)));
    }

    void patches_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        const QString one = u"<interface><widget class=\"text\" name=\"a\"><property><rect>[1,2,3,4]</rect>"
                            "<string>words</string></property></widget>\r\n</interface>\r\n"_s;
        const auto row = [&one](const char *name, const QString &from, const QString &to) {
            QTest::newRow(name) << one << QString(one).replace(from, to);
        };
        row("rect", u"[1,2"_s, u"[12,2"_s);
        row("half a tag in the properties", u"<string>"_s, u"<str<string>"_s);
        row("string", u"words"_s, u"words 😀"_s);
        row("name", u"\"a\""_s, u"\"ab\""_s);
        row("attribute", u" name"_s, u" x=\"1\" name"_s);
        row("block", u"</interface>"_s,
            u"<widget class=\"box\" name=\"b\"><property></property></widget></interface>"_s);
        row("block in another", u"</widget>"_s,
            u"<children><widget class=\"box\" name=\"b\"><property></property></widget></children></widget>"_s);
        row("style", u"</interface>"_s,
            u"<style class=\"box\" name=\"b\"><property></property></style></widget></interface>"_s);
        const QString other = QString(one).replace(u"words"_s, u"a &amp; b"_s);
        QTest::newRow("beside an entity") << QString(one + other) << QString(u' ' + one + u' ' + other);
    }

    // Usual edits do not write the page anew, and leave it where it was scrolled to.
    void patches()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        const QString tall = u"<widget class=\"box\" name=\"tall\"><property><rect>[0,0,10,3000]</rect>"
                             "</property></widget>"_s;
        compare(pageOfMarkup(before + tall));
        m_patched->isMarked();
        m_patched->js(u"window.scrollTo(0,700)"_s);
        for (const QString &text : {after, before}) {
            compare(pageOfMarkup(text + tall));
            QVERIFY(m_patched->isMarked());
            QCOMPARE(m_patched->js(u"window.scrollY"_s), u"700"_s);
        }
    }

    // A page that is sent in pieces is changed like others; its sheet is longer than any text of a body.
    void longPage()
    {
        QString text;
        for (int block = 0; block < 1200; ++block)
            text +=
                u"<widget class=\"text\" name=\"block_%1\"><property><rect>[1,2,3,4]</rect>"
                "<string>text</string><alignment>hcentre|vcentre</alignment></property></widget>\r\n"_s.arg(
                    block);
        compare(pageOfMarkup(text));
        QVERIFY(pageOfMarkup(text).size() > (1 << 19));
        m_patched->isMarked();
        compare(pageOfMarkup(text.replace(u"block_600"_s, u"other"_s)));
        QVERIFY(m_patched->isMarked());
    }

    void step_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("next");
        QTest::addColumn<bool>("isSure");
        const auto block = [](const char *name, const char *rect, const char *more = "") {
            return u"<widget class=\"text\" name=\"%1\"><property>%2<string>x</string>%3</property></widget>\r\n"_s
                .arg(QLatin1String(name), QLatin1String(rect), QLatin1String(more));
        };
        const auto row = [](const char *name, bool isSure, const QString &text,
                            const char *next = "7 8 90 12") {
            QTest::newRow(name) << text << QString::fromLatin1(next) << isSure;
        };
        const char rect[] = "<rect>[1,2,30,40]</rect>", centred[] = "<alignment>hcentre|vcentre</alignment>";
        const QString plain = block("a", rect, centred);
        row("plain", true, plain);
        row("to the left", true, plain, "-7 8 90 12");
        row("negative size", false, plain, "7 8 -90 12");
        row("carried over", true, plain + block("b", "", centred) + block("c", rect));
        row("same name", true, plain + block("A", "<rect>[5,6,70,80]</rect>", centred));
        row("same name, percent", false, plain + block("a", "<rect>[5,6,70%,80]</rect>"));
        row("two names in one", false, plain + block("b,#a", "<rect>[5,6,70,80]</rect>"));
        row("other names", true, plain + block("b c.d 1", rect) + block("", rect) + block("1", rect));
        row("no name", false, block("", rect));
        row("blank before the unit", false, block("a", "<rect>[1,2,30, 40 ]</rect>", centred));
        row("open bracket", false, block("a", rect, "<backcolor>[red(,,]</backcolor>"));
        row("open quote", false, block("a", rect, "<backcolor>[',,]</backcolor>"));
        row("a rule in a colour", false, block("a", rect, "<backcolor>[red;inset:0,,]</backcolor>"));
        row("entity beside it", false, block("a &amp; b", rect));
    }

    // What the rules of a page may do to one another.
    void step()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, next);
        const Drag drag(text);
        m_patched->bringNow(drag.pageWith(drag.valuesNow()));
        const QStringList values = next.split(u' ');
        const bool isStep =
            m_patched->beginSteps(drag.marked(), drag.valuesNow()) && m_patched->stepNow(values);
        if (isStep) {
            m_anew->bringNow(drag.pageWith(values));
            compareText(m_patched->seen(), m_anew->seen());
        }
        QTEST(isStep, "isSure");
    }

    void steps_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 2; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    // A page whose numbers change step by step looks at each like the one with these numbers, and the next
    // one that is written has nothing left of them.
    void steps()
    {
        QFETCH(const quint32, seed);
        Edits edits(seed, kDragTokens);
        int steps = 0;
        for (int round = 0; round < 12; ++round) {
            const Drag drag(edits);
            QStringList values = drag.valuesNow();
            m_patched->bringNow(drag.pageWith(values));
            const bool begins = !values.isEmpty() && m_patched->beginSteps(drag.marked(), values);
            for (int step = 0; begins && step < 3; ++step) {
                const QStringList next = drag.values(edits);
                if (!m_patched->stepNow(next))
                    continue;
                ++steps;
                values = next;
                m_anew->bringNow(drag.pageWith(values));
                compareText(m_patched->seen(), m_anew->seen());
            }
            if (!QTest::currentTestFailed() && begins)
                compare(drag.pageWith(edits.below(2) ? values : drag.values(edits)));
            if (QTest::currentTestFailed()) {
                qInfo("{%s} with %s", qPrintable(drag.text), qPrintable(values.join(u' ')));
                return;
            }
            QCOMPARE(m_patched->js(u"String(document.adoptedStyleSheets.length)"_s), u"0"_s);
        }
        QVERIFY2(steps > 5, qPrintable(QString::number(steps)));
    }

private:
    void compare(const QString &page)
    {
        m_patched->bringNow(page);
        m_anew->bringNow(page);
        compareText(m_patched->whole(), m_anew->whole());
    }
    void compareText(const QString &is, const QString &shouldBe)
    {
        QVERIFY(is.count(u'\n') > 10);
        QCOMPARE(is.split(u'\n'), shouldBe.split(u'\n'));
    }

    std::unique_ptr<Cell> m_patched, m_anew;
};

WINDOW_TEST_MAIN(TestPagePatch)
#include "tst_pagepatch.moc"
