#include "naming/forms/NameFacts.h"

#include "files/Paths.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <utility>

namespace quillmere {

NameFacts::NameFacts(const ThemeProject &theme, const LiveIndex &live, QObject *parent)
    : QObject(parent), m_theme(theme), m_live(live)
{
    m_worker.setMaxThreadCount(1);
    connect(&live, &LiveIndex::changed, this, [this] { m_isOld = true; });
}

NameFacts::~NameFacts()
{
    m_worker.clear();
    m_worker.waitForDone();
}

QString NameFacts::themeFolder() const
{
    return m_theme.folder();
}

QString NameFacts::pathOf(const QString &image) const
{
    return m_theme.images.GetImg(image);
}

QString NameFacts::codeOf(const QString &colour) const
{
    const QString code = m_theme.colours.GetColor(colour);
    const QString &meant = code.isEmpty() && colour.startsWith(u'#') ? colour : code;
    return channelsOf(meant) ? meant : QString();
}

std::optional<NameFacts::Font> NameFacts::font(const QString &name) const
{
    for (const ListRows::Row &row : m_theme.lvFont.rows()) {
        if (row.sub(1) == name)
            return Font{row.sub(2), row.sub(3), row.sub(4),
                        folderOf(m_theme.fontFile.path()) + withOwnSeparators(row.sub(2))};
    }
    return std::nullopt;
}

bool NameFacts::isListed(const QString &window) const
{
    return m_live.index() && m_live.index()->isUsed(NameKind::Window, window);
}

const Translations &NameFacts::translations()
{
    if (m_isOld && !m_reading)
        readTranslations();
    return m_translations;
}

void NameFacts::readTranslations()
{
    m_isOld = false;
    m_reading = true;
    QList<Translations::Language> languages;
    for (const ListRows::Row &row : m_theme.lvLang.rows())
        languages.append({row.sub(1), row.text});
    const auto work = [this, languages, sources = m_live.sources(), before = m_translations] {
        const Translations read = Translations::read(sources, languages, before);
        const auto take = [this, read] {
            m_translations = read;
            m_reading = false;
            emit translationsArrived();
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    };
    m_worker.start(work);
}

} // namespace quillmere
