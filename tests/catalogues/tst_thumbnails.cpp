#include "catalogues/forms/ImageViews.h"

#include "controls/Commands.h"
#include "controls/ListView.h"
#include "files/TestFiles.h"
#include "rows/ListRows.h"

#include <QAction>
#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QByteArray picture(const QColor &colour, QSize size = {8, 6})
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    image.save(&bytes, "PNG");
    return bytes.data();
}

// A menu of items that are made when they are asked for.
class Menu : public Commands
{
public:
    void on(const char *name, const Command &command) override
    {
        QObject::connect(action(name), &QAction::triggered, action(name), command);
    }
    QAction *action(const char *name) const override
    {
        QAction *&made = m_actions[name];
        if (!made)
            made = new QAction(&m_owner);
        made->setCheckable(true);
        return made;
    }
    QAction *insert(const char *, const QString &, const QString &, const Command &) override
    {
        return nullptr;
    }

private:
    mutable QObject m_owner;
    mutable QHash<QByteArray, QAction *> m_actions;
};

// The images of a theme as they are looked at.
struct Shown
{
    explicit Shown(const QStringList &names)
    {
        QSettings().clear();
        QList<ListRows::Row> images;
        for (const QString &name : names)
            images.append({path(name), {name, u"Y"_s}});
        rows.assign(images);
        views.addCommands(menu);
        list.resize(300, 400);
        list.show();
    }
    QString path(const QString &name) const { return files.path(u"theme/"_s + name); }
    const Thumbnail *of(const QString &name) const { return views.thumbnails.of(path(name)); }
    QColor colourOf(const QString &name) const
    {
        return of(name) ? of(name)->small.toImage().pixelColor(1, 1) : QColor();
    }

    TestFiles files;
    ListRows rows{{u"Nama"_s, u"Status"_s, {}}, ListRows::Checks::Yes};
    ListView list{u"lvImage"_s, u"Images"_s, rows};
    Menu menu;
    ImageViews views{list};
};

} // namespace

class tst_thumbnails : public QObject
{
    Q_OBJECT

private slots:
    // Nothing is touched of the person's own settings.
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_home.path().toUtf8());
        QCoreApplication::setOrganizationName(u"Quillmere"_s);
    }

    void pictures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        const QString none = u"There is no such picture in the theme."_s;
        QTest::newRow("a picture") << u"a.png"_s << QString();
        QTest::newRow("of another letter case") << u"A.PNG"_s << QString();
        QTest::newRow("called otherwise") << u"a.gif"_s << QString();
        QTest::newRow("missing") << u"b.png"_s << none;
        QTest::newRow("outside") << u"../out.png"_s << none;
        QTest::newRow("a link that leaves") << u"link.png"_s << none;
        QTest::newRow("a folder's link that leaves") << u"up/out.png"_s << none;
        QTest::newRow("no name of a picture") << u"a.xml"_s << none;
        QTest::newRow("damaged") << u"cut.png"_s << u"The picture is damaged, or too large to be shown."_s;
        QTest::newRow("a text") << u"text.png"_s << u"This is not a picture."_s;
        QTest::newRow("a drawing") << u"d.svg"_s << u"Drawings are shown in the preview only."_s;
        QTest::newRow("65 MB") << u"big.png"_s << u"The file cannot be read, or is larger than 64 MB."_s;
    }

    void pictures()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, reason);
        Shown shown({name});
        const QByteArray bytes = picture(Qt::red, {300, 200});
        for (const QString &each : {u"theme/a.png"_s, u"theme/a.gif"_s, u"theme/a.xml"_s, u"out.png"_s})
            shown.files.write(each, bytes);
        shown.files.write(u"theme/cut.png"_s, bytes.first(bytes.size() / 2));
        shown.files.write(u"theme/text.png"_s, "text");
        shown.files.write(u"theme/d.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg'/>");
        QVERIFY(QFile::link(shown.files.path(u"out.png"_s), shown.path(u"link.png"_s)));
        QVERIFY(QFile::link(shown.files.folder(), shown.path(u"up"_s)));
        QVERIFY(QFile::resize(shown.files.write(u"theme/big.png"_s, bytes), 65LL * 1024 * 1024));
        shown.views.thumbnails.setThemeFolder(shown.files.path(u"theme"_s));

        QTRY_VERIFY(shown.of(name));
        QCOMPARE(shown.of(name)->reason, reason);
        QCOMPARE(shown.of(name)->large.isNull(), !reason.isEmpty());
        if (reason.isEmpty())
            QCOMPARE(shown.of(name)->large.size(), QSize(120, 80));
    }

    // Nothing is made of what is not in view, or has left it before its turn.
    void onlyWhatIsSeen()
    {
        QStringList names;
        for (int i = 0; i < 20'000; ++i)
            names.append(u"p%1.png"_s.arg(i));
        Shown shown(names);
        for (const int row : {0, 10'000, 19'999})
            shown.files.write(u"theme/"_s + names[row], picture(Qt::blue));
        QSignalSpy made(&shown.views.thumbnails, &Thumbnails::made);
        shown.views.thumbnails.setThemeFolder(shown.files.path(u"theme"_s));
        QTRY_VERIFY(shown.of(names[0]));
        for (int step = 1; step <= 100; ++step) {
            shown.list.verticalScrollBar()->setValue(shown.list.verticalScrollBar()->maximum() * step / 100);
            shown.list.repaint();
        }
        QTRY_COMPARE(shown.colourOf(names[19'999]), QColor(Qt::blue));
        QVERIFY(!shown.of(names[10'000]));
        QVERIFY2(made.count() < 100, qPrintable(QString::number(made.count())));
    }

    void followsItsFile()
    {
        Shown shown({u"a.png"_s, u"b.png"_s});
        shown.files.write(u"theme/a.png"_s, picture(Qt::red));
        shown.files.write(u"theme/b.png"_s, picture(Qt::blue));
        shown.views.thumbnails.setThemeFolder(shown.files.path(u"theme"_s));
        QTRY_COMPARE(shown.colourOf(u"a.png"_s), QColor(Qt::red));
        QTRY_COMPARE(shown.colourOf(u"b.png"_s), QColor(Qt::blue));
        QSignalSpy made(&shown.views.thumbnails, &Thumbnails::made);
        shown.files.write(u"theme/a.png"_s, picture(Qt::green, {9, 9}));
        shown.views.thumbnails.changed();
        QTRY_COMPARE(shown.colourOf(u"a.png"_s), QColor(Qt::green));
        QFile::remove(shown.path(u"a.png"_s));
        shown.views.thumbnails.changed();
        QTRY_VERIFY(!shown.of(u"a.png"_s)->reason.isEmpty());
        QCOMPARE(made.count(), 2); // the other file is the same, and was not read again
    }

    void onAndOff()
    {
        Shown shown({u"a.png"_s});
        const auto height = [&] { return shown.list.visualRect(shown.rows.index(0, 0)).height(); };
        const int with = height();
        shown.menu.action("mnuImgThumbnails")->trigger();
        QCOMPARE(height(), with);
        shown.views.thumbnails.setThemeFolder(shown.files.path(u"theme"_s));
        shown.list.repaint();
        QSignalSpy made(&shown.views.thumbnails, &Thumbnails::made);
        QVERIFY(!QSettings().value(u"images/thumbnails"_s).toBool());
        shown.menu.action("mnuImgThumbnails")->trigger();
        QTRY_COMPARE(made.count(), 1);
    }

private:
    QTemporaryDir m_home;
};

QTEST_MAIN(tst_thumbnails)
#include "tst_thumbnails.moc"
