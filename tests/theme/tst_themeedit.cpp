#include "files/RunTimeError.h"
#include "files/TestFiles.h"
#include "theme/ThemeEdit.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

class TextInBox : public OpenText
{
public:
    explicit TextInBox(const QString &text) : m_text(text) {}
    QString text() const override { return m_text; }
    void apply(const QList<RangeChange> &changes) override
    {
        m_text = changedText(m_text, changes);
        ++steps;
    }
    int steps = 0;

private:
    QString m_text;
};

class RowsOfList : public OpenRows
{
public:
    explicit RowsOfList(const QStringList &names)
    {
        for (const QString &name : names)
            m_rows.append({QString(), {name}, true});
    }
    QList<ListRows::Row> rows() const override { return m_rows; }
    void apply(const QList<RowChange> &changes) override { m_rows = changedRows(m_rows, changes).value(); }
    QString asText() const
    {
        QString text;
        for (const ListRows::Row &row : m_rows)
            text += row.sub(1) + (row.checked ? u"+" : u"-");
        return text;
    }

private:
    QList<ListRows::Row> m_rows;
};

ListRows::Row rowOf(const QString &name)
{
    return {QString(), {name}, false};
}

} // namespace

class TestThemeEdit : public QObject
{
    Q_OBJECT

    // Replaces the first `from` in a file.
    static void replaceIn(ThemeEdit &edit, const QString &path, const QString &from, const QString &to)
    {
        const QString text = LoadFile(path);
        const qint32 at = qint32(text.indexOf(from));
        QVERIFY(edit.replace(path, text, {at, at + qint32(from.size())}, to));
    }

    EditTargets targets() { return {m_door, m_files->path(u"theme"_s), {}, {}}; }
    QString write(const char *name, const QByteArray &bytes) const
    {
        return m_files->write(u"theme/"_s + QLatin1String(name), bytes);
    }
    QByteArray read(const char *name) const { return m_files->read(u"theme/"_s + QLatin1String(name)); }
    QString failureOf(const ThemeEdit &edit, const EditTargets &where) const
    {
        try {
            edit.apply(where);
        } catch (const RunTimeError &error) {
            return QString(error.message()).replace(m_files->folder(), u"..."_s);
        }
        return u"applied"_s;
    }

    std::unique_ptr<TestFiles> m_files;
    Files m_door;

private slots:
    void init()
    {
        m_files = std::make_unique<TestFiles>();
        m_door.backups().setFolder(m_files->path(u"backup"_s));
    }

    // The bytes come back although the letter that showed the code page was gone in between.
    void codePages_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::newRow("utf-8 to ascii") << QByteArray("<img>\xC3\xA9</img>") << u"\u00E9"_s << u"e"_s;
        QTest::newRow("one byte to ascii") << QByteArray("<img>\xE9</img>") << u"\u00E9"_s << u"e"_s;
        QTest::newRow("one byte to utf-8") << QByteArray("<img>\xE9</img>") << u"\u00E9"_s << u"\u4E2D"_s;
        QTest::newRow("ascii to one byte") << QByteArray("<img>e</img>") << u"e"_s << u"\u00E9"_s;
        QTest::newRow("with a mark") << QByteArray("\xEF\xBB\xBF<img>e</img>") << u"e"_s << u"x"_s;
    }
    void codePages()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, from);
        QFETCH(QString, to);
        const QString path = write("a.xml", bytes);
        ThemeEdit edit;
        replaceIn(edit, path, from, to);
        const ThemeEdit inverse = edit.apply(targets());
        QVERIFY(read("a.xml") != bytes);
        inverse.apply(targets());
        QCOMPARE(read("a.xml"), bytes);
    }

    void overlapsAreRefused()
    {
        const QString path = write("a.xml", "abcdef");
        const QString text = u"abcdef"_s;
        ThemeEdit edit;
        QVERIFY(edit.replace(path, text, {2, 4}, u"X"_s));
        for (const Range range : {Range{3, 5}, Range{1, 3}, Range{2, 4}, Range{2, 2}, Range{3, 3},
                                  Range{0, 6}, Range{-1, 0}, Range{5, 7}, Range{5, 4}})
            QVERIFY(!edit.replace(path, text, range, u"Y"_s));
        QVERIFY(!edit.replace(path, u"abcdeg"_s, {0, 1}, u"Y"_s));
        QVERIFY(edit.replace(path, text, {4, 5}, u"Y"_s));
        QVERIFY(edit.replace(path, text, {0, 2}, QString()));
        edit.apply(targets());
        QCOMPARE(read("a.xml"), QByteArray("XYf"));
    }

    void allOrNone_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("message");
        QTest::newRow("changed since")
            << u"changed"_s << u"Cannot change \".../theme/b/b.xml\": it has changed in the meantime."_s;
        QTest::newRow("gone") << u"gone"_s
                              << u"Cannot change \".../theme/b/b.xml\": there is no such file."_s;
        QTest::newRow("outside") << u"outside"_s
                                 << u"Cannot change \".../theme/b/b.xml\": it lies outside the theme's "
                                    "folder."_s;
        QTest::newRow("letter") << u"letter"_s << u"Cannot write"_s;
        QTest::newRow("not to be written") << u"write"_s << u"Cannot back up"_s;
    }
    void allOrNone()
    {
        QFETCH(QString, fault);
        const QByteArray bytes = "<img>old</img>";
        const QString a = write("a.xml", bytes), b = write("b/b.xml", bytes), c = write("c.xml", bytes);
        TextInBox box(u"old"_s);
        RowsOfList rows({u"old"_s});
        ThemeEdit edit;
        for (const QString &path : {a, b, c})
            replaceIn(edit, path, u"old"_s,
                      fault == u"letter" && path == b ? QString(QChar(0xD800)) : u"new"_s);
        QVERIFY(edit.replace(u"box"_s, box.text(), {0, 3}, u"new"_s));
        edit.changeRow(u"rows"_s, {0, rowOf(u"old"_s), rowOf(u"new"_s)});
        EditTargets where = targets();
        where.text = [&](const QString &path) { return path == u"box" ? &box : nullptr; };
        where.rows = [&](const QString &) { return &rows; };

        QByteArray expected = bytes;
        if (fault == u"changed") {
            expected = "<img>old</img> ";
            write("b/b.xml", expected);
        } else if (fault == u"gone" || fault == u"outside") {
            QFile::remove(b);
            expected = "(no file)";
            if (fault == u"outside") {
                QVERIFY(QFile::link(m_files->write(u"elsewhere.xml"_s, bytes), b));
                expected = bytes;
            }
        } else if (fault == u"write") {
            // Where the copies of the second file would go, there is a file.
            m_files->write(u"backup" + m_files->path(u"theme/b"_s));
        }
        QFETCH(QString, message);
        const QString failure = failureOf(edit, where);
        QVERIFY2(failure.startsWith(message), qPrintable(failure));
        QCOMPARE(read("a.xml"), bytes);
        QCOMPARE(read("b/b.xml"), expected);
        QCOMPARE(read("c.xml"), bytes);
        QCOMPARE(box.text(), u"old"_s);
        QCOMPARE(rows.asText(), u"old+"_s);
    }

    // Undone in its own box, or put back from a backup: what is left is taken back, and only that.
    void partTakenBack_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("result");
        QTest::newRow("nothing") << u"new box"_s << QByteArray("new file") << u"applied"_s;
        QTest::newRow("the open one") << u"old box"_s << QByteArray("new file") << u"applied"_s;
        QTest::newRow("a file") << u"new box"_s << QByteArray("old file") << u"applied"_s;
        QTest::newRow("the open one changed")
            << u"odd box"_s << QByteArray("new file")
            << u"Cannot change \".../theme/a.xml\": it has changed in the meantime."_s;
    }
    void partTakenBack()
    {
        QFETCH(const QString, box);
        QFETCH(const QByteArray, file);
        const QString path = write("a.xml", "old box"), closed = write("b.xml", "old file");
        TextInBox before(u"old box"_s), after(box);
        ThemeEdit edit;
        replaceIn(edit, path, u"old"_s, u"new"_s);
        replaceIn(edit, closed, u"old"_s, u"new"_s);
        EditTargets where = targets();
        where.text = [&](const QString &asked) { return asked == path ? &before : nullptr; };
        const ThemeEdit inverse = edit.apply(where);
        write("b.xml", file);
        where.text = [&](const QString &asked) { return asked == path ? &after : nullptr; };
        QTEST(failureOf(inverse, where), "result");
        QCOMPARE(after.text() == u"old box" && read("b.xml") == "old file", box != u"odd box");
        QVERIFY(box == u"new box" || after.steps == 0);
    }

    void openTextsAndRows()
    {
        const QString path = write("a.xml", "old file");
        TextInBox box(u"one old, two old"_s);
        RowsOfList rows({u"a"_s, u"b"_s, u"c"_s});
        EditTargets where = targets();
        where.text = [&](const QString &asked) { return asked == path ? &box : nullptr; };
        where.rows = [&](const QString &) { return &rows; };
        ThemeEdit edit;
        QVERIFY(edit.replace(path, box.text(), {4, 7}, u"1"_s));
        QVERIFY(edit.replace(path, box.text(), {13, 16}, u"2"_s));
        edit.changeRow(path, {1, rowOf(u"b"_s), rowOf(u"B"_s)});
        edit.changeRow(path, {0, rowOf(u"a"_s), {}});
        edit.changeRow(path, {2, {}, rowOf(u"new"_s)});
        QCOMPARE(edit.paths(), QStringList(path));
        const ThemeEdit inverse = edit.apply(where);
        QCOMPARE(box.text(), u"one 1, two 2"_s);
        QCOMPARE(box.steps, 1);
        QCOMPARE(rows.asText(), u"B+c+new-"_s);
        QCOMPARE(read("a.xml"), QByteArray("old file"));
        QVERIFY(failureOf(edit, where).startsWith(u"Cannot change"));
        inverse.apply(where);
        QCOMPARE(box.text(), u"one old, two old"_s);
        QCOMPARE(rows.asText(), u"a-b+c+"_s);

        ThemeEdit named;
        named.changeRow(path, {0, rowOf(u"a"_s), rowOf(u"A"_s)});
        const ThemeEdit back = named.apply(where);
        QVERIFY(!back.areTakenBack(path, rows.rows()));
        rows.apply({{0, rowOf(u"A"_s), rowOf(u"a"_s)}}); // undone in its list
        QVERIFY(back.areTakenBack(path, rows.rows()));
        QCOMPARE(failureOf(back, where), u"applied"_s);
        QCOMPARE(rows.asText(), u"a-b+c+"_s);

        ThemeEdit wrong;
        wrong.changeRow(path, {3, rowOf(u"c"_s), {}});
        QVERIFY(failureOf(wrong, where).startsWith(u"Cannot change"));
    }
};

QTEST_GUILESS_MAIN(TestThemeEdit)
#include "tst_themeedit.moc"
