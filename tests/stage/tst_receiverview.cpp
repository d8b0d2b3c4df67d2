#include "stage/PictureTest.h"

#include "controls/TextHolder.h"
#include "stage/forms/Stage.h"

#include <QComboBox>
#include <QToolButton>

using namespace quillmere;

namespace {

// What the page draws: places, colours and texts of the divs.
const QString kDrawn =
    u"Array.from(document.querySelectorAll('div')).map(function(d){var s=getComputedStyle(d);"
    "return d.className=='t'?d.textContent:d.className?'':[d.style.left,d.style.top,"
    "s.backgroundColor,s.opacity].join(' ')}).filter(Boolean).join('\\n')"_s;
const QString kGround = u"getComputedStyle(document.body).backgroundImage"_s;

} // namespace

class TestReceiverView : public PictureTest
{
    Q_OBJECT

private slots:
    void init()
    {
        start();
        m_window->write("theme/theme.xml",
                        "<theme><config><file_color>color.xml</file_color><file_i18n>i18n.xml</file_i18n>"
                        "</config></theme>");
        m_window->write("theme/color.xml", "<color name=\"gray\">#010203</color>");
        m_window->write("theme/i18n.xml",
                        "<language id=\"de\">de.xml</language><language id=\"fr\">fr.xml</language>");
        m_window->write("theme/de.xml", "<language name=\"de\"><tran id=\"Yes\">Ja</tran></language>");
        m_window->write("theme/fr.xml", "<language name=\"fr\"><tran id=\"Yes\">Oui</tran></language>");
        m_window->write("theme/v.xml",
                        "<interface>\r\n" +
                            block("box", "win", "0,0,800,500",
                                  block("text", "a", "10,20,100,50", {},
                                        "<string>Yes</string><forecolor>[gray,gray,gray]</forecolor>") +
                                      block("box", "b", "200,20,100,50", {}, "<state>hide</state>")) +
                            "</interface>\r\n");
        m_window->skin->openTheme(m_window->path("")); // another folder, so that it is read again
        m_window->openTheme();
        m_window->choose("mnuWwbZ2");
    }

    void showsWhatTheRowsSay()
    {
        open("v.xml");
        const auto *html = m_window->find<TextHolder>("txtHtml");
        const QString generated = html->text();
        m_window->choose("mnuReceiver");
        const QString ground = u"0px 0px rgb(1, 2, 3) 1\n"_s, a = u"10px 20px rgb(1, 2, 3) 1\n"_s;
        QCOMPARE(m_window->js(kDrawn).toString(), QString(ground + a + u"Yes"));
        QCOMPARE(html->text(), generated);

        // A row that is not saved counts, of the colours and of the language that is open.
        auto *language = m_window->find<QComboBox>("cboLanguage");
        QCOMPARE(language->count(), 3);
        language->setCurrentText(u"fr"_s);
        QTRY_VERIFY(m_window->js(kDrawn).toString().endsWith(u"\nOui"));
        m_window->write("theme/fr.xml", "<language name=\"fr\"><tran id=\"Yes\">Si fait</tran></language>");
        m_window->source()->insertPlainText(u" "_s);
        QTRY_VERIFY(m_window->js(kDrawn).toString().endsWith(u"\nSi fait"));

        // Ticks and hidden blocks.
        m_window->choose("mnuHidden");
        QTRY_VERIFY(m_window->js(kDrawn).toString().endsWith(u"\n200px 20px rgb(1, 2, 3) 0.5"));
        m_window->model("lvBlock")->setData(m_window->model("lvBlock")->index(1, 0), Qt::Checked,
                                            Qt::CheckStateRole);
        QTRY_COMPARE(m_window->js(kDrawn).toString(), QString(ground + u"200px 20px rgb(1, 2, 3) 0.5"));

        m_window->choose("mnuReceiver");
        QTRY_VERIFY(m_window->js(u"document.querySelectorAll('style').length"_s).toInt() > 0);
        QVERIFY(!m_window->js(kDrawn).toString().contains(u"rgb(1, 2, 3)"));
    }

    // A click finds what is seen, a hidden block is not hit, and a drag writes the numbers of the source.
    void worksInThePicture()
    {
        open("v.xml");
        const QString before = m_window->source()->text();
        m_window->choose("mnuReceiver");
        QVERIFY(isSeen());
        take(stepsOf(u"click 250,40"_s).first());
        QCOMPARE(rows(), u"0"_s);
        key(Qt::Key_Escape);
        take(stepsOf(u"drag 50,40 60,45 70,60"_s).first());
        QVERIFY(isSeen());
        QCOMPARE(m_window->source()->text(),
                 QString(before).replace(u"[10,20,100,50]"_s, u"[30,40,100,50]"_s));
        QVERIFY(m_window->js(kDrawn).toString().contains(u"30px 40px"));
        m_window->choose("mnuHidden");
        QTRY_VERIFY(m_window->js(kDrawn).toString().contains(u"0.5"));
        QVERIFY(isSeen());
        take(stepsOf(u"click 250,40"_s).first());
        QCOMPARE(rows(), u"2"_s);
    }

    // Enter puts what is typed into the row of that language, or into a new one; Esc does not.
    void translatesInPlace()
    {
        open("v.xml");
        m_window->choose("mnuReceiver");
        QVERIFY(isSeen());
        take(stepsOf(u"click 50,40"_s).first());
        key(Qt::Key_F4);
        QVERIFY(m_window->said().startsWith(u"Choose a language"));
        auto *language = m_window->find<QComboBox>("cboLanguage");
        const auto line = [this] { return m_window->skin->findChild<QLineEdit *>(u"txtInPlace"_s); };
        const auto type = [&](const QString &text, Qt::Key last) {
            QVERIFY(isSeen());
            key(Qt::Key_F4);
            QVERIFY(line() && line()->hasFocus());
            QTest::keyClicks(line(), text);
            QTest::keyClick(line(), last);
            QTRY_VERIFY(!line());
        };
        language->setCurrentText(u"fr"_s);
        QTRY_VERIFY(m_window->js(kDrawn).toString().endsWith(u"\nOui"));
        type(u"Non"_s, Qt::Key_Escape);
        QCOMPARE(m_window->shown("LvBhs"), QString());
        type(u"Si"_s, Qt::Key_Return);
        QCOMPARE(m_window->shown("LvBhs"), u"*  | Yes | Si\n"_s);
        QTRY_VERIFY(m_window->js(kDrawn).toString().endsWith(u"\nSi"));
        QVERIFY(m_window->find<WebBrowser>("wb")->hasFocus());

        // Ctrl+Z and Ctrl+Y take it in turn with the steps of the text.
        const QString before = m_window->source()->text();
        const auto at = [&](const char *x) { return QString(before).replace(u"[10,"_s, QLatin1String(x)); };
        key(Qt::Key_Right);
        QVERIFY(isSeen());
        type(u"Da"_s, Qt::Key_Return);
        key(Qt::Key_Right);
        const struct
        {
            Qt::Key key;
            QString text, translation;
        } steps[] = {{Qt::Key_Z, at("[11,"), u"Da"_s}, {Qt::Key_Z, at("[11,"), u"Si"_s},
                     {Qt::Key_Z, before, u"Si"_s},     {Qt::Key_Z, before, u"Oui"_s},
                     {Qt::Key_Y, before, u"Si"_s},     {Qt::Key_Y, at("[11,"), u"Si"_s},
                     {Qt::Key_Y, at("[11,"), u"Da"_s}, {Qt::Key_Y, at("[12,"), u"Da"_s}};
        for (const auto &[step, text, translation] : steps) {
            QVERIFY(isSeen());
            key(step, Qt::ControlModifier);
            QCOMPARE(m_window->source()->text(), text);
            QCOMPARE(m_window->model("LvBhs")->index(0, 2).data().toString(), translation);
        }
        for (int i = 0; i < 3; ++i) {
            QVERIFY(isSeen());
            key(Qt::Key_Z, Qt::ControlModifier);
        }
        QCOMPARE(m_window->source()->text(), before);

        // The text gets another source, which has no row.
        SourceBox *source = m_window->source();
        source->setText(QString(source->text()).replace(u">Yes<"_s, u">No<"_s));
        QVERIFY(isSeen());
        take(stepsOf(u"click 50,40"_s).first());
        type(u"Non"_s, Qt::Key_Return);
        QCOMPARE(m_window->shown("LvBhs"), u"*  | Yes | Si\n*  | No | Non\n"_s);
        QCOMPARE(m_window->read("theme/fr.xml"),
                 "<language name=\"fr\"><tran id=\"Yes\">Oui</tran></language>"_ba);

        // What cannot be put anywhere stays where it was typed.
        m_window->write("theme/de.xml", "");
        language->setCurrentText(u"de"_s);
        QVERIFY(isSeen());
        key(Qt::Key_F4);
        QVERIFY(line());
        m_window->prompts.expectMessage(u"Quillmere"_s,
                                        m_window->path("theme/de.xml") + u" is missing or empty."_s);
        QTest::keyClicks(line(), u"Nein"_s);
        QTest::keyClick(line(), Qt::Key_Return);
        QCOMPARE(line()->text(), u"Nein"_s);
    }

    void choicesAreRemembered()
    {
        open("v.xml");
        m_window->choose("mnuReceiver");
        auto *backdrop = m_window->find<QComboBox>("cboBackdrop");
        QCOMPARE(m_window->js(kGround).toString(), u"none"_s);
        backdrop->setCurrentIndex(2);
        QTRY_VERIFY(m_window->js(kGround).toString().startsWith(u"linear-gradient"));
        m_window->start();
        QVERIFY(m_window->find<QAction>("mnuReceiver")->isChecked());
        QCOMPARE(m_window->find<QComboBox>("cboBackdrop")->currentIndex(), 2);
        QVERIFY(m_window->find<QComboBox>("cboState")->isVisible());
    }

    // Above a narrow picture the choices come out of a button, and go back into the line.
    void folds()
    {
        m_window->choose("mnuReceiver");
        auto *state = m_window->find<QComboBox>("cboState");
        auto *button = m_window->find<QToolButton>("cmdReceiverChoices");
        QVERIFY(state->isVisible() && !button->isVisible());
        m_window->skin->resize(1200, 900);
        QVERIFY(!state->isVisible() && button->isVisible());
        button->click();
        QVERIFY(state->isVisible());
        m_window->skin->resize(1400, 900);
        QVERIFY(state->isVisible() && !button->isVisible());
        QCOMPARE(state->window(), m_window->skin.get());
        m_window->choose("mnuReceiver");
        QVERIFY(!state->isVisible());
    }
};

WINDOW_TEST_MAIN(TestReceiverView)
#include "tst_receiverview.moc"
