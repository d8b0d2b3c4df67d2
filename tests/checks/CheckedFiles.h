#pragma once

#include "checks/ThemeCheck.h"
#include "files/TestFiles.h"

#include <QMap>

// A theme of a few files, by name, and what the checks say of it.
using ThemeFiles = QMap<QString, QByteArray>;

// Pictures of these themes are texts: "WxH", or anything else for one that is damaged.
inline quillmere::PictureReading readTextPicture(const QByteArray &bytes)
{
    const QList<QByteArray> size = bytes.trimmed().split('x');
    const QSize pixels(size.value(0).toInt(), size.value(1).toInt());
    return {pixels.isEmpty() ? QSize() : pixels, !pixels.isEmpty()};
}

// A line each: "FILE:LINE RULE NAME".
inline QStringList problemsOf(const ThemeFiles &theme)
{
    const TestFiles files;
    for (auto file = theme.cbegin(); file != theme.cend(); ++file)
        files.write(QStringLiteral("theme/") + file.key(), *file);
    quillmere::ThemeSources sources;
    sources.folder = files.path(QStringLiteral("theme"));
    quillmere::PictureStore pictures(readTextPicture);
    const auto index = quillmere::ThemeIndex::build(sources);
    QStringList lines;
    const quillmere::CheckedTheme checked = checkTheme(sources, *index, pictures).value();
    for (const quillmere::Problem &problem : checked.problems)
        lines.append(QStringLiteral("%1:%2 %3 %4")
                         .arg(problem.file.mid(sources.folder.size() + 1))
                         .arg(problem.line)
                         .arg(QLatin1String(textOf(problem.rule).id), problem.name));
    return lines;
}
