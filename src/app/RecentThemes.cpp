#include "app/RecentThemes.h"

#include <QMenu>
#include <QSettings>

namespace quillmere {

namespace {
constexpr int kMost = 10;
const QString kKey = QStringLiteral("recentThemes");
} // namespace

RecentThemes::RecentThemes(QMenu &menu, std::function<void(const QString &)> open)
    : m_menu(menu), m_open(std::move(open))
{
    fill();
}

void RecentThemes::add(const QString &folder)
{
    QStringList recent = folders();
    recent.removeAll(folder);
    recent.prepend(folder);
    QSettings().setValue(kKey, recent.mid(0, kMost));
    fill();
}

void RecentThemes::remove(const QString &folder)
{
    QStringList recent = folders();
    recent.removeAll(folder);
    QSettings().setValue(kKey, recent);
    fill();
}

QStringList RecentThemes::folders()
{
    return QSettings().value(kKey).toStringList();
}

void RecentThemes::fill()
{
    m_menu.clear();
    const QStringList recent = folders();
    for (const QString &folder : recent)
        m_menu.addAction(QString(folder).replace(u'&', QLatin1String("&&")), &m_menu,
                         [this, folder] { m_open(folder); });
    m_menu.setEnabled(!recent.isEmpty());
}

} // namespace quillmere
