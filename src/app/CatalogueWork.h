#pragma once

#include "catalogues/forms/ImageViews.h"

#include <QThreadPool>

namespace quillmere {

class Files;
class FontTab;
class ImageTab;
class OutsideChanges;
class SourceTab;
class Talk;
class ThemeProject;

// What the Image and Font tabs have beside their lists, and what that goes by.
class CatalogueWork : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ImageTab &images;
        FontTab &fonts;
        SourceTab &source;
        ThemeProject &theme;
        OutsideChanges &outside;
        Files &files;
        Talk &talk;
    };
    CatalogueWork(const Parts &parts, Commands &menu, QWidget &window);
    ~CatalogueWork() override; // waits for the letters

private:
    void themeLoaded();
    void findLetters();

    Parts m_parts;
    ImageViews m_views;
    bool m_hasLetters = false; // of the theme's languages, or looks for them
    int m_theme = 0;           // counts themes that were loaded
    QThreadPool m_worker;
};

} // namespace quillmere
