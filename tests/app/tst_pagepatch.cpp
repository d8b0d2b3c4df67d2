#include "app/WindowFixture.h"

#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"

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
        QEventLoop loop;
        QTimer patience;
        connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
        connect(this, &WebBrowser::written, &loop, &QEventLoop::quit);
        patience.start(20000);
        write(page);
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
};

QString pageOf(const QString &markup)
{
    ListRows blocks({QString(), QString()}), fonts({QString()});
    return BuildPreviewPage(BuildWidgetHtml(
                                markup, [](const QString &) { return QString(); }, fonts, blocks),
                            {}, {}, blocks);
}

// A page of the renderer's form with anything in its body.
QString frameOf(const QString &body)
{
    QString page = pageOf({});
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
            compare(isBody ? frameOf(next) : pageOf(next));
            if (QTest::currentTestFailed()) {
                qInfo("before {%s}\nafter {%s}", qPrintable(good), qPrintable(next));
                return;
            }
            if (m_patched->isMarked()) {
                ++patched;
                good = next;
            } else {
                compare(isBody ? frameOf(good) : pageOf(good));
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
        compare(pageOf(before + tall));
        m_patched->isMarked();
        m_patched->js(u"window.scrollTo(0,700)"_s);
        for (const QString &text : {after, before}) {
            compare(pageOf(text + tall));
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
        compare(pageOf(text));
        QVERIFY(pageOf(text).size() > (1 << 19));
        m_patched->isMarked();
        compare(pageOf(text.replace(u"block_600"_s, u"other"_s)));
        QVERIFY(m_patched->isMarked());
    }

private:
    void compare(const QString &page)
    {
        m_patched->bringNow(page);
        m_anew->bringNow(page);
        const QStringList is = m_patched->whole().split(u'\n'), shouldBe = m_anew->whole().split(u'\n');
        QVERIFY(is.size() > 10);
        QCOMPARE(is, shouldBe);
    }

    std::unique_ptr<Cell> m_patched, m_anew;
};

WINDOW_TEST_MAIN(TestPagePatch)
#include "tst_pagepatch.moc"
