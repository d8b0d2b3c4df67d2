#include "app/ImageWork.h"

#include "catalogues/forms/ImageTab.h"
#include "controls/ListView.h"
#include "files/Files.h"
#include "keeping/forms/OutsideChanges.h"
#include "theme/ThemeProject.h"

namespace quillmere {

ImageWork::ImageWork(const Parts &parts, Commands &menu, QWidget &window)
    : QObject(&window), m_views(*parts.tab.findChild<ListView *>(QStringLiteral("lvImage")))
{
    Thumbnails &thumbnails = m_views.thumbnails;
    connect(&parts.theme, &ThemeProject::loaded, this,
            [&thumbnails, &theme = parts.theme] { thumbnails.setThemeFolder(theme.folder()); });
    connect(&parts.outside, &OutsideChanges::looked, &thumbnails, &Thumbnails::changed);
    parts.files.onWritten(this, [&thumbnails](const QString &) { thumbnails.changed(); });
    m_views.addCommands(menu);
}

} // namespace quillmere
