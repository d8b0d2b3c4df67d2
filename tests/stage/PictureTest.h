#pragma once

#include "app/WindowFixture.h"

#include "stage/forms/Picture.h"

#include <QMouseEvent>

namespace quillmere {

inline QByteArray block(const char *kind, const char *name, const char *rect, const QByteArray &children = {},
                        const char *more = "")
{
    return QByteArray("<widget class=\"") + kind + "\" style=\"default\" name=\"" + name +
           "\">\r\n<property><rect>[" + rect + "]</rect><backcolor>[gray,gray,gray]</backcolor>" + more +
           "</property>\r\n" + (children.isEmpty() ? children : "<children>" + children + "</children>") +
           "</widget>\r\n";
}

// "top" lies over a part of "a"; "a" and "b" stand in "group". The two named "same" have the same rect.
inline const QByteArray kWindow =
    "<interface>\r\n" +
    block("window", "win", "0,0,800,500",
          block("box", "group", "100,100,300,200",
                block("box", "a", "10,20,100,50") + block("box", "b", "150,20,100,50")) +
              block("box", "top", "90,110,60,60") + block("box", "odd", "500,20,100,40.5") +
              block("box", "spaced", " 500 , +100,120,60 ") + block("box", "same", "600,300,80,40") +
              block("box", "same", "600,400,80,40") + "<!-- " + block("box", "gone", "300,400,80,40") +
              " -->\r\n" +
              block("box", "pic", "700,20,60,40", {}, "<imgs><mode>single</mode><img>p</img></imgs>")) +
    "</interface>\r\n";

// A block as the source shows it.
inline QString shown(const char *kind, const char *name, const char *rect, const char *more = "")
{
    return u"<widget class=\"%1\" style=\"default\" name=\"%2\">\r\n<property>     <rect>%3</rect>     "
           "<backcolor>[gray,gray,gray]</backcolor>%4</property>\r\n</widget>\r\n"_s.arg(
               QLatin1String(kind), QLatin1String(name), QLatin1String(rect), QLatin1String(more));
}

struct Step
{
    QString what;
    Qt::KeyboardModifiers held;
    QList<QPoint> places;
    Qt::Key key = Qt::Key_unknown;
    QByteArray name = {};
    bool isQuick = false;
};

// "click 1,2; ctrl shift drag 3,4 5,6; key Delete": one after the other. A drag goes to each of its places.
// "choose mnuX" takes a menu item, "focus lvX" gives a control the keyboard.
inline QList<Step> stepsOf(const QString &text)
{
    static const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
    QList<Step> steps;
    for (const QString &part : text.split(u';')) {
        Step step;
        for (const QString &word : part.split(u' ', Qt::SkipEmptyParts)) {
            if (word == u"ctrl")
                step.held |= Qt::ControlModifier;
            else if (word == u"shift")
                step.held |= Qt::ShiftModifier;
            else if (word == u"quick")
                step.isQuick = true;
            else if (word.contains(u','))
                step.places.append({word.section(u',', 0, 0).toInt(), word.section(u',', 1).toInt()});
            else if (step.what == u"key")
                step.key = Qt::Key(keys.keyToValue(QByteArray("Key_" + word.toUtf8()).constData()));
            else if (step.what == u"choose" || step.what == u"focus")
                step.name = word.toLatin1();
            else
                step.what = word;
        }
        steps.append(step);
    }
    return steps;
}

// A test with a mouse and keys in the picture of kWindow, at 100 %. There is a picture "p" of 32 x 24.
class PictureTest : public QObject
{
protected:
    void start()
    {
        m_window = std::make_unique<Window>();
        m_stage = m_window->skin->findChild<Stage *>();
        m_picture = m_window->skin->findChild<Picture *>();
        m_wb = m_window->find<WebBrowser>("wb");
        m_window->write("theme/theme.xml",
                        "<theme><config><file_image>image.xml</file_image></config></theme>");
        m_window->write("theme/image.xml", "<image id=\"p\">p.png</image>");
        QVERIFY(QImage(32, 24, QImage::Format_RGB32).save(m_window->path("theme/p.png")));
        m_window->write("theme/w.xml", kWindow);
        m_window->openTheme();
        m_window->turnTo(8);
        m_window->choose("mnuWwbZ2"); // at 100 %
        m_picture->gestures.snaps = false;
    }

    // The columns of check().
    static void addColumns()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QStringList>("changes"); // what stands in the text, what stands there then, ...
        QTest::addColumn<QString>("selected");    // rows
    }
    static void row(const char *name, const char *steps, const QStringList &changes, const char *selected)
    {
        QTest::newRow(name) << QString::fromLatin1(steps) << changes << QString::fromLatin1(selected);
    }
    void check()
    {
        QFETCH(const QString, steps);
        QFETCH(const QStringList, changes);
        QFETCH(const QString, selected);
        open("w.xml");
        const QString before = m_window->source()->text();
        QString expected = before;
        for (qsizetype i = 0; i < changes.size(); i += 2) {
            // Where a text stands more than once it is the first one.
            const qsizetype at = expected.indexOf(changes[i]);
            QVERIFY2(at >= 0, qPrintable(changes[i]));
            expected.replace(at, changes[i].size(), changes[i + 1]);
        }
        for (const Step &step : stepsOf(steps)) {
            take(step);
            QVERIFY(step.what == u"press" || step.what == u"move" || isSeen());
        }
        QCOMPARE(linesOf(m_window->source()->text(), before), linesOf(expected, before));
        QCOMPARE(m_window->source()->text(), expected);
        QCOMPARE(rows(), selected);
        if (!steps.contains(u"key Z"))
            QCOMPARE(m_window->source()->document()->isUndoAvailable(), !changes.isEmpty());
    }

    void open(const char *name)
    {
        m_window->skin->openDocument(m_window->path(QByteArray("theme/"_ba + name).constData()));
        QVERIFY(isSeen());
    }
    // Waits until it is known where the blocks are, in an event loop of its own: QTRY sleeps between two
    // looks.
    bool isSeen()
    {
        QEventLoop loop;
        connect(m_stage, &Stage::placesChanged, &loop, &QEventLoop::quit);
        QTimer::singleShot(10000, &loop, &QEventLoop::quit);
        if (!m_stage->places())
            loop.exec();
        return m_stage->places();
    }
    // The lines of a text that another one does not have.
    static QString linesOf(const QString &text, const QString &other)
    {
        QStringList lines = text.split(u'\n');
        const QStringList known = other.split(u'\n');
        QString different;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (lines[i] != known.value(i))
                different += QString::number(i) + lines[i].simplified() + u'\n';
        }
        return different;
    }
    // What is selected.
    QString rows() const
    {
        QStringList rows;
        for (const int row : m_stage->selection())
            rows.append(QString::number(row));
        return rows.join(u' ');
    }
    void mouse(QEvent::Type type, QPoint at, Qt::KeyboardModifiers held, Qt::MouseButton button)
    {
        QMouseEvent event(type, at, m_wb->mapToGlobal(at), button, Qt::LeftButton, held);
        event.setTimestamp(m_time);
        QApplication::sendEvent(m_wb, &event);
    }
    void key(Qt::Key code, Qt::KeyboardModifiers held = {})
    {
        QWidget *focus = m_window->skin->focusWidget();
        QTest::keyClick(focus && focus->objectName() == u"lvBlock" ? focus : m_wb, code, held);
    }
    void take(const Step &step)
    {
        m_time += step.what == u"click" && !step.isQuick ? 2 * QApplication::doubleClickInterval() : 10;
        if (step.what == u"key") {
            key(step.key, step.held);
            return;
        }
        if (step.what == u"choose" || step.what == u"focus") {
            if (step.what == u"choose")
                m_window->choose(step.name.constData());
            else
                m_window->find<QWidget>(step.name.constData())->setFocus();
            return;
        }
        const QPoint first = step.places.first(), last = step.places.last();
        if (step.what == u"double")
            mouse(QEvent::MouseButtonDblClick, first, step.held, Qt::LeftButton);
        const bool isWhole = step.what == u"click" || step.what == u"drag";
        if (isWhole || step.what == u"press")
            mouse(QEvent::MouseButtonPress, first, step.held, Qt::LeftButton);
        if (isWhole || step.what == u"move") {
            for (const QPoint place : step.places.mid(step.what == u"move" ? 0 : 1))
                mouse(QEvent::MouseMove, place, step.held, Qt::NoButton);
        }
        if (isWhole || step.what == u"release" || step.what == u"double")
            mouse(QEvent::MouseButtonRelease, last, step.held, Qt::LeftButton);
    }

    std::unique_ptr<Window> m_window;
    Stage *m_stage = nullptr;
    Picture *m_picture = nullptr;
    WebBrowser *m_wb = nullptr;

private:
    quint64 m_time = 1000;
};

} // namespace quillmere
