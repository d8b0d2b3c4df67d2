#include "app/SourceFinding.h"

#include "app/TabStrip.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "source/forms/FindBar.h"
#include "source/forms/SourceBox.h"

#include <QAction>
#include <QMainWindow>

namespace quillmere {

namespace {

constexpr int kSourceTab = 8; // in the strip
// Those with a text or a list to look in.
const QList<int> kFinds = {1, 2, 3, 4, 5, 6, kSourceTab};

} // namespace

SourceFinding::SourceFinding(SourceBox &source, TabStrip &strip, Commands &menu, Talk &talk,
                             QMainWindow &window)
    : QObject(&window), m_source(source), m_strip(strip), m_talk(talk), m_bar(new FindBar(source)),
      m_find(menu.action("mnuFind")), m_previous(new QAction(tr("Find Previous"), this)),
      m_goToLine(menu.action("mnuGoToLine"))
{
    menu.on("mnuFind", [this] {
        if (m_strip.currentIndex() == kSourceTab)
            m_bar->open();
    });
    menu.on("mnuGoToLine", [this] { goToLine(); });
    m_find->setShortcut(QKeySequence::Find);
    m_goToLine->setShortcut(Qt::CTRL | Qt::Key_G);
    m_previous->setObjectName(QStringLiteral("findPrevious"));
    m_previous->setShortcut(Qt::SHIFT | Qt::Key_F3);
    window.addAction(m_previous);
    connect(m_previous, &QAction::triggered, this, [this] {
        if (!m_bar->previous())
            m_bar->open();
    });
    connect(&m_strip, &QTabBar::currentChanged, this, &SourceFinding::follow);
    follow();
}

void SourceFinding::follow()
{
    const bool isSource = m_strip.currentIndex() == kSourceTab;
    m_previous->setEnabled(isSource);
    m_goToLine->setEnabled(isSource);
    m_find->setEnabled(kFinds.contains(m_strip.currentIndex()));
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
