// Works on a large theme in the real window and prints how long everything takes and how much memory it
// needs. Files of the theme are rewritten with what they hold; backups go to a temporary folder.
//
//   make_theme FOLDER && QT_QPA_PLATFORM=offscreen load_window FOLDER/theme
//
// A key is timed from the moment it is due until the window has handled it, so that whatever else keeps the
// window from handling it counts.

#include "BenchWindow.h"
#include "Measured.h"

#include "controls/ListView.h"
#include "files/Memory.h"
#include "source/forms/SourceBox.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTextStream>
#include <QTimer>

using namespace quillmere;

namespace {

constexpr int kTyping = 30; // ms from key to key
constexpr int kBurst = 4;   // ms
constexpr int kMostWait = 60000;

class YesPrompts : public Prompts
{
public:
    bool ask(const QString &, const QString &) override { return true; }
    void tell(const QString &title, const QString &text, Icon) override
    {
        QTextStream(stdout) << "  (" << title << ": " << text << ")\n";
    }
    std::optional<QString> input(const QString &, const QString &, const QString &) override
    {
        return QStringLiteral("1");
    }
    std::optional<QString> chooseFile(FileFor, const QString &, const QString &, const QString &) override
    {
        return {};
    }
};

struct Key
{
    int code;
    QString text = {};
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};

class LoadedWindow
{
public:
    LoadedWindow() : m_out(stdout), m_skin(m_disk, &m_prompts)
    {
        m_disk.backups().setFolder(m_files.filePath(QStringLiteral("backup")));
        m_skin.resize(1792, 860);
        m_skin.show();
        m_browser = find<WebBrowser>("wb");
        m_source = find<SourceBox>("txtSnippet");
        wait(500);
    }

    void run(const QString &theme)
    {
        memory("window shown");
        time("open the theme", [&] { m_skin.openTheme(theme); });
        memory("theme open");
        time("open wnd_large", [&] { m_skin.openDocument(theme + QStringLiteral("/widget/wnd_large.xml")); });
        tab(8);
        memory("window open");
        typing();
        propertiesOpen();
        views();
        commands();
        m_out << Qt::endl;
        memory("at the end");
        m_out << QStringLiteral("%1 MB resident at most\n").arg(statusMegabytes("VmHWM:"), 0, 'f', 0);
    }

private:
    template <typename Kind>
    Kind *find(const char *name) const
    {
        Kind *found = m_skin.findChild<Kind *>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s", name);
        return found;
    }

    static void wait(int milliseconds)
    {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }

    // Until the preview has caught up and the browser has it.
    void settle() const
    {
        QElapsedTimer clock;
        clock.start();
        const auto *behind = m_skin.findChild<QLabel *>(QStringLiteral("lblPreview"));
        do
            wait(50);
        while ((m_browser->isBusy() || (behind && !behind->text().isEmpty())) && clock.elapsed() < kMostWait);
        wait(300);
    }

    void memory(const char *when)
    {
        m_out << QStringLiteral("%1 MB resident, %2")
                     .arg(statusMegabytes("VmRSS:"), 0, 'f', 0)
                     .arg(QLatin1String(when))
              << Qt::endl;
    }

    template <typename Work>
    void time(const QString &what, Work work)
    {
        QElapsedTimer clock;
        clock.start();
        const double before = workOfThread();
        work();
        const double worked = workOfThread() - before;
        const qint64 blocked = clock.elapsed();
        QApplication::processEvents(); // draws
        const qint64 drawn = clock.elapsed();
        settle();
        m_out << QStringLiteral("%1 ms, worked %2 ms, %3 ms with drawing: ")
                     .arg(blocked, 6)
                     .arg(worked, 6, 'f', 0)
                     .arg(drawn, 6)
              << what << Qt::endl;
    }
    template <typename Work>
    void time(const char *what, Work work)
    {
        time(QString(QLatin1String(what)), work);
    }

    void tab(int index) { find<QTabBar>("TabStrip4")->setCurrentIndex(index); }

    void press(const Key &key)
    {
        QKeyEvent down(QEvent::KeyPress, key.code, key.modifiers, key.text);
        QApplication::sendEvent(m_source, &down);
        QKeyEvent up(QEvent::KeyRelease, key.code, key.modifiers, key.text);
        QApplication::sendEvent(m_source, &up);
    }

    // Presses the keys one after the other, each when it is due or as soon after that as the window is free.
    QList<Blocked> type(const QList<Key> &keys, int interval)
    {
        QList<Blocked> blocked;
        auto *timed = static_cast<TimedApplication *>(qApp);
        timed->takeMost(); // that of whatever was before
        for (const Key &key : keys) {
            QElapsedTimer clock;
            clock.start();
            wait(interval);
            const double before = workOfThread();
            press(key);
            blocked.append({double(clock.nsecsElapsed()) / 1e6 - interval, workOfThread() - before});
        }
        m_mostOfEvents = std::max(m_mostOfEvents, timed->takeMost());
        return blocked;
    }

    void report(const char *what, const QList<Blocked> &keys)
    {
        m_out << percentiles(keys, &Blocked::time) << "; worked " << percentiles(keys, &Blocked::work)
              << QStringLiteral(", for any event %1 ms: ").arg(m_mostOfEvents, 5, 'f', 1) << what << " ("
              << keys.size() << " keys)" << Qt::endl;
        m_mostOfEvents = 0;
    }

    void caretTo(const QString &text)
    {
        m_source->select(std::max<qsizetype>(m_source->text().indexOf(text), 0), 0);
    }

    static QList<Key> letters(const QString &text)
    {
        QList<Key> keys;
        for (const QChar letter : text)
            keys.append({letter.toUpper().unicode(), letter});
        return keys;
    }

    void typing()
    {
        m_source->setFocus();
        caretTo(QStringLiteral("Message block_05002"));
        report("typing, 30 ms apart", type(letters(QString(300, u'x')), kTyping));
        settle();
        report("back, 30 ms apart", type(QList<Key>(300, {Qt::Key_Backspace}), kTyping));
        settle();
        QList<Blocked> bursts;
        for (int burst = 0; burst < 10; ++burst) {
            bursts += type(letters(QString(30, u'y')), kBurst);
            wait(burst * 60);
        }
        report("in bursts, 4 ms apart", bursts);
        settle();
        QList<Blocked> during;
        for (int pause = 20; pause < 1500; pause += 20) {
            type(letters(QStringLiteral("z")), 1);
            during += type(letters(QStringLiteral("z")), pause);
        }
        report("after every pause from 20 to 1500 ms", during);
        settle();
        report("Enter", type(QList<Key>(50, {Qt::Key_Return}), kTyping));
        settle();
        QGuiApplication::clipboard()->setText(m_source->text().mid(1000, 4000));
        report("paste of 4,000 letters", type(QList<Key>(30, {Qt::Key_V, {}, Qt::ControlModifier}), kTyping));
        settle();
        report("undo", type(QList<Key>(60, {Qt::Key_Z, {}, Qt::ControlModifier}), kTyping));
        settle();
        caretTo({});
        report("\"<!--\" at the top", type(letters(QStringLiteral("<!--")), kTyping));
        report("its deletion at once", type(QList<Key>(4, {Qt::Key_Backspace}), kTyping));
        report("\"<!--\" at the top", type(letters(QStringLiteral("<!--")), kTyping));
        settle();
        report("its deletion later", type(QList<Key>(4, {Qt::Key_Backspace}), kTyping));
        settle();
        QGuiApplication::clipboard()->setText(m_source->text().left(1000000));
        report("paste of 1,000,000 letters", type({{Qt::Key_V, {}, Qt::ControlModifier}}, kTyping));
        settle();
        report("its undo", type({{Qt::Key_Z, {}, Qt::ControlModifier}}, kTyping));
        settle();
        memory("after typing");
    }

    void propertiesOpen()
    {
        auto *blocks = find<ListView>("lvBlock");
        time("open the properties of a block", [&] { emit blocks->rowOpened(5002); });
        report("typing with the properties open", type(letters(QString(200, u'w')), kTyping));
        settle();
        dialogNamed("frmWidget")->close();
    }

    void views()
    {
        for (int index = 0; index < 9; ++index)
            time(QString(u"to the tab " + find<QTabBar>("TabStrip4")->tabText(index)), [&] { tab(index); });
        scroll(QStringLiteral("the source"), m_source->verticalScrollBar());
        for (const auto &[name, index] :
             {std::pair("lvBlock", 8), std::pair("LvWidget", 1), std::pair("lvImage", 2)}) {
            tab(index);
            scroll(QString(QLatin1String(name)), find<ListView>(name)->verticalScrollBar());
        }
    }
    void scroll(const QString &what, QScrollBar *bar)
    {
        time(QString(u"scroll " + what + u" by 200 pages"), [&] {
            for (int page = 0; page < 200; ++page) {
                bar->setValue(bar->maximum() * page / 200);
                QApplication::processEvents();
            }
        });
    }

    void menu(const char *item)
    {
        auto *action = find<QAction>(item);
        time(QString(u"menu " + QLatin1String(item) + u' ' + action->text()), [&] {
            if (!action->isEnabled())
                m_out << "  (not enabled)\n";
            action->trigger();
        });
    }

    void commands()
    {
        tab(8);
        for (const char *item :
             {"mnuFormat", "mnuC(0)", "mnuC(1)", "mnuTD(0)", "mnuTD(1)", "mnuColCode(1)", "mnuColCode(2)",
              "mnuV(1)", "mnuV(1)", "mnuCblock", "mnuVCopy", "mnuVPaste", "mnuSave"})
            menu(item);
        auto *blocks = find<ListView>("lvBlock");
        time("tick a block", [&] {
            blocks->model()->setData(blocks->model()->index(20, 0), Qt::Checked, Qt::CheckStateRole);
        });
        replaceAll();
        tab(0);
        menu("mnuSWidget");
        QGuiApplication::clipboard()->setText(m_source->text());
        menu("mnuSKernel");
        tab(2);
        find<ListView>("lvImage")->setCurrentIndex(find<ListView>("lvImage")->model()->index(100, 0));
        for (const char *item : {"mnuImgChe", "mnuImgSave", "mnuCOpen", "mnuCSave", "mnuWidgetOpen"})
            menu(item);
        tab(4);
        find<ListView>("lvLang")->setCurrentIndex(find<ListView>("lvLang")->model()->index(1, 0));
        writeDictionary();
        for (const char *item : {"mnuLangOpen", "mnuLangCopy(1)", "mnuLangTranslate", "mnuLangCopy(2)",
                                 "mnuLangSearch", "mnuLangPaste", "mnuLangOpen", "mnuLangSave"})
            menu(item);
    }

    static QWidget *dialogNamed(const char *name)
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String(name))
                return window;
        }
        qFatal("there is no %s", name);
    }

    void replaceAll()
    {
        find<QAction>("mnuTReplace")->trigger();
        QWidget *dialog = dialogNamed("frmReplace");
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral("Message"));
        dialog->findChild<QLineEdit *>(QStringLiteral("Text2"))->setText(QStringLiteral("Report"));
        time("replace 3,333 words",
             [&] { dialog->findChild<QAbstractButton *>(QStringLiteral("Command9"))->click(); });
        dialog->close();
    }

    void writeDictionary()
    {
        m_disk.setProgramFolder(m_files.path());
        QFile file(m_files.filePath(QStringLiteral("Indonesia.txt")));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the dictionary");
        for (int i = 0; i < 100000; ++i)
            file.write("Message number " + QByteArray::number(i) + " of the receiver[*]Pesan " +
                       QByteArray::number(i) + "\r\n");
    }

    QTextStream m_out;
    QTemporaryDir m_files;
    YesPrompts m_prompts;
    Files m_disk;
    frmSkin m_skin;
    WebBrowser *m_browser;
    SourceBox *m_source;
    double m_mostOfEvents = 0; // ms, while keys were typed since the last report
};

} // namespace

int main(int argc, char **argv)
{
    keepLargeTextsApart(); // as the program does
    const QTemporaryDir home;
    prepareBench(home);
    const TimedApplication app(argc, argv);
    const QString theme = QApplication::arguments().value(1);
    if (theme.isEmpty()) {
        QTextStream(stderr) << "load_window FOLDER/theme\n";
        return 2;
    }
    LoadedWindow().run(theme);
    return 0;
}
