#pragma once

#include "app/frmSkin.h"
#include "asking/Prompts.h"
#include "browser/forms/WebBrowser.h"
#include "controls/ListView.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "source/forms/SourceBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QEventLoop>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>

namespace quillmere {

using namespace Qt::StringLiterals;

// Answers from a script; a question that nobody expected fails the test.
class ScriptedPrompts : public Prompts
{
public:
    ~ScriptedPrompts() override
    {
        if (!m_script.isEmpty())
            qFatal("Never asked: %s", qPrintable(m_script.first().text));
    }
    void expectQuestion(const QString &title, const QString &text, bool answer)
    {
        m_script.append({title, text, answer, {}});
    }
    void expectMessage(const QString &title, const QString &text)
    {
        m_script.append({title, text, false, {}});
    }
    // No answer stands for Cancel.
    void expectInput(const QString &title, const QString &prompt, std::optional<QString> answer)
    {
        m_script.append({title, prompt, false, std::move(answer)});
    }

    bool ask(const QString &title, const QString &text) override { return take(title, text).answer; }
    void tell(const QString &title, const QString &text, Icon) override { take(title, text); }
    std::optional<QString> input(const QString &title, const QString &prompt, const QString &) override
    {
        return take(title, prompt).input;
    }
    // Expected as an input whose prompt is the preset.
    std::optional<QString> chooseFile(FileFor, const QString &title, const QString &preset,
                                      const QString &) override
    {
        return take(title, preset).input;
    }

private:
    struct Step
    {
        QString title, text;
        bool answer;
        std::optional<QString> input;
    };

    Step take(const QString &title, const QString &text)
    {
        if (m_script.isEmpty() || m_script.first().title != title || m_script.first().text != text)
            qFatal("Nobody expected \"%s\": \"%s\"", qPrintable(title), qPrintable(text));
        return m_script.takeFirst();
    }

    QList<Step> m_script;
};

// The rows of a list as text, a line a row, cells divided by " | ", a checked row with a "*" before it.
inline QString rowsAsText(const QAbstractItemModel *rows)
{
    QString text;
    for (int row = 0; row < rows->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->columnCount(); ++column)
            cells.append(rows->index(row, column).data().toString());
        const bool checked = rows->index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
        text += QString((checked ? u"* " : u"") + cells.join(u" | "_s) + u'\n');
    }
    return text;
}

// A control of a window or a dialog, by its name.
template <typename Kind>
Kind *childOf(const QWidget &parent, const char *name)
{
    Kind *found = parent.findChild<Kind *>(QLatin1String(name));
    if (!found)
        qFatal("There is no %s", name);
    return found;
}

// A dialog beside the main window, once it is shown.
inline QWidget *dialogNamed(const char *name)
{
    QWidget *found = nullptr;
    const auto isShown = [&] {
        for (QWidget *each : QApplication::topLevelWidgets())
            found = each->objectName() == QLatin1String(name) && each->isVisible() ? each : found;
        return found != nullptr;
    };
    if (!QTest::qWaitFor(isShown))
        qFatal("There is no %s", name);
    return found;
}

// A main window on a theme of its own, with settings and backups of its own.
class Window
{
public:
    Window()
    {
        QSettings().clear();
        disk.backups().setFolder(files.path(u"backup"_s));
        disk.setRecoveryFolder(files.path(u"recovery"_s));
        disk.setProgramFolder(files.folder());
        start();
    }
    // Starts the program; a second time as after a crash of the first.
    void start()
    {
        skin.reset();
        skin = std::make_unique<frmSkin>(disk, &prompts);
        skin->resize(1400, 900);
        skin->show();
        skin->activateWindow();
        if (!QTest::qWaitForWindowActive(skin.get()))
            qFatal("The window does not become active");
    }

    template <typename Kind>
    Kind *find(const char *name) const
    {
        return childOf<Kind>(*skin, name);
    }
    void choose(const char *item) const { find<QAction>(item)->trigger(); }
    SourceBox *source() const { return find<SourceBox>("txtSnippet"); }
    QAbstractItemModel *model(const char *list) const { return find<QAbstractItemView>(list)->model(); }
    QString shown(const char *list) const { return rowsAsText(model(list)); }
    ListView *select(const char *list, int row) const
    {
        auto *view = find<ListView>(list);
        view->setCurrentIndex(view->model()->index(row, 0));
        return view;
    }
    QString said() const { return skin->statusBar()->currentMessage(); }
    void turnTo(int tab) const { find<QTabBar>("TabStrip4")->setCurrentIndex(tab); }

    // Files of the window, below a folder of its own.
    QString path(const char *name) const { return files.path(QString::fromUtf8(name)); }
    QByteArray read(const char *name) const { return files.read(QString::fromUtf8(name)); }
    QString write(const char *name, const QByteArray &bytes = {}) const
    {
        return files.write(QString::fromUtf8(name), bytes);
    }
    void openTheme() const { skin->openTheme(path("theme")); }
    void openDocument(const char *name) const { skin->openDocument(path(name)); }
    void expectSave(bool answer)
    {
        prompts.expectQuestion(u"Simpan File"_s, u"Benar mau menyimpan file?"_s, answer);
    }
    // What a script of ours (never one of the page) says about the page, once the browser has the newest one.
    QVariant js(const QString &script) const
    {
        // An event loop of its own, not qWaitFor(): that one sleeps between two events, and the browser has
        // many.
        auto *wb = find<WebBrowser>("wb");
        QEventLoop loop;
        QTimer patience;
        QObject::connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
        patience.start(10000);
        QObject::connect(wb, &WebBrowser::written, &loop, &QEventLoop::quit);
        if (wb->isBusy())
            loop.exec();
        // A browser that hangs answers when nobody waits any more.
        const auto answer = std::make_shared<QVariant>();
        const QPointer<QEventLoop> waiting = &loop;
        wb->page()->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                                  [answer, waiting](const QVariant &value) {
                                      *answer = value;
                                      if (waiting)
                                          waiting->quit();
                                  });
        loop.exec();
        return *answer;
    }
    // A computed style of the block with this name.
    QString style(const QString &block, const QString &property) const
    {
        return js(u"getComputedStyle(document.getElementById('%1'))['%2']"_s.arg(block, property)).toString();
    }

    TestFiles files;
    Files disk;
    ScriptedPrompts prompts;
    std::unique_ptr<frmSkin> skin;
};

inline void click(QAbstractItemView *list, int row)
{
    const QModelIndex cell = list->model()->index(row, 1);
    list->scrollTo(cell);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(cell).center());
}

inline void doubleClick(QAbstractItemView *list, int row)
{
    click(list, row);
    const QPoint place = list->visualRect(list->model()->index(row, 1)).center();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

// A test program that drives windows: the browser's scheme is registered before the application, and nothing
// of the person's own settings is touched.
template <typename Test>
int runWindowTest(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    qputenv("XDG_CACHE_HOME", home.path().toUtf8());
    QCoreApplication::setOrganizationName(u"Quillmere"_s);
    QCoreApplication::setApplicationName(u"quillmere-test"_s);
    WebBrowser::prepare();
    QApplication app(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace quillmere

#define WINDOW_TEST_MAIN(Test)                                                                               \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return quillmere::runWindowTest<Test>(argc, argv);                                                   \
    }
