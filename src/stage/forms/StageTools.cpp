#include "stage/forms/StageTools.h"

#include "asking/Talk.h"
#include "browser/PictureFile.h"
#include "browser/forms/WebBrowser.h"
#include "catalogues/forms/ScaledPicture.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "files/Paths.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/StageOverlay.h"
#include "stage/forms/UnseenHint.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"

#include <QAction>
#include <QFileInfo>
#include <QSettings>
#include <QShortcut>

namespace quillmere {

namespace {

// Pixels; invalid for what is no picture of the theme.
QSize sizeOfPicture(const ThemeProject &theme, const QString &name)
{
    const QString found = findFile(theme.images.GetImg(name));
    if (found.isEmpty() || theme.folder().isEmpty() || !liesBelow(found, theme.folder()))
        return {};
    const std::unique_ptr<QFile> file = openPicture(QFileInfo(found).canonicalFilePath());
    return file ? readScaled(*file, QSize(1, 1)).size : QSize();
}

} // namespace

StageTools::StageTools(Stage &stage, SourceTab &tab, PreviewFrame &frame, const ThemeProject &theme,
                       Talk &talk, QWidget &window)
    : QObject(&window), receiver(tab, frame, theme, talk), textInPlace(stage, frame, receiver, talk),
      translations(*tab.txtSnippet), m_tab(tab), m_frame(frame), m_window(window),
      m_picture(*new Picture(stage, tab, frame, talk, this)), m_link(stage, tab), m_rulers(frame, this),
      m_properties(stage, m_link, tab, {theme.lvFont, theme.images.rows, theme.lvColor}, window),
      m_arrange(
          stage, m_link, m_picture, [&theme](const QString &name) { return sizeOfPicture(theme, name); },
          talk)
{
    stage.setPlaces([this](const Outline &outline) { return receiver.places(outline); });
    m_picture.gestures.targets = [this, &theme] {
        SnapTargets targets;
        const TwipSize screen = browserSize(screenOfTheme(theme.widgets.width, theme.widgets.height), true);
        targets.screen = {toPixels(screen.width), toPixels(screen.height)};
        targets.grid = m_arrange.grid();
        targets.columns = m_rulers.columns();
        targets.rows = m_rulers.rows();
        for (int row = 0; row < m_tab.blocks.count(); ++row) {
            if (m_tab.blocks.isChecked(row))
                targets.hidden.append(row);
        }
        return targets;
    };
    connect(&textInPlace, &TextInPlace::translated, &translations, &TranslationSteps::note);
    connect(&textInPlace, &TextInPlace::translated, &m_picture.commands, &PictureCommands::endRun);
    const auto elsewhere = [this, &talk](bool (TranslationSteps::*step)(), const QString &done) {
        return [this, &talk, step, done] {
            const bool is = (translations.*step)();
            if (is)
                talk.say(done);
            return is;
        };
    };
    m_picture.commands.stepsBackElsewhere = elsewhere(&TranslationSteps::stepBack, tr("Translation undone."));
    m_picture.commands.stepsForwardElsewhere =
        elsewhere(&TranslationSteps::stepForward, tr("Translation redone."));
    new UnseenHint(stage, tab, receiver, talk, this);
    connect(&m_picture, &Picture::blockOpened, &m_properties, &PropertiesLink::open);
    connect(&m_picture.commands, &PictureCommands::sourceWanted, this, &StageTools::sourceWanted);
    connect(&m_properties, &PropertiesLink::sourceWanted, this, &StageTools::sourceWanted);
    auto *escape = new QShortcut(Qt::Key_Escape, tab.lvBlock);
    escape->setContext(Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, &m_picture, &Picture::escape);
}

void StageTools::setEndsAlone(const std::function<bool()> &ends)
{
    m_picture.endsAlone = ends;
}

void StageTools::addCommands(Commands &menu)
{
    m_link.addCommands(menu, m_window);
    m_rulers.addCommands(menu, m_window);
    m_properties.addCommands(menu);
    m_arrange.addCommands(menu, {m_tab.lvBlock, m_frame.wb});
    receiver.addCommands(menu, m_window);
    textInPlace.addCommand({m_tab.lvBlock, m_frame.wb});
    addSafeArea(menu, "mnuActionSafe", 0.93);
    addSafeArea(menu, "mnuTitleSafe", 0.9);
}

// A frame over the picture, in both views; the page has nothing of it.
void StageTools::addSafeArea(Commands &menu, const char *name, double part)
{
    QAction *item = menu.action(name);
    const QString setting = u"stage/" + QString::fromLatin1(name).sliced(3);
    const auto show = [this, item, part] { m_picture.overlay->showFrame(part, item->isChecked()); };
    item->setChecked(QSettings().value(setting, false).toBool());
    m_window.addAction(item);
    menu.on(name, [item, setting, show] {
        QSettings().setValue(setting, item->isChecked());
        show();
    });
    show();
}

} // namespace quillmere
