// From a key in the source to the list of completions that it opens or narrows, in the real window, on a
// theme of make_theme with its 20,000 images. "shown" is when the list has been painted and all that the key
// leads to is done; "work" is what the window's thread did meanwhile, which says something on a busy machine,
// too.
//
//   QT_QPA_PLATFORM=offscreen bench_completion THEME [BLOCKS]

#include "BenchWindow.h"
#include "Measured.h"

#include "source/forms/SourceBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTabBar>
#include <QTextStream>

using namespace quillmere;

namespace {

constexpr int kRounds = 40;
constexpr int kWarm = 3; // rounds before, which do not count

struct Times
{
    QList<double> shown, work;
};

QAbstractItemView *list()
{
    return qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget());
}

void settle(int rounds)
{
    for (int i = 0; i < rounds; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// Sends a key to where the window system would, and waits until the list is painted.
void press(Times *times, int code, const QString &text, Qt::KeyboardModifiers modifiers = {})
{
    QWidget *to = list() ? list() : QApplication::focusWidget();
    QKeyEvent key(QEvent::KeyPress, code, modifiers, text);
    const double before = workOfThread();
    QElapsedTimer clock;
    clock.start();
    QApplication::sendEvent(to, &key);
    if (list())
        list()->viewport()->repaint();
    if (times) {
        times->shown.append(double(clock.nsecsElapsed()) / 1e6);
        times->work.append(workOfThread() - before);
        if (!list())
            qFatal("No list opens");
    }
    settle(5); // what follows a key is not counted with the next one
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    QApplication app(argc, argv);
    if (app.arguments().size() < 2)
        qFatal("bench_completion THEME [BLOCKS]");
    const BenchWindow window(folder);
    frmSkin &skin = window.skin();
    skin.openTheme(app.arguments().at(1));
    auto *source = skin.findChild<SourceBox *>(QStringLiteral("txtSnippet"));
    skin.findChild<QTabBar *>(QStringLiteral("TabStrip4"))->setCurrentIndex(8);
    const int blocks = app.arguments().value(2, QStringLiteral("200")).toInt();
    source->setText(windowOf(blocks, {}));
    source->setFocus();
    source->select(source->text().indexOf(QStringLiteral("<img>"), source->text().size() / 2) + 5, 0);
    QElapsedTimer patience;
    for (patience.start(); !QApplication::focusWidget(); settle(20)) {
        if (patience.elapsed() > 30000)
            qFatal("The window does not get the keyboard");
    }
    for (patience.start(); !list() && patience.elapsed() < 30000; settle(20))
        press(nullptr, Qt::Key_Space, {}, Qt::ControlModifier);
    press(nullptr, Qt::Key_Escape, {});

    press(nullptr, Qt::Key_Space, {}, Qt::ControlModifier);
    const int images = list() ? list()->model()->rowCount() : 0;
    press(nullptr, Qt::Key_Escape, {});
    Times asked, first, second;
    for (int round = -kWarm; round < kRounds; ++round) {
        const bool counts = round >= 0;
        press(counts ? &asked : nullptr, Qt::Key_Space, {}, Qt::ControlModifier);
        press(nullptr, Qt::Key_Escape, {});
        // A pause, after which the list opens anew.
        source->setText(source->text());
        source->select(source->text().indexOf(QStringLiteral("<img>"), source->text().size() / 2) + 5, 0);
        settle(20);
        press(counts ? &first : nullptr, Qt::Key_I, QStringLiteral("i"));
        press(counts ? &second : nullptr, Qt::Key_M, QStringLiteral("m"));
        press(nullptr, Qt::Key_Escape, {});
        press(nullptr, Qt::Key_Backspace, {});
        press(nullptr, Qt::Key_Backspace, {});
    }
    QTextStream out(stdout);
    const auto print = [&](const char *what, const Times &times) {
        out << what << ":\n    shown " << spread(times.shown) << "\n    work  " << spread(times.work) << "\n";
    };
    out << blocks << " blocks, " << images << " images\n";
    print("asked for, all images", asked);
    print("opened by a letter", first);
    print("narrowed by the next", second);
}
