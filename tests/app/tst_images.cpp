#include "app/WindowFixture.h"

#include <QBuffer>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>

using namespace quillmere;

namespace {

QByteArray picture(const QColor &colour)
{
    QImage image(8, 6, QImage::Format_ARGB32);
    image.fill(colour);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    image.save(&bytes, "PNG");
    return bytes.data();
}

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<Window>();
        m_window->write("theme/theme.xml", "<config><file_image>images/image.xml</file_image></config>");
        m_window->write("theme/images/image.xml", "<image id=\"logo\">logo.png</image>");
        m_window->write("theme/images/logo.png", m_logo);
        m_window->openTheme();
        m_window->turnTo(2);
    }
    void cleanup() { m_window.reset(); }

    // What is a picture comes, under names that are free; the rest is told of at the end, and one step takes
    // the rows back and leaves the files.
    void drops()
    {
        const QString before = rows();
        for (const char *name : {"in/new.png", "in/logo.png", "in/it's.png", "in/sub/new.png", "in/skip.png",
                                 "theme/images/sub/there.png", "theme/images/skip.PNG"})
            m_window->write(name, m_red);
        m_window->write("in/text.png", "text");
        m_window->write("in/cut.png", m_red.first(50));
        const QString big = m_window->write("in/big.png", m_red);
        QVERIFY(QFile::resize(big, 65LL * 1024 * 1024));
        QVERIFY(QFile::link(m_window->path("in/new.png"), m_window->path("theme/images/link.png")));

        const QString isTaken =
            u"There is already a picture or an image called \"%1\".\n\nAnother name for the "
            "new one (Cancel skips it):"_s;
        const auto answer = [&](const QString &prompt, std::optional<QString> name) {
            m_window->prompts.expectInput(u"Name Is Taken"_s, prompt, std::move(name));
        };
        answer(isTaken.arg(u"logo.png"), u"<.png"_s);
        answer(u"\"<.png\": a theme cannot hold \"<\" in a name.\n\nAnother name (Cancel skips it):"_s,
               u"Logo.png"_s);
        answer(isTaken.arg(u"Logo.png"), u"logo-2.png"_s);
        answer(isTaken.arg(u"new.png"), QString(QString(300, u'n') + u".png"));
        answer(isTaken.arg(u"skip.png"), {});
        QStringList told;
        const auto tell = [&](const char *name, const QString &why) {
            told.append(m_window->path(name) + u": " + why + u'.');
        };
        tell("in/it's.png", u"a theme cannot hold \"'\" in a name"_s);
        tell("in/text.png", u"it is not a picture made of pixels"_s);
        tell("in/cut.png", u"the picture is damaged, or too large"_s);
        tell("in/big.png", u"it is larger than 64 MB"_s);
        tell("in/gone.png", u"No such file or directory"_s);
        tell("in", u"it is a folder"_s);
        tell("in/sub/new.png", u"Cannot make \"%1\": File name too long"_s.arg(
                                   m_window->path("theme/images/") + QString(300, u'n') + u".png"));
        tell("in/skip.png", u"its name is taken"_s);
        tell("theme/images/link.png", u"it is a link that leads out of the theme"_s);
        tell("theme/images/logo.png", u"it is in the list already"_s);
        m_window->prompts.expectMessage(u"Not Added"_s, told.join(u'\n'));
        drop({"in/new.png", "in/logo.png", "in/it's.png", "in/text.png", "in/cut.png", "in/big.png",
              "in/gone.png", "in", "in/sub/new.png", "in/skip.png", "theme/images/link.png",
              "theme/images/logo.png", "theme/images/sub/there.png"});

        const QString folder = m_window->path("theme/images/");
        QTRY_COMPARE(rows(), QString(before + folder + u"new.png | new | Y\n" + folder +
                                     u"logo-2.png | logo-2 | Y\n" + folder + u"sub/there.png | there | Y\n"));
        QCOMPARE(m_window->read("theme/images/new.png"), m_red);
        QCOMPARE(m_window->read("theme/images/logo.png"), m_logo);
        QCOMPARE(m_window->read("theme/images/skip.PNG"), m_red);
        QCOMPARE(m_window->read("in/new.png"), m_red);

        auto *list = m_window->find<ListView>("lvImage");
        QCOMPARE(m_window->find<QLineEdit>("txtID")->text(), u"there"_s);
        QCoreApplication::processEvents();
        QVERIFY(list->hasFocus());
        QTest::keySequence(list, QKeySequence::Undo);
        QCOMPARE(rows(), before);
        QCOMPARE(m_window->read("theme/images/logo-2.png"), m_red);
        QTest::keySequence(list, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
        QCOMPARE(m_window->model("lvImage")->rowCount(), 4);
    }

    // In the grid, too.
    void pastes()
    {
        m_window->choose("mnuImgGrid");
        auto *grid = m_window->find<QAbstractItemView>("gridlvImage");
        grid->setFocus();
        QApplication::clipboard()->setText(u"text"_s);
        QTest::keySequence(grid, QKeySequence::Paste);
        QCOMPARE(m_window->said(), u"There are neither files nor a picture on the clipboard."_s);
        QApplication::clipboard()->setImage(QImage::fromData(m_red));
        m_window->prompts.expectInput(u"Paste Picture"_s, u"Name of the new picture:"_s, u"sky"_s);
        QTest::keySequence(grid, QKeySequence::Paste);
        QVERIFY(rows().endsWith(u"sky.png | sky | Y\n"));
        QCOMPARE(QImage(m_window->path("theme/images/sky.png")), QImage::fromData(m_red));
        QCOMPARE(grid->currentIndex().row(), 1);
    }

    void replaces()
    {
        click(m_window->find<ListView>("lvImage"), 0);
        const QString folder = m_window->path("theme/images/");
        m_window->prompts.expectInput(u"Replace Picture"_s, folder, m_window->write("new", m_red));
        m_window->choose("mnuImgReplace");
        QCOMPARE(m_window->read("theme/images/logo.png"), m_red);
        QVERIFY(m_window->said().startsWith(u"logo.png replaced"));
    }

private:
    QString rows() const { return m_window->shown("lvImage"); }
    // As a file manager does.
    void drop(std::initializer_list<const char *> names) const
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const char *name : names)
            urls.append(QUrl::fromLocalFile(m_window->path(name)));
        data.setUrls(urls);
        auto *tab = m_window->find<QWidget>("frYt(2)");
        QDragEnterEvent enter(QPoint(50, 50), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(tab, &enter);
        QDropEvent event(QPointF(50, 50), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(tab, &event);
        QVERIFY(enter.isAccepted() && event.dropAction() == Qt::CopyAction);
    }

    const QByteArray m_red = picture(Qt::red), m_logo = picture(Qt::blue);
    std::unique_ptr<Window> m_window;
};

WINDOW_TEST_MAIN(TestImages)
#include "tst_images.moc"
