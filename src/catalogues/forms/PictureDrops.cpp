#include "catalogues/forms/PictureDrops.h"

#include "asking/Talk.h"
#include "browser/PictureFile.h"
#include "catalogues/forms/ScaledPicture.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "files/Paths.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QRubberBand>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr int kMostTold = 15; // problems in one message

// Names come from other programs: one line, and not longer than one.
QString shown(const QString &name)
{
    constexpr int most = 100;
    QString plain = name.size() > most ? QString(name.first(most) + u'\u2026') : name;
    std::replace_if(
        plain.begin(), plain.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); },
        QChar(QChar::ReplacementCharacter));
    return plain;
}

} // namespace

PictureDrops::PictureDrops(ImageCatalogue &images, ListView &list, QWidget &tab, Files &files, Talk &talk)
    : QObject(&tab), m_images(images), m_list(list), m_files(files), m_talk(talk),
      m_mark(new QRubberBand(QRubberBand::Rectangle, &tab))
{
    tab.setAcceptDrops(true);
    tab.installEventFilter(this);
    auto *paste = new QAction(tr("Paste Pictures"), this);
    paste->setObjectName(QStringLiteral("mnuRowsPaste"));
    paste->setShortcut(QKeySequence::Paste);
    paste->setShortcutContext(Qt::WidgetShortcut);
    list.addAction(paste);
    connect(paste, &QAction::triggered, this, [this] { m_talk.run([this] { this->paste(); }); });
}

void PictureDrops::addCommands(Commands &menu)
{
    menu.on("mnuImgReplace", [this] { mnuImgReplace_Click(); });
}

bool PictureDrops::hasPictures(const QMimeData &data)
{
    return data.hasUrls() || data.hasImage();
}

PictureDrops::Coming PictureDrops::picturesIn(const QMimeData &data)
{
    Coming coming;
    bool isElsewhere = false;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            coming.files.append(url.toLocalFile());
        else
            isElsewhere = true;
    }
    // Browsers give the picture beside the address it has in the network.
    if (coming.files.isEmpty() && data.hasImage())
        coming.picture = qvariant_cast<QImage>(data.imageData());
    else if (isElsewhere)
        for (const QUrl &url : data.urls())
            if (!url.isLocalFile())
                coming.files.append(url.toDisplayString());
    return coming;
}

bool PictureDrops::eventFilter(QObject *watched, QEvent *event)
{
    auto *tab = static_cast<QWidget *>(watched);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        if (drop->source() || !hasPictures(*drop->mimeData()))
            return false;
        // The files stay where they are, whatever the other program would rather.
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        m_mark->setGeometry({m_list.mapTo(tab, QPoint()), m_list.size()});
        m_mark->setVisible(event->type() != QEvent::Drop);
        m_mark->raise();
        if (event->type() == QEvent::Drop)
            takeLater(*drop->mimeData());
        return true;
    }
    case QEvent::DragLeave:
    case QEvent::Hide:
        m_mark->hide();
        return false;
    default:
        return false;
    }
}

// Questions would keep the other program waiting, and its data is there only now.
void PictureDrops::takeLater(const QMimeData &data)
{
    QMetaObject::invokeMethod(
        this, [this, coming = picturesIn(data)] { m_talk.run([&] { take(coming); }); }, Qt::QueuedConnection);
}

void PictureDrops::paste()
{
    const QMimeData *data = QApplication::clipboard()->mimeData();
    if (!data || !hasPictures(*data))
        m_talk.say(tr("There are neither files nor a picture on the clipboard."));
    else
        take(picturesIn(*data));
}

void PictureDrops::take(const Coming &coming)
{
    PictureIntake intake(m_images, m_files, whyNoPicture);
    QList<ComingPicture> pictures = look(intake, coming);
    askForNames(intake, pictures);
    bring(intake, pictures);
}

QList<ComingPicture> PictureDrops::look(const PictureIntake &intake, const Coming &coming)
{
    QList<ComingPicture> pictures;
    if (!coming.picture.isNull()) {
        if (qint64(coming.picture.width()) * coming.picture.height() > kMostPixels) {
            m_talk.say(tr("The picture on the clipboard is too large."));
            return {};
        }
        std::optional<QString> name =
            m_talk.input(tr("Paste Picture"), tr("Name of the new picture:"), QStringLiteral("picture.png"));
        if (!name || name->isEmpty())
            return {};
        if (!name->endsWith(u".png", Qt::CaseInsensitive))
            *name += u".png";
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        coming.picture.save(&bytes, "PNG");
        return {intake.fromBytes(bytes.data(), *name)};
    }
    m_talk.runLong(tr("Looking at the pictures"), [&](const Progress &progress) {
        for (const QString &file : coming.files) {
            quillmere::tell(progress, pictures.size(), coming.files.size());
            pictures.append(intake.fromFile(file));
        }
    });
    return pictures;
}

void PictureDrops::askForNames(PictureIntake &intake, QList<ComingPicture> &pictures)
{
    bool skipsAll = false, hasSkipped = false;
    for (auto picture = pictures.begin(); picture != pictures.end(); ++picture) {
        if (!picture->problem.isEmpty())
            continue;
        // Those that came before have taken names meanwhile.
        if (!picture->isTaken)
            intake.rename(*picture, picture->isThere ? picture->id : picture->name);
        if (picture->isTaken && !skipsAll && !askForName(intake, *picture)) {
            const auto others = std::count_if(picture + 1, pictures.end(), [](const ComingPicture &other) {
                return other.problem.isEmpty() && other.isTaken;
            });
            skipsAll = !std::exchange(hasSkipped, true) && others > 0 &&
                       m_talk.ask(tr("Name Is Taken"),
                                  tr("Skip the other pictures whose names are taken, too (%1)?").arg(others));
        }
        if (picture->isTaken && picture->problem.isEmpty())
            picture->problem = picture->isThere ? tr("its ID is taken") : tr("its name is taken");
        if (picture->problem.isEmpty())
            intake.claim(*picture);
    }
}

// False where the person skips it.
bool PictureDrops::askForName(const PictureIntake &intake, ComingPicture &picture)
{
    const QString what =
        picture.isThere
            ? tr("There is already an image with the ID \"%1\".\n\nAnother ID for it (Cancel skips it):")
            : tr("There is already a picture or an image called \"%1\".\n\nAnother name for the new "
                 "one (Cancel skips it):");
    while (picture.isTaken || !picture.problem.isEmpty()) {
        const QString name = picture.isThere ? picture.id : picture.name;
        const QString prompt =
            picture.problem.isEmpty()
                ? what.arg(shown(name))
                : tr("\"%1\": %2.\n\nAnother name (Cancel skips it):").arg(shown(name), picture.problem);
        const std::optional<QString> next =
            m_talk.input(tr("Name Is Taken"), prompt, intake.freeName(picture));
        if (!next) {
            picture.isTaken = true;
            picture.problem.clear();
            return false;
        }
        intake.rename(picture, *next);
    }
    return true;
}

// Rows come at the end and at once: one step that can be undone, with what is whole.
void PictureDrops::bring(const PictureIntake &intake, QList<ComingPicture> &pictures)
{
    QList<ListRows::Row> rows;
    bool isCancelled = false;
    try {
        m_talk.runLong(tr("Copying the pictures"), [&](const Progress &progress) {
            for (qsizetype i = 0; i < pictures.size(); ++i) {
                quillmere::tell(progress, i, pictures.size());
                if (!pictures[i].problem.isEmpty())
                    continue;
                if (const auto row = intake.bring(pictures[i]))
                    rows.append(*row);
            }
        });
    } catch (const Cancelled &) {
        isCancelled = true;
    }
    for (const ListRows::Row &row : std::as_const(rows))
        m_images.rows.add(row.text, row.subItems);
    if (!rows.isEmpty()) {
        const int last = m_images.rows.count() - 1;
        m_list.setCurrentIndex(m_images.rows.index(last, 0));
        emit m_list.rowClicked(last); // shows it below
        m_list.activateWindow();      // Ctrl+Z is for who has dropped them
        m_list.setFocus();
        emit changed();
    }
    tell(pictures, rows.size(), isCancelled);
}

void PictureDrops::tell(const QList<ComingPicture> &pictures, qsizetype added, bool isCancelled)
{
    const QString sum =
        added == 1 ? tr("1 image added. \"Save\" in the Image menu writes the catalogue.")
                   : tr("%1 images added. \"Save\" in the Image menu writes the catalogue.").arg(added);
    if (isCancelled)
        m_talk.say(tr("Cancelled.") + u' ' + sum);
    else if (added > 0)
        m_talk.say(sum);
    QStringList lines;
    qsizetype more = 0;
    for (const ComingPicture &picture : pictures) {
        if (picture.problem.isEmpty())
            continue;
        if (lines.size() < kMostTold)
            lines.append(tr("%1: %2.").arg(shown(picture.source.isEmpty() ? picture.name : picture.source),
                                           picture.problem));
        else
            ++more;
    }
    if (more > 0)
        lines.append(tr("... and %1 more.").arg(more));
    if (!lines.isEmpty())
        m_talk.tell(tr("Not Added"), lines.join(u'\n'), Talk::Icon::Information);
}

void PictureDrops::mnuImgReplace_Click()
{
    const int row = m_list.selectedRow();
    if (row < 0) {
        m_talk.say(tr("Select an image in the list of the Image tab first."));
        return;
    }
    const QString path = m_images.rows.text(row);
    const std::optional<QString> source = m_talk.chooseFile(
        Prompts::FileFor::Reading, tr("Replace Picture"), folderOf(path).toString(),
        tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp *.webp *.ico *.PNG *.JPG *.JPEG *.GIF *.BMP)"));
    if (!source)
        return;
    replacePicture(path, *source, m_images.document.theme(), m_files, whyNoPicture);
    m_talk.say(tr("%1 replaced; the old picture is backed up.").arg(fileNameOf(path)));
    emit m_list.rowClicked(row); // shows it
    emit changed();
}

} // namespace quillmere
