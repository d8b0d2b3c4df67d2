#include "app/ThemeConverting.h"

#include "app/ThemeNames.h"
#include "asking/Talk.h"
#include "browser/forms/TextMeasurer.h"
#include "checks/forms/LiveCheck.h"
#include "checks/forms/ReadPicture.h"
#include "controls/Commands.h"
#include "files/RunTimeError.h"
#include "making/ThemeConversion.h"
#include "making/forms/frmConvertTheme.h"
#include "receiver/BlockText.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <QScopeGuard>
#include <QToolButton>

#include <chrono>
#include <future>

namespace quillmere {

namespace {

QString counted(qsizetype count, const QString &one, const QString &many)
{
    return count == 1 ? one : many.arg(count);
}

QString sizeText(const QSize &size)
{
    return QObject::tr("%1 x %2").arg(size.width()).arg(size.height());
}

QString fitText(const NoLongerFitting &found)
{
    if (found.pictures == 0 && found.texts == 0)
        return QObject::tr("All pictures and texts that fit their blocks now will fit them then.");
    return QObject::tr("No longer fitting their blocks: %1, %2. The Check tab will list them.")
        .arg(counted(found.pictures, QObject::tr("1 picture"), QObject::tr("%1 pictures")),
             counted(found.texts, QObject::tr("1 text"), QObject::tr("%1 texts")));
}

// The check of a whole theme tells nobody how far it is.
ThemeFacts factsOf(const ThemeSources &sources, const ThemeIndex &index, const MeasuredTheme &measured,
                   const Progress &progress)
{
    using namespace std::chrono_literals;
    std::stop_source stop;
    PictureStore pictures(readPicture);
    auto check = std::async(std::launch::async, [&] {
        return checkTheme(sources, index, pictures, stop.get_token(), {}, measured);
    });
    const auto end = qScopeGuard([&] { stop.request_stop(); });
    while (check.wait_for(10ms) != std::future_status::ready)
        tell(progress, 0, 0);
    return check.get()->facts;
}

} // namespace

ThemeConverting::ThemeConverting(const Parts &parts, Commands &menu, QWidget &window)
    : QObject(&window), m_parts(parts), m_window(window)
{
    menu.on("mnuConvertTheme", [this] { mnuConvertTheme_Click(); });
}

void ThemeConverting::mnuConvertTheme_Click()
{
    if (m_parts.theme.folder().isEmpty())
        throw RunTimeError(tr("Open a theme first."));
    const QString catalogue = m_parts.theme.widgets.document.path();
    if (catalogue.isEmpty())
        throw RunTimeError(tr("The theme.xml of this theme names no window catalogue."));
    if (!m_parts.index.index()) {
        m_parts.talk.say(tr("The theme is still being read."));
        return;
    }
    const QSize from = screenSize(m_parts.index.sources(), catalogue);
    const auto make = [this, from](const QSize &to) {
        bool made = false;
        m_parts.talk.run([&] { made = convert(from, to); });
        return made;
    };
    auto *dialog = new frmConvertTheme(from, make, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

struct ThemeConverting::Now
{
    ThemeSources sources;
    std::shared_ptr<const ThemeIndex> index;
    ReceiverParts parts;
};

std::shared_ptr<const TextMeasures> ThemeConverting::measured(const Now &now) const
{
    const auto measures = std::make_shared<TextMeasures>();
    m_parts.talk.runLong(tr("Measuring the texts"), [&](const Progress &progress) {
        const QList<SetText> texts =
            textsToMeasure(now.sources, *now.index, {now.parts.theme.font, nullptr}, progress);
        *measures = TextMeasurer(now.sources.folder, now.parts.fonts, textSheet()).measure(texts, progress);
    });
    return measures;
}

NoLongerFitting ThemeConverting::checked(const ThemeConversion &conversion, const Now &now,
                                         const std::shared_ptr<const TextMeasures> &measures) const
{
    NoLongerFitting found;
    const MeasuredTheme texts{now.parts.theme.font, measures};
    m_parts.talk.runLong(tr("Checking what fits"), [&](const Progress &progress) {
        found = noLongerFitting(conversion, *now.index, factsOf(now.sources, *now.index, texts, progress),
                                progress);
    });
    return found;
}

bool ThemeConverting::convert(const QSize &from, const QSize &to)
{
    const Now now{m_parts.index.sources(), m_parts.index.sharedIndex(), receiverParts(m_parts.theme)};
    if (!now.index)
        throw RunTimeError(tr("The theme is still being read."));
    ThemeConversion conversion;
    m_parts.talk.runLong(tr("Converting the windows"), [&](const Progress &progress) {
        conversion =
            convertedTheme(now.sources, *now.index, m_parts.theme.widgets.document.path(), to, progress);
    });
    const auto measures = measured(now);
    const NoLongerFitting found = checked(conversion, now, measures);
    QStringList lines = {
        counted(conversion.windows.size(), tr("Convert 1 window"), tr("Convert %1 windows")) +
            tr(" from %1 to %2?").arg(sizeText(from), sizeText(to)),
        QString(), fitText(found)};
    if (conversion.missing > 0)
        lines.append(counted(conversion.missing, tr("1 window has no document that can be read."),
                             tr("%1 windows have no document that can be read.")));
    if (conversion.kept > 0)
        lines.append(counted(conversion.kept, tr("1 rect that is not four numbers stays as it is."),
                             tr("%1 rects that are not four numbers stay as they are.")));
    if (!m_parts.talk.ask(tr("Convert Theme"), lines.join(u'\n')))
        return false;
    const QString done = counted(conversion.windows.size(), tr("1 window is"), tr("%1 windows are")) +
                         tr(" made for %1 now. %2").arg(sizeText(to), fitText(found));
    if (!m_parts.names.changes.make(conversion.edit, done, tr("Undo Convert Theme")))
        return false;
    m_parts.check.setMeasures(measures, [&theme = m_parts.theme] { return receiverParts(theme).theme.font; });
    if (!conversion.windows.isEmpty()) // once the dialog is gone
        QMetaObject::invokeMethod(&m_parts.changes, &QToolButton::click, Qt::QueuedConnection);
    return true;
}

} // namespace quillmere
