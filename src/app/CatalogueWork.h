#pragma once

#include "catalogues/forms/ImageViews.h"

namespace quillmere {

class Files;
class ImageTab;
class OutsideChanges;
class SourceTab;
class Talk;
class ThemeProject;

// What the Image tab has beside its list and its panel, and what that goes by.
class ImageWork : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ImageTab &tab;
        SourceTab &source;
        ThemeProject &theme;
        OutsideChanges &outside;
        Files &files;
        Talk &talk;
    };
    ImageWork(const Parts &parts, Commands &menu, QWidget &window);

private:
    ImageViews m_views;
};

} // namespace quillmere
