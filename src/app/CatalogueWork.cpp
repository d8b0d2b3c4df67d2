#include "app/CatalogueWork.h"

#include "catalogues/forms/FontTab.h"
#include "catalogues/forms/FontView.h"
#include "catalogues/forms/ImageTab.h"
#include "catalogues/forms/PictureDrops.h"
#include "controls/ListView.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "keeping/forms/OutsideChanges.h"
#include "source/forms/SourceBox.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"

#include <utility>

namespace quillmere {

namespace {

ListView &listOf(const QWidget &tab)
{
    return *tab.findChild<ListView *>(QStringLiteral("lvImage"));
}

} // namespace

CatalogueWork::CatalogueWork(const Parts &parts, Commands &menu, QWidget &window)
    : QObject(&window), m_parts(parts), m_views(listOf(parts.images))
{
    m_worker.setMaxThreadCount(1);
    auto *drops =
        new PictureDrops(parts.theme.images, listOf(parts.images), parts.images, parts.files, parts.talk);
    drops->addCommands(menu);
    connect(drops, &PictureDrops::changed, this,
            [&source = parts.source] { source.BuildWidgetHtml(source.txtSnippet->text()); });
    m_views.addCommands(menu);

    Thumbnails &thumbnails = m_views.thumbnails;
    connect(&parts.outside, &OutsideChanges::looked, &thumbnails, &Thumbnails::changed);
    parts.files.onWritten(this, [&thumbnails](const QString &) { thumbnails.changed(); });
    connect(&parts.theme, &ThemeProject::loaded, this, &CatalogueWork::themeLoaded);
    connect(parts.fonts.sample, &FontView::wantsLetters, this, &CatalogueWork::findLetters);
}

CatalogueWork::~CatalogueWork()
{
    m_worker.waitForDone();
}

void CatalogueWork::themeLoaded()
{
    const ThemeProject &theme = m_parts.theme;
    m_views.thumbnails.setThemeFolder(theme.folder());
    m_parts.fonts.sample->setTheme(theme.folder(), folderOf(theme.fontFile.path()).toString());
    m_parts.fonts.sample->setLetters({});
    m_hasLetters = false;
    ++m_theme;
}

// All that its language files say, not only their translations: what else stands there is English.
void CatalogueWork::findLetters()
{
    if (std::exchange(m_hasLetters, true))
        return;
    QStringList files;
    for (const QString &name : languageNames(m_parts.theme))
        files.append(languageFileOf(m_parts.theme, name));
    files.removeDuplicates();
    m_worker.start([this, files, theme = m_theme, rule = m_parts.theme.rule] {
        UsedLetters letters;
        for (const QString &file : files) {
            try {
                letters.add(LoadFile(file, rule));
            } catch (const RunTimeError &) {
                // The tab of the languages says why.
            }
        }
        const auto hand = [this, theme, lines = letters.lines()] {
            if (theme == m_theme)
                m_parts.fonts.sample->setLetters(lines);
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

} // namespace quillmere
