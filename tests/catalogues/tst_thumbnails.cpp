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

#include <algorithm>
#include <ranges>

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
    explicit Shown(const QStringList &names, bool asGrid = false)
    {
        QSettings().setValue(u"images/thumbnails"_s, true);
        QSettings().setValue(u"images/grid"_s, asGrid);
        QList<ListRows::Row> images;
        for (const QString &name : names)
            images.append({path(name), {name, u"Y"_s}});
        rows.assign(images);
        views.addCommands(menu);
        frame.resize(320, 420);
        list.setGeometry(10, 10, 300, 400);
        frame.show();
        frame.activateWindow();
        if (!QTest::qWaitForWindowActive(&frame))
            qFatal("The window does not become active");
    }
    QString path(const QString &name) const { return files.path(u"theme/"_s + name); }
    const Thumbnail *of(const QString &name) const { return views.thumbnails.of(path(name)); }
    QColor colourOf(const QString &name) const
    {
        return of(name) ? of(name)->small.toImage().pixelColor(1, 1) : QColor();
    }

    TestFiles files;
    ListRows rows{{u"Nama"_s, u"Status"_s, {}}, ListRows::Checks::Yes};
    QWidget frame;
    ListView list{u"lvImage"_s, u"Images"_s, rows, &frame};
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
        const QString none = u"The theme has no such picture."_s;
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

    // The grid and the list it lies over have one current row, ticks, filter and keys; who listens to the
    // list hears of both.
    void grid()
    {
        QStringList names;
        for (int i = 0; i < 50; ++i)
            names.append(u"p%1.png"_s.arg(i));
        Shown shown(names, true);
        auto *grid = shown.frame.findChild<QAbstractItemView *>(u"gridlvImage"_s);
        QSignalSpy clicked(&shown.list, &ListView::rowClicked), opened(&shown.list, &ListView::rowOpened);
        const auto at = [&](int row) { return grid->visualRect(shown.rows.index(row, 1)); };
        const auto current = [&] { return grid->currentIndex().row(); };
        QCOMPARE(grid->geometry(), shown.list.geometry());
        QCOMPARE(at(1).top(), at(0).top());
        const int columns = int(std::ranges::count_if(std::views::iota(0, 50),
                                                      [&](int row) { return at(row).top() == at(0).top(); }));

        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(1).center());
        QCOMPARE(shown.list.selectedRow(), 1);
        shown.list.setFocus();
        QVERIFY(grid->hasFocus());
        const struct
        {
            Qt::Key key;
            int row;
        } keys[] = {
            {Qt::Key_Down, 1 + columns}, {Qt::Key_Left, columns}, {Qt::Key_Up, 0},    {Qt::Key_Up, 0},
            {Qt::Key_End, 49},           {Qt::Key_Right, 49},     {Qt::Key_Down, 49}, {Qt::Key_Home, 0},
            {Qt::Key_Right, 1}};
        for (const auto &[key, row] : keys) {
            QTest::keyClick(grid, key);
            QCOMPARE(shown.list.selectedRow(), row);
            QVERIFY(grid->viewport()->rect().contains(at(row)));
        }
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClick(grid, Qt::Key_Space);
        QVERIFY(shown.rows.isChecked(1));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(1).topLeft() + QPoint(8, 8));
        QVERIFY(!shown.rows.isChecked(1));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at(1).center());
        QCOMPARE(opened.count(), 2);
        QCOMPARE(opened.last().first().toInt(), 1);
        QVERIFY(clicked.count() >= 8);

        // The list moves or is sorted, and so is the grid.
        shown.list.sortBy(1, Qt::DescendingOrder);
        QTRY_VERIFY(at(49).top() < at(48 - columns).top());
        QVERIFY(grid->viewport()->rect().contains(at(current())));
        QTest::keyClick(grid, Qt::Key_End);
        QCOMPARE(current(), 0);
        shown.list.sortBy(-1, Qt::AscendingOrder);
        shown.list.setCurrentIndex(shown.rows.index(40, 0));
        QTRY_VERIFY(grid->viewport()->rect().contains(at(40)));
        for (int row = 0; row < 50; ++row)
            shown.list.setRowHidden(row, {}, row % 10 != 3);
        QTRY_COMPARE(at(3).topLeft(), QPoint());
        QVERIFY(!at(40).isValid());
        QTest::keyClick(grid, Qt::Key_End);
        QCOMPARE(current(), 43);
        shown.rows.remove(43);
        QTRY_VERIFY(at(33).isValid());
        QVERIFY(current() != 43 || !at(43).isValid());
        shown.rows.assign({});
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(current(), -1);
        shown.menu.action("mnuImgGrid")->trigger();
        QVERIFY(!grid->isVisible() && shown.list.hasFocus());
    }

private:
    QTemporaryDir m_home;
};

QTEST_MAIN(tst_thumbnails)
#include "tst_thumbnails.moc"
