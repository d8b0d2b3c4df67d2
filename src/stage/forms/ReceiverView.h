#pragma once

#include "preview/forms/LateRender.h"
#include "receiver/ReceiverPage.h"
#include "stage/Hits.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class QAction;

namespace quillmere {

class Commands;
class Outline;
class PictureSizes;
class PreviewFrame;
class ReceiverBar;
class SourceTab;
class Talk;
class ThemeProject;

// The second view of the picture: as the receiver shows the window, from the catalogues as they stand now.
class ReceiverView : public QObject
{
    Q_OBJECT

public:
    ReceiverView(SourceTab &tab, PreviewFrame &frame, const ThemeProject &theme, Talk &talk,
                 QObject *parent = nullptr);

    void addCommands(Commands &menu, QWidget &window);

    bool isOn() const { return m_isOn; }
    // Whether blocks that their state hides are left out.
    bool hidesByState() const { return m_isOn && !m_options.hiddenBlocks; }
    // As the catalogue names it; empty for the texts as they are written.
    QString language() const;
    // Shows the picture in this view and language, where the theme has it.
    void showLanguage(const QString &name);
    // What the view shows for a string.
    QString shownText(const QString &source);
    // The font of the catalogue's row of this name, or of the one that stands in for it.
    ReceiverTheme::Font font(const QString &name);
    // Where the page of this outline draws its blocks; nothing in the other view.
    std::optional<QList<Place>> places(const Outline &outline) const;

signals:
    // The other view is there.
    void switched();

private:
    void turn(bool on);
    ViewPage maker();
    const ReceiverTheme &parts();
    void readTranslation();
    void follow(const ListRows &rows, const std::function<void()> &forget);
    void onThemeLoaded();
    void drawSoon() { m_soon.start(); }
    void chooseBackdrop();
    bool takePicture(const QString &path);
    void showGround();

    SourceTab &m_tab;
    PreviewFrame &m_frame;
    const ThemeProject &m_theme;
    Talk &m_talk;
    ReceiverBar *m_bar = nullptr;
    QAction *m_toggle = nullptr;
    bool m_isOn = false;
    ReceiverOptions m_options;
    std::optional<ReceiverTheme> m_parts; // until the rows they were made from change
    std::shared_ptr<PictureSizes> m_sizes;
    QString m_translated; // the language that the parts are in, with the state of its file
    QString m_pictureUrl; // of the backdrop; empty until it is read
    QTimer m_soon;        // rows change many at a time
};

} // namespace quillmere
