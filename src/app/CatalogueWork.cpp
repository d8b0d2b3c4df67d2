#include "app/ImageWork.h"

#include "catalogues/forms/ImageTab.h"
#include "catalogues/forms/PictureDrops.h"
#include "controls/ListView.h"
#include "files/Files.h"
#include "keeping/forms/OutsideChanges.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"

namespace quillmere {

ImageWork::ImageWork(const Parts &parts, Commands &menu, QWidget &window)
    : QObject(&window), m_views(*parts.tab.findChild<ListView *>(QStringLiteral("lvImage")))
{
    auto *drops =
        new PictureDrops(parts.theme.images, *parts.tab.findChild<ListView *>(QStringLiteral("lvImage")),
                         parts.tab, parts.files, parts.talk);
    drops->addCommands(menu);
    connect(drops, &PictureDrops::changed, this,
            [&source = parts.source] { source.BuildWidgetHtml(source.txtSnippet->text()); });
    Thumbnails &thumbnails = m_views.thumbnails;
    connect(&parts.theme, &ThemeProject::loaded, this,
            [&thumbnails, &theme = parts.theme] { thumbnails.setThemeFolder(theme.folder()); });
    connect(&parts.outside, &OutsideChanges::looked, &thumbnails, &Thumbnails::changed);
    parts.files.onWritten(this, [&thumbnails](const QString &) { thumbnails.changed(); });
    m_views.addCommands(menu);
}

} // namespace quillmere
