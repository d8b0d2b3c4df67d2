#include "app/StartPage.h"

#include "app/RecentCards.h"
#include "app/StartButton.h"
#include "controls/Named.h"

#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMargin = 24;    // pixels around all
constexpr int kMost = 880;     // of the width that is used
constexpr int kNarrow = 560;   // where the buttons stand below each other
constexpr int kBetween = 12;   // buttons
constexpr int kParts = 20;     // heading, buttons and list
constexpr double kLarge = 1.8; // the heading, by the font of all
constexpr double kMedium = 1.15;

void enlarge(QLabel &label, const QFont &font, double by)
{
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * by);
    large.setBold(true);
    label.setFont(large);
}

// A path that may begin at the person's home.
QString shortened(const QString &path)
{
    const QString home = QDir::homePath() + u'/';
    return path.startsWith(home) ? QString(QDir::toNativeSeparators(u"~/" + path.mid(home.size())))
                                 : QDir::toNativeSeparators(path);
}

StartButton *button(const char *name, const QString &caption, const QString &sentence)
{
    auto *made = new StartButton(caption, sentence);
    made->setObjectName(QLatin1String(name));
    return made;
}

} // namespace

StartPage::StartPage(QWidget &place, const QString &example)
    : QScrollArea(place.parentWidget()),
      cmdOpenTheme(button("cmdOpenTheme", tr("Open Theme"),
                          tr("Choose a folder named \"theme\", or the one above it."))),
      cmdNewTheme(button("cmdNewTheme", tr("New Theme"),
                         tr("Make a small theme of your own, with three windows to begin with."))),
      cmdOpenExample(
          button("cmdOpenExample", tr("Open the Example"),
                 tr("Explore a whole theme. It is yours to change: a copy in %1.").arg(shortened(example)))),
      lvRecent(named(new RecentCards, "lvRecent", tr("Recent themes"))), m_place(place),
      m_hasExample(!example.isEmpty()),
      lblWelcome(named(new QLabel(tr("Welcome to Quillmere")), "lblWelcome", tr("Welcome"))),
      lblRecent(named(new QLabel(tr("Recent Themes")), "lblRecent", tr("Recent themes"))),
      lblNoRecent(
          named(new QLabel(tr("Themes that you open appear here.")), "lblNoRecent", tr("No recent themes"))),
      m_body(new QWidget), m_row(new QHBoxLayout), m_column(new QVBoxLayout(m_body))
{
    named(this, "startPage", tr("Start page"));
    hide();
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    viewport()->setBackgroundRole(QPalette::Base);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_body->setBackgroundRole(QPalette::Base);
    m_body->setAutoFillBackground(true);
    lblRecent->setBuddy(lvRecent);
    lvRecent->setToolTip(tr("Double-click a theme to open it."));
    lblNoRecent->setForegroundRole(QPalette::PlaceholderText);
    cmdOpenExample->setVisible(m_hasExample);

    m_row->setSpacing(kBetween);
    for (StartButton *each : buttons())
        m_row->addWidget(each);
    m_column->setSpacing(kParts);
    m_column->addWidget(lblWelcome);
    m_column->addLayout(m_row);
    m_column->setAlignment(m_row, Qt::AlignLeft);
    m_column->addSpacing(kParts);
    m_column->addWidget(lblRecent);
    m_column->addWidget(lvRecent);
    m_column->addWidget(lblNoRecent);
    m_column->addStretch();
    for (StartButton *each : buttons())
        each->installEventFilter(this);
    setWidget(m_body);
    setWidgetResizable(true);
    connect(lvRecent, &RecentCards::leftUpwards, this, [this] { cmdOpenTheme->setFocus(); });
    connect(lvRecent->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &now) {
                const QPoint middle = lvRecent->visualRect(now).center();
                const QPoint at = lvRecent->viewport()->mapTo(m_body, middle);
                ensureVisible(at.x(), at.y(), 0, lvRecent->itemSize().height() / 2 + kMargin);
            });
    m_place.installEventFilter(this);
    setGeometry(m_place.geometry());
}

QList<StartButton *> StartPage::buttons() const
{
    QList<StartButton *> all = {cmdOpenTheme, cmdNewTheme};
    if (m_hasExample)
        all.append(cmdOpenExample);
    return all;
}

void StartPage::setRecent(const QStringList &folders)
{
    lvRecent->setThemes(folders);
    lvRecent->setVisible(!folders.isEmpty());
    lblNoRecent->setVisible(folders.isEmpty());
    layOut();
}

void StartPage::appear()
{
    setGeometry(m_place.geometry());
    layOut();
    show();
    raise();
    if (lvRecent->isVisible())
        lvRecent->setFocus(Qt::OtherFocusReason);
    else
        cmdOpenTheme->setFocus(Qt::OtherFocusReason);
}

void StartPage::layOut()
{
    enlarge(*lblWelcome, font(), kLarge);
    enlarge(*lblRecent, font(), kMedium);
    // Whether there is a scroll bar depends on the width, which must not depend on that.
    const int room = width() - verticalScrollBar()->sizeHint().width();
    const int used = std::clamp(room - 2 * kMargin, 200, kMost);
    const int side = std::max((room - used) / 2, kMargin);
    m_column->setContentsMargins(side, height() > 2 * kMost / 3 ? 2 * kMargin : kMargin,
                                 viewport()->width() - side - used - RecentCards::kBeyond, kMargin);
    const QList<StartButton *> all = buttons();
    const bool isNarrow = used < kNarrow;
    m_row->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    const int each = isNarrow ? used : (used - kBetween * (int(all.size()) - 1)) / int(all.size());
    int high = 0;
    for (const StartButton *one : all)
        high = std::max(high, one->heightForWidth(each));
    for (StartButton *one : all)
        one->setFixedSize(each, isNarrow ? one->heightForWidth(each) : high);
    lvRecent->setRoom(used);
}

void StartPage::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    layOut();
}

void StartPage::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_body)
        layOut();
}

// Arrow keys among the buttons, and down to the list.
bool StartPage::goOn(QObject *from, int key)
{
    const QList<StartButton *> all = buttons();
    const bool isColumn = m_row->direction() == QBoxLayout::TopToBottom;
    const int on = isColumn ? Qt::Key_Down : Qt::Key_Right, back = isColumn ? Qt::Key_Up : Qt::Key_Left;
    const qsizetype at = std::ranges::find(all, from) - all.begin();
    if (key != on && key != back && key != Qt::Key_Down && key != Qt::Key_Up)
        return false;
    const qsizetype next = at + (key == on ? 1 : key == back ? -1 : 0);
    if (next != at && next >= 0 && next < all.size())
        all[next]->setFocus(Qt::TabFocusReason);
    else if (key == Qt::Key_Down && lvRecent->isVisible())
        lvRecent->setFocus(Qt::TabFocusReason);
    return true;
}

bool StartPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_place && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        setGeometry(m_place.geometry());
    if (watched != &m_place && event->type() == QEvent::KeyPress)
        return goOn(watched, static_cast<QKeyEvent *>(event)->key());
    return QScrollArea::eventFilter(watched, event);
}

} // namespace quillmere
