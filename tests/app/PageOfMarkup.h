#pragma once

#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"
#include "rows/ListRows.h"

// The page that the preview makes of a window's markup, without pictures.
inline QString pageOfMarkup(const QString &markup)
{
    quillmere::ListRows blocks({QString(), QString()}), fonts({QString()});
    const auto noImages = [](const QString &) { return QString(); };
    return quillmere::BuildPreviewPage(quillmere::BuildWidgetHtml(markup, noImages, fonts, blocks), {}, {},
                                       blocks);
}
