#include "gallery/WindowPage.h"

#include "browser/PictureUrls.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "receiver/BlockLook.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QSet>

namespace quillmere {

namespace {

// The first block that is drawn; a window begins with its own.
qint32 windowOf(const Outline &outline)
{
    for (const qint32 block : outline.blocks()) {
        const Element &element = outline.element(block);
        if (!element.inComment && !element.inSignal && element.kind == Kind::Widget &&
            rectOfBlock(outline, block))
            return block;
    }
    return -1;
}

bool isHiddenWindow(const Outline &outline)
{
    const qint32 window = windowOf(outline);
    return window >= 0 && BlockLook(outline, window).isHidden();
}

} // namespace

ReceiverOptions withWindowShown(const Outline &outline, const ReceiverOptions &options)
{
    ReceiverOptions shown = options;
    shown.hiddenBlocks |= isHiddenWindow(outline);
    return shown;
}

WindowPage windowPage(const WindowSource &source, const ReceiverTheme &theme, const QString &themeFolder,
                      const ReceiverOptions &options)
{
    WindowPage made;
    const QString found = findFile(source.path);
    made.hasDocument = !found.isEmpty() || source.text;
    if (!made.hasDocument)
        return made;
    if (!found.isEmpty())
        made.files.append(found);
    const qint64 size = source.text ? source.text->size() : QFileInfo(found).size();
    if (size > kLargestInGallery) {
        made.reason = QStringLiteral("too large to be drawn here");
        return made;
    }
    QString text;
    try {
        text = source.text ? *source.text : LoadFile(found, source.rule);
    } catch (const RunTimeError &error) {
        made.reason = error.message();
        return made;
    }
    const Outline outline(text);
    if (const qint32 window = windowOf(outline); window >= 0)
        made.place = BlockLook(outline, window).rect();
    made.isHidden = isHiddenWindow(outline);
    ReceiverTheme noted = theme;
    QSet<QString> known;
    noted.picture = [&](const QString &id) {
        const QString path = theme.picture(id);
        if (!path.isEmpty() && !known.contains(path)) {
            known.insert(path);
            made.files.append(path);
        }
        return path;
    };
    made.page = receiverPage(outline, noted, withWindowShown(outline, options));
    made.mark =
        QCryptographicHash::hash(withPictureUrls(made.page, themeFolder).toUtf8(), QCryptographicHash::Sha1);
    return made;
}

} // namespace quillmere
