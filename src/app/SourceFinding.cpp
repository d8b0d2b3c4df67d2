#include "app/SourceFinding.h"

#include "app/TabStrip.h"
#include "asking/Talk.h"
#include "source/forms/FindBar.h"
#include "source/forms/SourceBox.h"

#include <QAction>
#include <QMainWindow>

namespace quillmere {

namespace {

constexpr int kSourceTab = 8; // in the strip

} // namespace

SourceFinding::SourceFinding(SourceBox &source, TabStrip &strip, Talk &talk, QMainWindow &window)
    : QObject(&window), m_source(source), m_strip(strip), m_talk(talk), m_bar(new FindBar(source))
{
    connect(addKey(window, "findInSource", QKeySequence::Find), &QAction::triggered, m_bar, &FindBar::open);
    connect(addKey(window, "findPrevious", Qt::SHIFT | Qt::Key_F3), &QAction::triggered, this, [this] {
        if (!m_bar->previous())
            m_bar->open();
    });
    connect(addKey(window, "goToLine", Qt::CTRL | Qt::Key_G), &QAction::triggered, this,
            &SourceFinding::goToLine);
}

QAction *SourceFinding::addKey(QMainWindow &window, const char *name, const QKeySequence &key)
{
    auto *action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    window.addAction(action);
    const auto enable = [this, action] { action->setEnabled(m_strip.currentIndex() == kSourceTab); };
    connect(&m_strip, &QTabBar::currentChanged, action, enable);
    enable();
    return action;
}

bool SourceFinding::next()
{
    if (!m_bar->next())
        return false;
    m_strip.setCurrentIndex(kSourceTab);
    return true;
}

void SourceFinding::goToLine()
{
    const QString now = QString::number(m_source.textCursor().blockNumber() + 1);
    const auto answer =
        m_talk.input(tr("Go to Line"), tr("Line, 1 to %1:").arg(m_source.document()->blockCount()), now);
    bool isNumber = false;
    const int line = answer.value_or(QString()).trimmed().toInt(&isNumber);
    if (isNumber) {
        m_source.goToLine(line);
        m_source.setFocus();
    } else if (answer) {
        m_talk.say(tr("\"%1\" is not a line number.").arg(answer->left(40)));
    }
}

} // namespace quillmere
