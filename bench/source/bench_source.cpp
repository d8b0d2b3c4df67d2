// What the editor alone takes to show a text, to have it rewritten by commands, and for keys: work of this
// thread, so that a busy machine does not count.
//
//   make_theme FOLDER && QT_QPA_PLATFORM=offscreen bench_source FOLDER/theme/widget/wnd_large.xml

#include "markup/FormatXML.h"
#include "source/forms/FindBar.h"
#include "source/forms/SourceBox.h"
#include "widgets/RectCommands.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTextStream>

#include <ctime>

using namespace quillmere;

namespace {

// ms
double worked()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

class Bench
{
public:
    explicit Bench(const QString &text) : m_text(text), m_box(QStringLiteral("txtSnippet"), {})
    {
        m_box.resize(800, 600);
        m_box.show();
        time("setText", [&] { m_box.setText(m_text); });
        m_text = m_box.text();
    }

    template <typename Work>
    void time(const char *what, Work work)
    {
        const double before = worked();
        work();
        m_box.grab();
        QTextStream(stdout) << QStringLiteral("%1 ms: ").arg(worked() - before, 8, 'f', 1) << what
                            << Qt::endl;
        for (int i = 0; i < 200; ++i)
            QApplication::processEvents(); // the colours
    }
    void rewrite(const char *what, const QString &text)
    {
        time(what, [&] { m_box.rewrite(text); });
        time("  its undo", [&] { m_box.undo(); });
    }
    void commands()
    {
        QString text = m_text;
        ScaleRects(text, 4, 5, QStringLiteral("1280"), QStringLiteral("720"));
        rewrite("Convert Size", text);
        text = m_text;
        MoveRects(text, Axis::Left, 1);
        rewrite("Distance", text);
        rewrite("Replace", QString(m_text).replace(QLatin1String("Message"), QLatin1String("Report")));
        rewrite("everything indented",
                QString(m_text).replace(QLatin1String("\r\n"), QLatin1String("\r\n  ")));
        rewrite("no indents", QString(m_text).remove(QLatin1String("     ")));
        rewrite("other lines",
                QString(m_text).replace(QLatin1String("<property>"), QLatin1String("<property>\r\n")));
    }
    void find()
    {
        FindBar bar(m_box);
        auto *text = bar.findChild<QLineEdit *>(QStringLiteral("txtFind"));
        time("the find bar comes", [&] { bar.open(); });
        for (const QChar key : QStringLiteral("name=\"w"))
            time("  a key in it", [&] { text->insert(key); });
        time("  a text that is nowhere", [&] { text->setText(QStringLiteral("nowhere at all")); });
        time("  a key in the source", [&] {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
            QApplication::sendEvent(&m_box, &key);
        });
        text->setText(QStringLiteral("e"));
        time("  the next place", [&] { bar.next(); });
        time("  the place before", [&] { bar.previous(); });
    }
    void paste()
    {
        QMimeData pasted;
        pasted.setText(m_text.left(1'000'000));
        time("paste of a megabyte", [&] { m_box.insert(pasted); });
        time("  its undo", [&] { m_box.undo(); });
    }
    void longLine()
    {
        const QString line = QString(m_text).remove(QLatin1String("\r\n")).left(1'000'000);
        time("setText of a line of a megabyte", [&] { m_box.setText(line); });
        m_box.select(line.size() / 2, 0);
        for (int i = 0; i < 3; ++i)
            time("a key in it", [&] {
                QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
                QApplication::sendEvent(&m_box, &key);
            });
        time("Replace in it", [&] {
            m_box.rewrite(QString(line).replace(QLatin1String("Message"), QLatin1String("Report")));
        });
    }

private:
    class Box : public SourceBox
    {
    public:
        using SourceBox::SourceBox;
        void insert(const QMimeData &copied) { insertFromMimeData(&copied); }
    };

    QString m_text;
    Box m_box;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QFile file(app.arguments().value(1));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("bench_source FILE");
    QString text = QString::fromUtf8(file.readAll());
    Bench bench(FormatXML(text));
    bench.commands();
    bench.find();
    bench.paste();
    bench.longLine();
}
