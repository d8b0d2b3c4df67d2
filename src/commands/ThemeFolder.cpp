#include "commands/ThemeFolder.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"

#include <QFileInfo>

namespace quillmere {

QString reasonAgainst(const QString &folder)
{
    if (!QFileInfo(folder).isDir())
        return u"there is no folder " + folder;
    const QString config = joinPath(folder, u"theme.xml");
    if (findFile(config).isEmpty())
        return u"there is no theme.xml in " + folder;
    try {
        LoadFile(config);
    } catch (const RunTimeError &error) {
        return error.message();
    }
    return {};
}

} // namespace quillmere
