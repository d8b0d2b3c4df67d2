#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QThreadPool>

namespace quillmere {

class OverviewRows;
class ThemeProject;

// What is known of a theme that is not open.
struct ClosedTheme
{
    bool isThere = true;
    QImage picture; // of its first window; null where it was never drawn
};
// Looks at the disk, which may take its time: to be called beside the window's thread.
ClosedTheme closedTheme(const QString &folder);

// Keeps a picture of each theme in the person's cache folder: of its first window, as the overview drew it
// last.
class ThemePictures : public QObject
{
    Q_OBJECT

public:
    // `rows` are those of the overview.
    ThemePictures(const ThemeProject &theme, const OverviewRows &rows, QObject *parent);

    // The file of a theme's picture; it need not be there.
    static QString fileOf(const QString &folder);

private:
    void keep();

    const ThemeProject &m_theme;
    const OverviewRows &m_rows;
    QHash<QString, QByteArray> m_kept; // by folder: the mark of the picture
    QThreadPool m_worker;              // waits for the one under way when it goes
};

} // namespace quillmere
