#include "stage/forms/ReceiverView.h"

#include "asking/Talk.h"
#include "browser/PictureFile.h"
#include "browser/forms/PictureSizes.h"
#include "browser/forms/WebBrowser.h"
#include "controls/Commands.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "files/RunTimeError.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/ReceiverBar.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"

#include <QAction>
#include <QBuffer>
#include <QFileDialog>
#include <QImageReader>
#include <QSettings>

namespace quillmere {

namespace {

const QString kOn = QStringLiteral("receiver/on");
const QString kBackdrop = QStringLiteral("receiver/backdrop");
const QString kPicture = QStringLiteral("receiver/picture");

ReceiverOptions withTicks(ReceiverOptions options, const ViewOptions &view,
                          const QList<ListRows::Row> &lvBlock)
{
    options.cutsChildren = view.shown[ViewOptions::Overflow];
    for (const ListRows::Row &row : lvBlock) {
        if (row.checked)
            options.hiddenNames.insert(row.sub(1));
    }
    return options;
}

// As large as the screen, as the bytes of a picture file; empty, with the reason, where it is none.
QByteArray scaledPicture(const QString &path, QSize screen, QString &reason)
{
    const std::unique_ptr<QFile> file = openRegular(path, kLargestFile, reason);
    if (!file)
        return {};
    const QByteArray format = pixelFormat(*file);
    QImageReader reader(file.get(), format);
    const QSize size = format.isEmpty() ? QSize() : reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > kMostPixels) {
        reason = QObject::tr("This is not a picture.");
        return {};
    }
    reader.setScaledSize(screen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (const QImage picture = reader.read(); picture.isNull() || !picture.save(&buffer, "PNG"))
        reason = reader.errorString();
    return bytes;
}

} // namespace

ReceiverView::ReceiverView(SourceTab &tab, PreviewFrame &frame, const ThemeProject &theme, Talk &talk,
                           QObject *parent)
    : QObject(parent), m_tab(tab), m_frame(frame), m_theme(theme), m_talk(talk)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        if (m_isOn)
            m_tab.ShowPreview();
    });
    connect(&theme, &ThemeProject::loaded, this, &ReceiverView::onThemeLoaded);
    for (const ListRows *rows : {&theme.images.rows, &theme.lvColor, &theme.lvFont})
        follow(*rows, [this] { m_parts.reset(); });
    for (const ListRows *rows : {&theme.lvLang, &theme.LvBhs})
        follow(*rows, [this] { m_translated.clear(); });
    tab.setView([this] { return maker(); });
}

void ReceiverView::addCommands(Commands &menu, QWidget &window)
{
    m_toggle = menu.action("mnuReceiver");
    m_toggle->setShortcut(Qt::CTRL | Qt::Key_R);
    m_toggle->setToolTip(tr("Show the window as the receiver does (Ctrl+R)"));
    menu.on("mnuReceiver", [this] {
        QSettings().setValue(kOn, m_toggle->isChecked());
        turn(m_toggle->isChecked());
    });
    QAction *hidden = menu.action("mnuHidden");
    menu.on("mnuHidden", [this, hidden] {
        m_options.hiddenBlocks = hidden->isChecked();
        drawSoon();
    });
    window.addActions({m_toggle, hidden});

    m_bar = new ReceiverBar(m_frame, *m_toggle);
    connect(m_bar, &ReceiverBar::stateChosen, this, [this] {
        m_options.state = m_bar->state();
        drawSoon();
    });
    connect(m_bar, &ReceiverBar::languageChosen, this, &ReceiverView::drawSoon);
    connect(m_bar, &ReceiverBar::backdropChosen, this, [this] { m_talk.run([this] { chooseBackdrop(); }); });
    m_bar->setBackdrop(Backdrop(qBound(0, QSettings().value(kBackdrop).toInt(), int(Backdrop::Picture))));
    m_toggle->setChecked(QSettings().value(kOn, false).toBool());
    turn(m_toggle->isChecked());
}

QString ReceiverView::language() const
{
    return m_bar->language();
}

void ReceiverView::showLanguage(const QString &name)
{
    m_bar->chooseLanguage(name);
    if (!m_isOn)
        m_toggle->trigger();
}

void ReceiverView::turn(bool on)
{
    m_bar->showChoices(on);
    if (on == m_isOn)
        return;
    m_isOn = on;
    if (on)
        showGround();
    else
        m_frame.wb->setFonts({});
    m_tab.ShowPreview();
    emit switched();
}

ViewPage ReceiverView::maker()
{
    if (!m_isOn)
        return {};
    // Copies, as pages are made on other threads as well.
    return [theme = parts(), options = m_options](const QString &markup, const ViewOptions &view,
                                                  const QList<ListRows::Row> &lvBlock) {
        return receiverPage(Outline(markup), theme, withTicks(options, view, lvBlock));
    };
}

QString ReceiverView::shownText(const QString &source)
{
    const auto &translation = parts().translation;
    const QString text = translation ? translation(source) : QString();
    return text.isEmpty() ? source : text;
}

ReceiverTheme::Font ReceiverView::font(const QString &name)
{
    return parts().font(name);
}

std::optional<QList<Place>> ReceiverView::places(const Outline &outline) const
{
    if (!m_isOn)
        return {};
    QList<Place> places;
    const auto rect = [](const Box &box) {
        return QRectF(double(box.x), double(box.y), double(std::max<qint64>(box.w, 0)),
                      double(std::max<qint64>(box.h, 0)));
    };
    for (const ReceiverPlace &place :
         receiverPlaces(outline, withTicks(m_options, m_tab.options, m_tab.blocks.rows())))
        places.append({place.block, rect(place.box), rect(place.seen)});
    return places;
}

const ReceiverTheme &ReceiverView::parts()
{
    if (!m_parts) {
        ReceiverParts made = receiverParts(m_theme);
        if (!m_sizes)
            m_sizes = std::make_shared<PictureSizes>(m_theme.folder());
        made.theme.sizeOf = [sizes = m_sizes](const QString &path) { return sizes->of(path); };
        m_frame.wb->setFonts(made.fonts);
        m_parts = std::move(made.theme);
        m_translated.clear();
    }
    readTranslation();
    return *m_parts;
}

// Again where the file of the language was written since.
void ReceiverView::readTranslation()
{
    const QString name = m_bar->language();
    const FileState state = stateOf(languageFileOf(m_theme, name));
    const QString wanted = QStringLiteral("%1 %2 %3").arg(state.changed).arg(state.bytes).arg(name);
    if (m_translated == wanted)
        return;
    m_translated = wanted;
    m_parts->translation = {};
    try {
        if (!name.isEmpty())
            m_parts->translation = translationOf(m_theme, name);
    } catch (const RunTimeError &error) {
        m_talk.say(error.message());
    }
}

void ReceiverView::follow(const ListRows &rows, const std::function<void()> &forget)
{
    const auto changed = [this, forget] {
        forget();
        if (m_isOn)
            drawSoon();
    };
    connect(&rows, &ListRows::rowsInserted, this, changed);
    connect(&rows, &ListRows::rowsRemoved, this, changed);
    connect(&rows, &ListRows::dataChanged, this, changed);
    connect(&rows, &ListRows::modelReset, this, changed);
}

void ReceiverView::onThemeLoaded()
{
    m_sizes.reset();
    m_parts.reset();
    m_bar->setLanguages(languageNames(m_theme));
    if (m_isOn)
        showGround(); // the screen may be another one
}

void ReceiverView::chooseBackdrop()
{
    if (m_bar->backdrop() == Backdrop::Picture) {
        const QString path =
            QFileDialog::getOpenFileName(&m_frame, tr("Picture Behind the Window"),
                                         folderOf(QSettings().value(kPicture).toString()).toString(),
                                         tr("Pictures (*.png *.jpg *.jpeg *.bmp *.webp *.gif)"));
        if (path.isEmpty() || !takePicture(path)) {
            m_bar->setBackdrop(Backdrop(QSettings().value(kBackdrop).toInt()));
            return;
        }
        QSettings().setValue(kPicture, path);
    }
    QSettings().setValue(kBackdrop, int(m_bar->backdrop()));
    showGround();
    drawSoon();
}

bool ReceiverView::takePicture(const QString &path)
{
    QString reason;
    const QByteArray bytes = scaledPicture(path, m_frame.screenSize(), reason);
    if (bytes.isEmpty()) {
        m_talk.tell(tr("Picture Behind the Window"), tr("%1: %2").arg(path, reason), Talk::Icon::Critical);
        return false;
    }
    m_pictureUrl = m_frame.wb->setBackdrop(bytes);
    return true;
}

// A picture that has gone since it was chosen leaves the ground black, without a word at every start.
void ReceiverView::showGround()
{
    if (m_bar->backdrop() == Backdrop::Picture && m_pictureUrl.isEmpty()) {
        QString reason;
        const QByteArray bytes =
            scaledPicture(QSettings().value(kPicture).toString(), m_frame.screenSize(), reason);
        if (!bytes.isEmpty())
            m_pictureUrl = m_frame.wb->setBackdrop(bytes);
    }
    m_options.ground = groundOf(m_bar->backdrop(), m_frame.screenSize(), m_pictureUrl);
}

} // namespace quillmere
