#include "gallery/forms/frmChanges.h"

#include "browser/forms/PageCamera.h"
#include "browser/forms/PictureSizes.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/Tips.h"
#include "gallery/forms/DrawnDifference.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSplitter>

namespace quillmere {

namespace {

constexpr QSize kFirstSize{1160, 620}; // pixels
constexpr int kGap = 8;                // pixels between two pictures
constexpr int kListWidth = 260;        // pixels

constexpr Tip kTips[] = {
    {"lvChanges", "The changed windows, and in how many pixels each differs."},
    {"optSideBySide", "Shows the pictures before and after beside each other."},
    {"optBlend", "Lays one picture over the other."},
    {"optDifference", "Marks the pixels that differ."},
    {"sldBlend", "Fades from the picture before to the one after."},
    {"cmdTakeBack", "Puts the windows without a tick back as they were before."},
    {"cmdChangesClose", "Closes this dialog. The changes stay."},
};

enum View { SideBySide, Blend, Difference };

QString counted(qint64 pixels)
{
    return pixels == 0   ? QObject::tr("Both are the same.")
           : pixels == 1 ? QObject::tr("1 pixel differs.")
                         : QObject::tr("%L1 pixels differ.").arg(pixels);
}

} // namespace

// The two pictures, scaled to the room.
class ChangesPicture : public QWidget
{
public:
    ChangesPicture()
    {
        named(this, "changesPicture", QObject::tr("Before and after"));
        setMinimumSize(320, 180);
    }
    void show(const QImage &before, const QImage &after, const QImage &difference)
    {
        m_before = before;
        m_after = after;
        m_marked = difference;
        update();
    }
    // In place of pictures.
    void say(const QString &text)
    {
        m_text = text;
        show({}, {}, {});
    }
    void setView(View view)
    {
        m_view = view;
        update();
    }
    void setBlend(int percent)
    {
        m_blend = percent;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().mid());
        if (m_before.isNull() || m_after.isNull()) {
            painter.drawText(rect(), Qt::AlignCenter, m_text);
            return;
        }
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (m_view == SideBySide) {
            const bool isWide = width() > height() * 2;
            const int half = ((isWide ? width() : height()) - kGap) / 2;
            const QRect first(QPoint(), isWide ? QSize(half, height()) : QSize(width(), half));
            drawUnder(painter, QObject::tr("Before"), m_before, first);
            drawUnder(painter, QObject::tr("After"), m_after,
                      first.translated(isWide ? half + kGap : 0, isWide ? 0 : half + kGap));
        } else if (m_view == Blend) {
            draw(painter, m_before, rect());
            painter.setOpacity(m_blend / 100.);
            draw(painter, m_after, rect());
        } else {
            draw(painter, m_marked, rect());
        }
    }

private:
    // Where it stood.
    static QRect draw(QPainter &painter, const QImage &picture, const QRect &room)
    {
        QRect place(QPoint(), picture.size().scaled(room.size(), Qt::KeepAspectRatio));
        place.moveCenter(room.center());
        painter.drawImage(place, picture);
        return place;
    }
    static void drawUnder(QPainter &painter, const QString &caption, const QImage &picture, const QRect &room)
    {
        const int high = painter.fontMetrics().height();
        const QRect place = draw(painter, picture, room.adjusted(0, high, 0, 0));
        painter.drawText(QPoint(place.left(), place.top() - painter.fontMetrics().descent()), caption);
    }

    QImage m_before, m_after, m_marked;
    QString m_text;
    View m_view = SideBySide;
    int m_blend = 50;
};

frmChanges::frmChanges(const QList<ChangedWindow> &windows, const ChangesTheme &theme,
                       std::function<void(const QList<ChangedWindow> &)> takeBack, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmChanges"), owner), m_windows(windows), m_theme(theme),
      m_takeBack(std::move(takeBack)),
      m_rows({tr("Window"), tr("Pixels")}, m_takeBack ? ListRows::Checks::Yes : ListRows::Checks::No),
      lvChanges(new ListView(QStringLiteral("lvChanges"), tr("Windows that were changed"), m_rows)),
      m_picture(new ChangesPicture), m_view(new QButtonGroup(this)),
      sldBlend(named(new QSlider(Qt::Horizontal), "sldBlend", tr("How much of the picture after is seen"))),
      lblChanges(named(new QLabel, "lblChanges", tr("How much differs"))),
      cmdTakeBack(named(new QPushButton(tr("&Take Back Unticked")), "cmdTakeBack",
                        tr("Take the change back in the windows without a tick"))),
      m_isCounted(windows.size(), false),
      m_camera(std::make_unique<PageCamera>(theme.folder, theme.screen, PageCamera::Mark::Below))
{
    setWindowTitle(tr("Changes"));
    const auto sizes = std::make_shared<PictureSizes>(theme.folder);
    for (ReceiverParts *parts : {&m_theme.before, &m_theme.after})
        parts->theme.sizeOf = [sizes](const QString &path) { return sizes->of(path); };
    m_camera->setFonts(m_theme.after.fonts);
    QList<ListRows::Row> rows;
    for (const ChangedWindow &window : m_windows)
        rows.append({window.name, {QString()}, true});
    m_rows.assign(rows);

    auto *columns = new QHBoxLayout;
    columns->addLayout(makeList());
    columns->addLayout(makePicture(), 1);
    auto *all = new QVBoxLayout(this);
    all->addLayout(columns, 1);
    all->addLayout(makeButtons());
    giveTips(*this, kTips);
    resize(kFirstSize);
    connect(lvChanges->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmChanges::showRow);
    connect(&m_rows, &ListRows::checkChanged, this, &frmChanges::enable);
    connect(&m_rows, &ListRows::edited, this, &frmChanges::enable); // ticks that are undone
    m_history.addTo(*lvChanges);
    lvChanges->setCurrentIndex(m_rows.index(0, 0));
    enable();
}

frmChanges::~frmChanges() = default;

QLayout *frmChanges::makeList()
{
    lvChanges->setColumnShares({3, 1});
    lvChanges->setFixedWidth(kListWidth);
    auto *column = new QVBoxLayout;
    column->addWidget(lvChanges);
    return column;
}

QLayout *frmChanges::makePicture()
{
    auto *line = new QHBoxLayout;
    const std::pair<const char *, QString> views[] = {{"optSideBySide", tr("&Side by Side")},
                                                      {"optBlend", tr("&Blend")},
                                                      {"optDifference", tr("&Difference")}};
    for (const auto &[name, caption] : views) {
        auto *button = named(new QRadioButton(caption), name, QString(caption).remove(u'&'));
        m_view->addButton(button, int(m_view->buttons().size()));
        line->addWidget(button);
    }
    m_view->button(SideBySide)->setChecked(true);
    sldBlend->setRange(0, 100);
    sldBlend->setValue(50);
    auto *blend = new QWidget;
    auto *ends = new QHBoxLayout(blend);
    ends->setContentsMargins(kGap, 0, 0, 0);
    ends->addWidget(new QLabel(tr("Before")));
    ends->addWidget(sldBlend, 1);
    ends->addWidget(new QLabel(tr("After")));
    blend->setEnabled(false);
    line->addWidget(blend, 1);
    connect(m_view, &QButtonGroup::idClicked, this, [this, blend](int view) {
        m_picture->setView(View(view));
        blend->setEnabled(view == Blend);
    });
    connect(sldBlend, &QSlider::valueChanged, this, [this](int percent) { m_picture->setBlend(percent); });
    auto *column = new QVBoxLayout;
    column->addLayout(line);
    column->addWidget(m_picture, 1);
    return column;
}

QLayout *frmChanges::makeButtons()
{
    auto *close = named(new QPushButton(tr("Close")), "cmdChangesClose", tr("Close"));
    close->setDefault(true);
    cmdTakeBack->setAutoDefault(false);
    cmdTakeBack->setVisible(bool(m_takeBack));
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(cmdTakeBack, &QPushButton::clicked, this, &frmChanges::cmdTakeBack_Click);
    auto *line = new QHBoxLayout;
    line->addWidget(lblChanges, 1);
    line->addWidget(cmdTakeBack);
    line->addWidget(close);
    return line;
}

void frmChanges::enable()
{
    bool leavesOut = false;
    for (const ListRows::Row &row : m_rows.rows())
        leavesOut = leavesOut || !row.checked;
    cmdTakeBack->setEnabled(leavesOut);
}

void frmChanges::showRow()
{
    const int row = lvChanges->currentIndex().row();
    if (row < 0 || row == m_shown)
        return;
    m_shown = row;
    m_isShownDrawn = false;
    m_picture->say(tr("Drawing..."));
    lblChanges->setText(tr("Drawing..."));
    m_camera->forget(); // what is seen comes first
    m_drawing = -1;
    drawNext();
}

// The window that is seen, then those whose numbers are not known.
void frmChanges::drawNext()
{
    if (m_drawing >= 0)
        return;
    int row = m_shown;
    if (m_isShownDrawn) {
        row = int(m_isCounted.indexOf(false));
        if (row < 0)
            return;
    }
    m_drawing = row;
    const ChangedWindow &window = m_windows[row];
    ReceiverOptions options;
    options.hiddenBlocks = true; // a window that is hidden at first would be black on both sides
    const auto before = std::make_shared<QImage>();
    m_camera->take(receiverPage(Outline(window.before), m_theme.before.theme, options),
                   [before](const QImage &picture) { *before = picture; });
    m_camera->take(receiverPage(Outline(window.after), m_theme.after.theme, options),
                   [this, row, before](const QImage &picture) { drawn(row, *before, picture); });
}

void frmChanges::drawn(int row, const QImage &before, const QImage &after)
{
    m_drawing = -1;
    m_isCounted[row] = true;
    const bool isThere = !before.isNull() && !after.isNull();
    const DrawnDifference difference = isThere ? differenceOf(before, after) : DrawnDifference();
    m_rows.setSub(row, 1, isThere ? QString::number(difference.pixels) : tr("none"));
    if (row == m_shown) {
        m_isShownDrawn = true;
        if (isThere)
            m_picture->show(before, after, difference.picture);
        else
            m_picture->say(tr("The browser did not draw it."));
        lblChanges->setText(isThere ? counted(difference.pixels) : QString());
    }
    drawNext();
}

void frmChanges::cmdTakeBack_Click()
{
    QList<ChangedWindow> left;
    for (int row = 0; row < m_rows.count(); ++row) {
        if (!m_rows.isChecked(row))
            left.append(m_windows[row]);
    }
    m_takeBack(left);
    close();
}

} // namespace quillmere
