#include "app/Looks.h"

#include "app/MenuIcons.h"
#include "controls/ClearStyle.h"
#include "controls/Commands.h"
#include "controls/ReadableColours.h"

#include <QActionGroup>
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QSettings>
#include <QStyleFactory>
#include <QTimer>
#include <QToolTip>

namespace quillmere {

namespace {

const QString kSetting = QStringLiteral("window/scheme");
constexpr float kDim = 0.25F; // of the colour of a selection
const QString kFusion = QStringLiteral("fusion");

const struct
{
    Scheme scheme;
    const char *item;
    const char *written; // in the settings
} kSchemes[] = {{Scheme::Light, "mnuLight", "light"},
                {Scheme::Dark, "mnuDark", "dark"},
                {Scheme::Desktop, "mnuAsDesktop", "desktop"}};

} // namespace

Looks::Looks(Commands &menu, QMainWindow &window)
    : QObject(&window), m_menu(menu), m_desktopStyle(QApplication::style()->name()),
      m_desktopTips(QToolTip::palette()),
      m_isDimmed(QApplication::palette().color(QPalette::Inactive, QPalette::Highlight) ==
                 QApplication::palette().color(QPalette::Active, QPalette::Highlight))
{
    const QString chosen = QSettings().value(kSetting).toString();
    for (const auto &known : kSchemes) {
        if (chosen == QLatin1String(known.written))
            m_scheme = known.scheme;
    }
    auto *group = new QActionGroup(this);
    for (const auto &known : kSchemes) {
        QAction *item = menu.action(known.item);
        group->addAction(item);
        item->setChecked(known.scheme == m_scheme);
        window.addAction(item); // for the tabs that have no View menu
        menu.on(known.item, [this, scheme = known.scheme] { choose(scheme); });
    }
    apply(m_scheme);
    window.installEventFilter(this);
}

void Looks::choose(Scheme scheme)
{
    for (const auto &known : kSchemes) {
        if (known.scheme == scheme)
            QSettings().setValue(kSetting, QLatin1String(known.written));
    }
    if (scheme == m_scheme)
        return;
    m_scheme = scheme;
    apply(scheme);
}

// A desktop's own style knows its own colours only; fixed ones have the style that takes any.
void Looks::apply(Scheme scheme)
{
    const bool fixed = scheme != Scheme::Desktop;
    const QString style = fixed ? kFusion : m_desktopStyle;
    const bool isClear = qobject_cast<ClearStyle *>(QApplication::style());
    if (style.compare(kFusion, Qt::CaseInsensitive) == 0 && !isClear)
        QApplication::setStyle(new ClearStyle);
    else if (style.compare(kFusion, Qt::CaseInsensitive) != 0 && QApplication::style()->name() != style)
        QApplication::setStyle(QStyleFactory::create(style));
    QApplication::setPalette(fixed ? paletteOf(scheme) : QPalette());
    QToolTip::setPalette(fixed ? paletteOf(scheme) : m_desktopTips);
    if (!fixed)
        mendDesktop();
    showMenuIcons(m_menu, fixed);
}

// What the desktop's colours leave to be wished: placeholders and selected text that are read, and selections
// that are bright only where the keyboard is.
void Looks::mendDesktop()
{
    const QPalette now = QApplication::palette();
    QPalette own = readablePlaceholders(now);
    const QColor highlight =
        readableGround(now.color(QPalette::Highlight), now.color(QPalette::HighlightedText));
    own.setColor(QPalette::Active, QPalette::Highlight, highlight);
    if (m_isDimmed) {
        const QColor dim = mixed(highlight, now.color(QPalette::Base), kDim);
        own.setColor(QPalette::Inactive, QPalette::Highlight, dim);
        own.setColor(QPalette::Inactive, QPalette::HighlightedText, now.color(QPalette::Text));
    }
    if (own.color(QPalette::PlaceholderText) != now.color(QPalette::PlaceholderText) ||
        highlight != now.color(QPalette::Highlight) ||
        own.color(QPalette::Inactive, QPalette::Highlight) !=
            now.color(QPalette::Inactive, QPalette::Highlight))
        QApplication::setPalette(own);
}

bool Looks::eventFilter(QObject *watched, QEvent *event)
{
    // The desktop has other colours now, and the placeholders on them are to be read.
    if (event->type() == QEvent::ApplicationPaletteChange && m_scheme == Scheme::Desktop)
        QTimer::singleShot(0, this, [this] {
            if (m_scheme == Scheme::Desktop)
                mendDesktop();
        });
    return QObject::eventFilter(watched, event);
}

} // namespace quillmere
