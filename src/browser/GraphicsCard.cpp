#include "browser/GraphicsCard.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace quillmere {

// Most cards have a node below "dri"; those of one maker have theirs beside it, and a Linux that is the guest
// of Windows has one for all.
bool hasGraphicsCard([[maybe_unused]] const QString &devices)
{
#ifdef Q_OS_LINUX
    const QDir here(devices);
    const auto lists = [](const QDir &folder, const QStringList &names) {
        return !folder.entryList(names, QDir::System | QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)
                    .isEmpty();
    };
    return lists(here, {QStringLiteral("nvidia*"), QStringLiteral("dxg")}) ||
           lists(QDir(here.filePath(QStringLiteral("dri"))),
                 {QStringLiteral("card*"), QStringLiteral("renderD*")});
#else
    return true;
#endif
}

bool drawsWithProcessor(const QByteArray &renderer)
{
    static constexpr std::array words = {"llvmpipe", "softpipe", "swrast", "software"};
    const QByteArray name = renderer.toLower();
    return std::ranges::any_of(words, [&](const char *word) { return name.contains(word); });
}

} // namespace quillmere
