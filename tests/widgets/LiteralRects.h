#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace literal {

// Rect after rect, a pass over the whole text for each; whole numbers only.
inline void rewriteRects(QString &text, const std::function<QStringList(QStringList)> &rewriting)
{
    const QStringList pieces = text.split(QStringLiteral("<rect>"));
    for (int i = 1; i < pieces.size(); ++i) {
        QString rect = pieces[i].section(QStringLiteral("</rect>"), 0, 0);
        if (!pieces[i].contains(QStringLiteral("</rect>")) || !rect.startsWith(u'['))
            continue;
        const QStringList parts = rect.mid(1).section(u']', 0, 0).split(u',');
        bool numbers = parts.size() >= 4;
        for (int n = 0; n < 4 && numbers; ++n)
            parts[n].toLongLong(&numbers);
        if (!numbers)
            continue;
        const QStringList old = parts.mid(0, 4);
        text.replace(QString(u"<rect>[" + old.join(u',') + u"]</rect>"),
                     QString(u"<rect>[" + rewriting(old).join(u',') + u"]</rect>"), Qt::CaseInsensitive);
    }
}

} // namespace literal
