#include "TextTable.h"
#include "app/WindowFixture.h"
#include "rows/ListRows.h"

#include <QImage>
#include <QListView>

using namespace quillmere;

namespace {

// A window whose middle has a colour and a picture above it.
QByteArray document(const char *colour, const char *picture = "")
{
    return QByteArray(
               "<interface>\n<widget class=\"window\" name=\"w\"><property>\n<rect>[0,0,1280,720]</rect>\n"
               "<backcolor>[") +
           colour + "]</backcolor>\n<imgs><mode>single</mode><img>" + picture +
           "</img></imgs></property></widget>\n</interface>\n";
}

class OverviewWindow : public Window
{
public:
    OverviewWindow()
    {
        write("theme/theme.xml",
              "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
              "<file_color>color.xml</file_color></config>");
        write("theme/widget.xml",
              "<interface><width>1280</width><height>720</height><widget class=\"window\" name=\"typed\"/>"
              "<widget class=\"window\" name=\"gone\"/><widget class=\"window\" name=\"Named\"/>"
              "<widget class=\"window\" name=\"pictured\"/></interface>");
        write("theme/typed.xml", document("#ff0000"));
        write("theme/Named.xml", document("navy"));
        write("theme/pictured.xml", document("#00ff00", "p"));
        write("theme/image.xml", "<image id=\"p\">p.png</image>");
        write("theme/color.xml", "<color name=\"navy\">#000080</color>");
        paint(Qt::yellow);
        openTheme();
        overview = find<QWidget>("overview");
        list = find<QListView>("lvOverview");
    }
    void paint(QColor colour) const
    {
        QImage picture(1280, 720, QImage::Format_RGB32);
        picture.fill(colour);
        QVERIFY(picture.save(path("theme/p.png")));
    }
    // The colour in the middle of a window's picture; none before it is drawn.
    QString colour(const QString &name) const
    {
        const QModelIndex at = find(name);
        const auto picture = at.data(Qt::DecorationRole).value<QPixmap>();
        const QImage image = picture.toImage();
        return image.isNull() ? QString() : image.pixelColor(image.rect().center()).name();
    }
    bool shows(const QString &name, const QString &wanted) const
    {
        return QTest::qWaitFor([&] { return colour(name) == wanted; }, 20000);
    }
    using Window::find;
    QModelIndex find(const QString &name) const
    {
        return list->model()
            ->match(list->model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly)
            .value(0);
    }
    QStringList names() const
    {
        QStringList shown;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            shown.append(list->model()->index(row, 0).data().toString());
        return shown;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers with = {}) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, with);
    }

    QWidget *overview;
    QListView *list;
};

} // namespace

class tst_overview : public QObject
{
    Q_OBJECT

private slots:
    void drawsAllWindows()
    {
        const OverviewWindow window;
        auto *wb = window.find<QWidget>("wb");
        QVERIFY(window.overview->isVisible() && wb->isVisible());
        QCOMPARE(window.names(), QStringList({u"typed"_s, u"gone"_s, u"Named"_s, u"pictured"_s}));
        QVERIFY(window.shows(u"typed"_s, u"#ff0000"_s));
        QVERIFY(window.shows(u"Named"_s, u"#000080"_s));
        QVERIFY(window.shows(u"pictured"_s, u"#ffff00"_s));
        const auto tells = [&](const QString &name, const QString &text) {
            const auto told = [&] { return window.find(name).data(Qt::AccessibleTextRole).toString(); };
            if (QTest::qWaitFor([&] { return told() == text; }))
                return true;
            qWarning() << told();
            return false;
        };
        QVERIFY(tells(u"gone"_s, u"gone: no document"_s));
        window.write("theme/Named.xml", document("nowhere"));
        QVERIFY(window.shows(u"Named"_s, u"#000000"_s));
        QVERIFY(tells(u"Named"_s, u"Named: 1280 x 720 pixels at 0, 0; 1 warning"_s));
        QTest::mouseClick(window.list->viewport(), Qt::LeftButton, {},
                          window.list->visualRect(window.find(u"typed"_s)).center());
        QVERIFY(window.said().startsWith(u"typed: 1280 x 720 pixels at 0, 0"_s));
    }

    // Whatever the width, two columns stand where there is room for two.
    void columnsFillTheWidth()
    {
        const OverviewWindow window;
        auto *area = window.overview;
        for (int width = 540; width < 560; ++width) {
            area->resize(width, 400);
            QCoreApplication::processEvents();
            const QRect first = window.list->visualRect(window.find(u"typed"_s));
            const QRect second = window.list->visualRect(window.find(u"gone"_s));
            QVERIFY2(second.top() == first.top() && second.left() > first.right(),
                     qPrintable(QString::number(width)));
        }
    }

    void followsChanges_data()
    {
        textTable({"change", "window", "colour"}, {{u"a file", u"document", u"typed", u"#0000ff"},
                                                   {u"a picture", u"picture", u"pictured", u"#00ffff"},
                                                   {u"an unsaved row", u"row", u"Named", u"#808000"},
                                                   {u"an unsaved text", u"text", u"typed", u"#0000ff"}});
    }

    // Nobody has to ask for it, and what is not saved counts.
    void followsChanges()
    {
        QFETCH(QString, change);
        QFETCH(QString, window);
        QFETCH(QString, colour);
        const OverviewWindow on;
        QVERIFY(on.shows(u"pictured"_s, u"#ffff00"_s)); // the last one
        if (change == u"text") {
            on.openDocument("theme/typed.xml");
            QVERIFY(!on.overview->isVisible());
            on.turnTo(8);
            on.source()->setFocus();
            on.source()->selectAll();
            QApplication::clipboard()->setText(QString::fromLatin1(document("#0000ff")));
            on.key(Qt::Key_V, Qt::ControlModifier);
            on.key(Qt::Key_Home, Qt::AltModifier);
            QVERIFY(on.overview->isVisible());
        } else if (change == u"document") {
            on.write("theme/typed.xml", document("#0000ff"));
        } else if (change == u"picture") {
            QFile picture(on.path("theme/p.png"));
            on.paint(Qt::cyan);
            QVERIFY(picture.open(QIODevice::ReadWrite)); // or both were written in one tick of the clock
            QVERIFY(picture.setFileTime(QDateTime::currentDateTime().addSecs(5),
                                        QFileDevice::FileModificationTime));
        } else {
            auto *colours = qobject_cast<ListRows *>(on.model("lvColor"));
            QVERIFY(colours);
            colours->setSub(0, 2, u"#808000"_s);
        }
        QVERIFY(on.shows(window, colour));
    }

    void keys()
    {
        const OverviewWindow window;
        auto *source = window.source();
        window.turnTo(8);
        source->setFocus();
        window.key(Qt::Key_Home, Qt::AltModifier);
        QVERIFY(!window.overview->isVisible());
        window.key(Qt::Key_Home, Qt::AltModifier);
        QVERIFY(window.overview->isVisible() && window.list->hasFocus());

        QTest::keyClicks(window.list, u"NA"_s);
        QCOMPARE(window.names(), QStringList(u"Named"_s));
        QCOMPARE(window.find<QLineEdit>("txtOverview")->text(), u"NA"_s);
        window.key(Qt::Key_Backspace);
        QCOMPARE(window.names(), QStringList({u"gone"_s, u"Named"_s}));
        window.list->setCurrentIndex(window.find(u"Named"_s));
        window.key(Qt::Key_Escape);
        QCOMPARE(window.names().size(), 4);
        QVERIFY(window.overview->isVisible());
        window.key(Qt::Key_Escape);
        QVERIFY(!window.overview->isVisible() && source->hasFocus());

        window.key(Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(window.list->currentIndex(), window.find(u"Named"_s)); // where one was
        window.key(Qt::Key_F6);
        QVERIFY(!window.overview->isAncestorOf(QApplication::focusWidget()));
        window.key(Qt::Key_F6, Qt::ShiftModifier);
        QVERIFY(window.list->hasFocus());
        window.key(Qt::Key_Return);
        QVERIFY(!window.overview->isVisible());
        QCOMPARE(window.find<QGroupBox>("frmWb")->title(), window.path("theme/Named.xml"));

        window.key(Qt::Key_Home, Qt::AltModifier);
        QTest::keyClicks(window.list, u"na"_s);
        window.key(Qt::Key_Home, Qt::AltModifier);
        window.key(Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(window.names(), QStringList(u"Named"_s));
        QTest::keyClicks(window.list, u"go"_s); // not "nago"
        QCOMPARE(window.names(), QStringList(u"gone"_s));
    }

    // It is in nobody's way: not of a window that is open, and not of what is typed.
    void comesAndGoes()
    {
        const OverviewWindow window;
        QVERIFY(window.overview->isVisible());
        window.turnTo(8);
        window.source()->setFocus();
        window.key(Qt::Key_X);
        QVERIFY(!window.overview->isVisible());
        window.source()->undo();
        window.openTheme(); // the same again: nothing happens
        window.write("other/theme/theme.xml", "<config></config>");
        window.skin->openTheme(window.path("other/theme"));
        QVERIFY(window.overview->isVisible());
        window.openDocument("theme/typed.xml");
        QVERIFY(!window.overview->isVisible());
        window.openTheme();
        QVERIFY(!window.overview->isVisible());
    }
};

WINDOW_TEST_MAIN(tst_overview)
#include "tst_overview.moc"
