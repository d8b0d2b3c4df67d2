#include "gallery/PictureTurns.h"
#include "gallery/WindowPage.h"

#include "files/TestFiles.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class tst_gallery : public QObject
{
    Q_OBJECT

private:
    // Draws all that have their turn, and says whose it was and whose pictures went.
    static QList<int> drawAll(PictureTurns &turns, QList<int> *gone = nullptr)
    {
        QList<int> drawn;
        for (int number = turns.next(); number >= 0; number = turns.next()) {
            drawn.append(number);
            const QList<int> dropped = turns.done(number);
            if (gone)
                gone->append(dropped);
        }
        return drawn;
    }

private slots:
    void turns()
    {
        PictureTurns turns(3);
        turns.renumber(QList<int>(6, -1));
        QCOMPARE(turns.next(), -1); // nobody looks
        turns.setSeen({4, 5, 0});
        QCOMPARE(drawAll(turns), QList<int>({4, 5, 0}));
        turns.setSeen({0, 5});
        QCOMPARE(drawAll(turns), QList<int>());

        QList<int> gone;
        turns.setSeen({1, 2});
        QCOMPARE(drawAll(turns, &gone), QList<int>({1, 2}));
        QCOMPARE(gone, QList<int>({4, 0})); // 0 and 5 were seen after 4
        gone.clear();
        turns.setSeen({0, 1, 2, 3}); // more than there is room for: what is seen stays
        QCOMPARE(drawAll(turns, &gone), QList<int>({0, 3}));
        QCOMPARE(gone, QList<int>({5}));
    }

    // What changes while it is being drawn is out of date when it is done.
    void changesInBetween()
    {
        PictureTurns turns(9);
        turns.renumber({-1, -1});
        turns.setSeen({0, 1});
        QCOMPARE(turns.next(), 0);
        turns.allChanged();
        QCOMPARE(turns.next(), 1);
        QCOMPARE(turns.next(), -1); // 0 is in hand still
        turns.done(0);
        turns.done(1);
        QCOMPARE(turns.next(), 0);

        turns.renumber({-1, 1, 0});
        turns.setSeen({0, 1, 2});
        QCOMPARE(drawAll(turns), QList<int>({0, 2})); // the old 1 is up to date, the old 0 was in hand
    }

    void marks()
    {
        TestFiles files;
        const QString picture = files.write(u"theme/a.png"_s, "a");
        const QString path = files.write(u"theme/w.xml"_s, "<widget class=\"window\"><rect>[8,9,70,60]</rect>"
                                                           "<img>a</img></widget>");
        QString colour = u"#000000"_s;
        ReceiverTheme theme;
        theme.picture = [&](const QString &id) { return id == u"a" ? picture : QString(); };
        theme.sizeOf = [](const QString &) { return QSize(5, 5); };
        theme.colour = [&](const QString &) { return colour; };
        theme.font = [](const QString &) { return ReceiverTheme::Font(); };
        const auto make = [&](std::optional<QString> text = {}) {
            return windowPage({path, text, {}}, theme, files.path(u"theme"_s));
        };
        const WindowPage first = make();
        QCOMPARE(first.files, QStringList({path, picture}));
        QVERIFY(first.place == Box({8, 9, 70, 60}));
        QCOMPARE(make().mark, first.mark);
        QVERIFY(make(u"<widget><rect>[0,0,1,1]</rect></widget>"_s).mark != first.mark);
        QFile touched(picture);
        QVERIFY(touched.open(QIODevice::ReadWrite));
        QVERIFY(touched.setFileTime(QDateTime::fromMSecsSinceEpoch(1000), QFileDevice::FileModificationTime));
        touched.close();
        QVERIFY(make().mark != first.mark);

        QFile large(path);
        QVERIFY(large.resize(kLargestInGallery + 1));
        QVERIFY(make().page.isEmpty() && make().hasDocument && !make().reason.isEmpty());
        QVERIFY(large.remove());
        QVERIFY(!make().hasDocument);
    }
};

QTEST_APPLESS_MAIN(tst_gallery)
#include "tst_gallery.moc"
