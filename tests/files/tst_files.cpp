#include "Failure.h"
#include "TextTable.h"
#include "files/Files.h"
#include "files/LoadedFiles.h"
#include "files/Paths.h"
#include "files/TestFiles.h"

#include <QDirIterator>

#include <functional>
#include <memory>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace quillmere;
using namespace Qt::StringLiterals;

// A folder with a theme in it, and links out of it and back.
class TestFilesDoor : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_files = std::make_unique<TestFiles>(std::initializer_list<const char *>{
            "out.xml", "theme/in.xml", "theme/sub/in.xml", "theme2/out.xml"});
        link(path(u"out.xml"_s), u"theme/out.xml"_s);
        link(u"../gone.xml"_s, u"theme/dangling.xml"_s);
        link(u"dangling.xml"_s, u"theme/twice.xml"_s);
        link(u"sub/in.xml"_s, u"theme/in2.xml"_s);
        link(u"sub/new.xml"_s, u"theme/new2.xml"_s);
        link(u"circle.xml"_s, u"theme/circle.xml"_s);
        link(path(u"theme2"_s), u"theme/folder"_s);
        link(path(u"theme"_s), u"opened"_s);
    }

    void touchesOnlyTheTheme_data()
    {
        // The place lies below the folder; with a "!" it is refused.
        textTable({"place"},
                  {{u"theme/in.xml", u"theme/in.xml"},
                   {u"theme/new.xml", u"theme/new.xml"},
                   {u"theme/SUB/IN.xml", u"theme/sub/in.xml"},
                   {u"theme/sub/../in.xml", u"theme/in.xml"},
                   {u"theme/../theme/in.xml", u"theme/in.xml"},
                   {u"theme/in2.xml", u"theme/sub/in.xml"},
                   {u"theme/new2.xml", u"theme/sub/new.xml"},
                   {u"opened/in.xml", u"theme/in.xml"},
                   {u"theme/../out.xml", u"!out.xml"},
                   {u"theme/../theme2/out.xml", u"!theme2/out.xml"}, // begins as the theme's folder does
                   {u"theme/../new.xml", u"!new.xml"},
                   {u"theme/out.xml", u"!out.xml"},
                   {u"theme/dangling.xml", u"!gone.xml"},
                   {u"theme/twice.xml", u"!gone.xml"},
                   {u"theme/folder/out.xml", u"!theme2/out.xml"},
                   {u"theme/folder/new.xml", u"!theme2/new.xml"},
                   {u"theme/folder/../out.xml", u"!out.xml"}, // above the target, not above the link
                   {u"theme/circle.xml", u"!theme/circle.xml"},
                   {u"theme/..", u"!"}});
    }

    // For the theme's folder, and the same opened through a link.
    void touchesOnlyTheTheme()
    {
        QFETCH(QString, place);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const bool refused = place.startsWith(u'!');
        const QString before = all();
        for (const QString &opened : {u"theme"_s, u"opened"_s, QString()}) {
            init();
            const QString theme = opened.isEmpty() ? opened : path(opened);
            Files files;
            files.backups().setFolder(path(u"backup"_s));
            const auto save = [&] { files.save(path(name), u"new"_s, theme); };
            if (!refused && !theme.isEmpty()) {
                save();
                QCOMPARE(m_files->read(place), QByteArray("new"));
                continue;
            }
            QVERIFY_EXCEPTION_THROWN(save(), RunTimeError);
            QCOMPARE(all(), before);
            const Files::Place found = files.place(Files::Step::Save, path(name), theme);
            QVERIFY(!found.isInside && !found.mayBeTouched);
            if (!refused || place == u"!" || place.contains(u"circle"))
                continue;
            QCOMPARE(found.path, realPlace(path(place.mid(1))));
            files.allow(found.path);
            save();
            QCOMPARE(m_files->read(place.mid(1)), QByteArray("new"));
            QVERIFY(!files.place(Files::Step::Save, path(u"theme2/other.xml"_s), theme).mayBeTouched);
        }
    }

    // A link is deleted, and not what it leads to; through a folder that is one, nothing is.
    void linksGoAlone()
    {
        Files files;
        files.backups().setFolder(path(u"backup"_s));
        const QString theme = path(u"opened"_s);
        for (const char *name : {"theme/out.xml", "theme/in2.xml"}) {
            files.remove(path(QLatin1String(name)), theme);
            QVERIFY(!QFileInfo(path(QLatin1String(name))).isSymLink());
        }
        const QString before = all();
        QVERIFY(before.contains(u"out.xml="_s) && before.contains(u"sub/in.xml="_s));
        for (const char *name : {"theme/../out.xml", "theme/folder/out.xml", "theme/..", "theme/"})
            QVERIFY_EXCEPTION_THROWN(files.remove(path(QLatin1String(name)), theme), RunTimeError);
        QVERIFY_EXCEPTION_THROWN(files.restore(path(u"theme/dangling.xml"_s), path(u"out.xml"_s), theme),
                                 RunTimeError);
        QCOMPARE(all(), before);
        files.restore(path(u"theme/gone/a.xml"_s), m_files->write(u"version"_s, "v"), theme);
        QCOMPARE(m_files->read(u"theme/gone/a.xml"_s), QByteArray("v"));
    }

    void readsWhatIsBounded_data()
    {
        // A link's target, or what the file is.
        textTable({"reason"},
                  {
                      {u"pipe", u"it is not a regular file"},
                      {u"sparse", u"it is larger than 64 MB"},
#ifdef Q_OS_LINUX
                      {u"/dev/zero", u"it is not a regular file"},
                      {u"/dev/full", u"it is not a regular file"},
                      {u"/proc/self/pagemap", u"it is larger than 64 MB"}, // and says that it is empty
#endif
                  });
    }

    // At once, without more than the limit, and the message says which file and why.
    void readsWhatIsBounded()
    {
#ifdef Q_OS_UNIX
        const QString leadsTo = QString::fromLatin1(QTest::currentDataTag());
        QFETCH(QString, reason);
        const QString name = path(u"theme/a.xml"_s);
        if (leadsTo == u"pipe")
            QCOMPARE(mkfifo(QFile::encodeName(name).constData(), 0600), 0);
        else if (leadsTo == u"sparse")
            QVERIFY(QFile::resize(m_files->write(u"theme/a.xml"_s), qint64(100) << 30));
        else
            link(leadsTo, u"theme/a.xml"_s);
        const QString expected = u"Cannot read \"%1\": %2."_s.arg(name, reason);
        for (const auto &read :
             {std::function([&] { LoadFile(name); }), std::function([&] { LoadedFiles().load(name); })}) {
            QCOMPARE(failureOf(read), expected);
        }
        // Neither does it hang what looks whether a file has changed, nor is it written over without a copy.
        QVERIFY(!fingerprintOf(name).isEmpty());
        QVERIFY_EXCEPTION_THROWN(Files().save(name, u"new"_s, path(u"theme"_s)), RunTimeError);
        QVERIFY_EXCEPTION_THROWN(Files().restore(path(u"theme/in.xml"_s), name, path(u"theme"_s)),
                                 RunTimeError);

        QString none, large;
        QCOMPARE(readRegular(m_files->write(u"ten"_s, "0123456789"), 10, none), QByteArray("0123456789"));
        QCOMPARE(readRegular(path(u"ten"_s), 9, large), QByteArray());
        QVERIFY(none.isEmpty() && !large.isEmpty());
#endif
    }

    void neverInAFolderOfAnotherCase_data()
    {
        textTable({"gone", "beside"}, // the folder is renamed
                  {{u"the theme's", u"above/theme", u"above/THEME"}, {u"above it", u"above", u"ABOVE"}});
    }

    // Found there and read, as themes are made on systems that do not mind; never written.
    void neverInAFolderOfAnotherCase()
    {
        QFETCH(QString, gone);
        QFETCH(QString, beside);
        const QString name = u"above/theme/Sub/a.xml"_s, theme = path(u"above/theme"_s);
        m_files->write(name, "old");
        QVERIFY(QDir(m_files->folder()).rename(gone, beside));
        if (QFileInfo::exists(path(gone)))
            QSKIP("This system does not mind letter case");
        QCOMPARE(LoadFile(path(name)), u"old"_s);
        const QString before = all();
        Files files;
        files.backups().setFolder(path(u"backup"_s));
        QVERIFY(files.place(Files::Step::Save, path(name), theme).isInside); // nothing to allow
        QVERIFY_EXCEPTION_THROWN(files.save(path(name), u"new"_s, theme), RunTimeError);
        QVERIFY_EXCEPTION_THROWN(files.remove(path(name), theme), RunTimeError);
        QCOMPARE(all(), before);
    }

private:
    void link(const QString &target, const QString &name) const
    {
        QVERIFY(QFile::link(target, path(name)));
    }
    QString path(const QString &name) const
    {
        return m_files->path(name);
    }

    // All files but the backups, a line each: name, and what it holds.
    QString all() const
    {
        QStringList lines;
        QDirIterator it(m_files->folder(), QDir::Files | QDir::System | QDir::Hidden,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString name = it.next().mid(m_files->folder().size() + 1);
            if (!name.startsWith(u"backup/"))
                lines.append(name + u'=' + QString::fromLatin1(m_files->read(name)));
        }
        lines.sort();
        return lines.join(u'\n');
    }

    std::unique_ptr<TestFiles> m_files;
};

QTEST_GUILESS_MAIN(TestFilesDoor)
#include "tst_files.moc"
