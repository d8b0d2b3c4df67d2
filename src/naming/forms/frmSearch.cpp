#include "naming/forms/frmSearch.h"

#include "asking/Talk.h"
#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PageScroll.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "naming/forms/PlaceRows.h"
#include "theme/forms/LiveIndex.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {
constexpr QSize kFirstSize{820, 420}; // pixels
constexpr int kPercent = 100;
} // namespace

frmSearch::frmSearch(LiveIndex &index, std::function<bool(const ThemeEdit &)> change, Talk &talk,
                     QWidget &owner)
    : ModelessDialog(QStringLiteral("frmSearch"), owner), m_index(index), m_change(std::move(change)),
      m_talk(talk), m_rows({tr("Window"), tr("Line"), tr("Text")}, ListRows::Checks::Yes),
      txtSearch(named(new QLineEdit, "txtSearch", tr("Text to search for"))),
      chkSearchCase(named(new QCheckBox(tr("Match &case")), "chkSearchCase", tr("Match letter case"))),
      cbSearchIn(named(new QComboBox, "cbSearchIn", tr("Where to search"))),
      cmdSearch(named(new QPushButton(tr("&Search")), "cmdSearch", tr("Search"))),
      barSearch(named(new QProgressBar, "barSearch", tr("Progress of the search"))),
      cmdSearchStop(named(new QPushButton(tr("S&top")), "cmdSearchStop", tr("Stop searching"))),
      lblSearch(named(new QLabel, "lblSearch", tr("Result of the search"))),
      lvUses(new ListView(QStringLiteral("lvUses"), tr("Places"), m_rows)),
      txtSearchReplace(named(new QLineEdit, "txtSearchReplace", tr("Replacement"))),
      cmdSearchAll(named(new QPushButton(tr("Tick &All")), "cmdSearchAll", tr("Tick every place"))),
      cmdSearchNone(named(new QPushButton(tr("Tick &None")), "cmdSearchNone", tr("Untick every place"))),
      cmdSearchReplace(
          named(new QPushButton(tr("&Replace")), "cmdSearchReplace", tr("Replace in the ticked places")))
{
    setWindowTitle(tr("Search"));
    for (QLineEdit *box : {txtSearch, txtSearchReplace}) {
        box->setMaxLength(std::numeric_limits<int>::max());
        box->setClearButtonEnabled(true);
    }
    lblSearch->setTextFormat(Qt::PlainText);
    lblSearch->setWordWrap(true);
    lvUses->setColumnShares({5, 1, 9});
    lvUses->setTextElideMode(Qt::ElideRight);
    markPlaces(*lvUses, m_found);
    lvUses->setOpenCaption(tr("Go There"));
    lvUses->setToolTip(tr("Double-click a place, or press Enter, to go there."));
    connect(lvUses, &ListView::rowOpened, this, [this](int row) {
        const FoundPlaces found = m_found; // what is shown may change on the way
        emit placeChosen(found, row, m_search);
    });
    connect(&index, &LiveIndex::changed, this, &frmSearch::lookAgain);
    connect(&m_rows, &ListRows::checkChanged, this, &frmSearch::showTicked);
    connect(&m_rows, &ListRows::edited, this, &frmSearch::showTicked); // ticks that are undone
    m_history.addTo(*lvUses);
    giveTips();

    auto *column = new QVBoxLayout(this);
    column->addLayout(makeQuestion());
    column->addLayout(makeProgress());
    column->addWidget(lvUses, 1);
    column->addLayout(makeReplacement());
    m_worker.setMaxThreadCount(1);
    forget();
    scrollWhereSmall(*this);
    resize(kFirstSize);
}

void frmSearch::giveTips()
{
    setEmptyHint(*lvUses,
                 tr("Every place that contains the text is listed here. Type it above and press Enter."));
    txtSearch->setToolTip(tr("The text to search for, in the source of the windows."));
    chkSearchCase->setToolTip(tr("Finds only texts in the same letter case."));
    cbSearchIn->setToolTip(tr("Searches all windows of the theme, or the open one."));
    cmdSearch->setToolTip(tr("Searches, and lists what is found."));
    cmdSearchStop->setToolTip(tr("Stops searching. What is found so far stays."));
    cmdSearchAll->setToolTip(tr("Ticks every place, to be replaced."));
    cmdSearchNone->setToolTip(tr("Ticks no place."));
    txtSearchReplace->setToolTip(tr("The text to put in place of what was found."));
    cmdSearchReplace->setToolTip(tr("Replaces the text in the ticked places."));
}

frmSearch::~frmSearch()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

QLayout *frmSearch::makeQuestion()
{
    cbSearchIn->addItems({tr("All windows"), tr("Open window")});
    cmdSearch->setDefault(true);
    connect(cmdSearch, &QPushButton::clicked, this, &frmSearch::cmdSearch_Click);
    auto *label = new QLabel(tr("&Find:"));
    label->setBuddy(txtSearch);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(txtSearch, 1);
    line->addWidget(chkSearchCase);
    line->addWidget(cbSearchIn);
    line->addWidget(cmdSearch);
    return line;
}

QLayout *frmSearch::makeProgress()
{
    barSearch->setRange(0, kPercent);
    barSearch->setTextVisible(false);
    barSearch->setMaximumHeight(cmdSearchStop->sizeHint().height() / 2);
    cmdSearchStop->setAutoDefault(false);
    connect(cmdSearchStop, &QPushButton::clicked, this, &frmSearch::cmdSearchStop_Click);
    auto *line = new QHBoxLayout;
    line->addWidget(lblSearch, 2);
    line->addWidget(barSearch, 1);
    line->addWidget(cmdSearchStop);
    return line;
}

QLayout *frmSearch::makeReplacement()
{
    auto *label = new QLabel(tr("Replace &with:"));
    label->setBuddy(txtSearchReplace);
    auto *line = new QHBoxLayout;
    line->addWidget(cmdSearchAll);
    line->addWidget(cmdSearchNone);
    line->addWidget(label);
    line->addWidget(txtSearchReplace, 1);
    line->addWidget(cmdSearchReplace);
    for (QPushButton *button : {cmdSearchAll, cmdSearchNone, cmdSearchReplace})
        button->setAutoDefault(false);
    connect(cmdSearchAll, &QPushButton::clicked, this, [this] { tickAll(true); });
    connect(cmdSearchNone, &QPushButton::clicked, this, [this] { tickAll(false); });
    connect(cmdSearchReplace, &QPushButton::clicked, this,
            [this] { m_talk.run([this] { cmdSearchReplace_Click(); }); });
    return line;
}

void frmSearch::openFor(const QString &text)
{
    if (!text.isEmpty())
        txtSearch->setText(text);
    txtSearch->selectAll();
    txtSearch->setFocus();
    present(Keyboard::Takes);
    lookAgain(); // nothing was kept up to date while it was closed
}

void frmSearch::forget()
{
    stop();
    finish(FoundPlaces());
    m_isListed = false;
    lblSearch->setText(tr("Type a text and press Enter."));
}

TextSearch frmSearch::asked() const
{
    TextSearch search = {txtSearch->text(), chkSearchCase->isChecked()};
    if (cbSearchIn->currentIndex() == 1)
        search.file = m_index.openFile();
    return search;
}

void frmSearch::cmdSearch_Click()
{
    const TextSearch search = asked();
    const ThemeSources sources = m_index.sources();
    if (search.text.isEmpty() || (cbSearchIn->currentIndex() == 1 && search.file.isEmpty()) ||
        sources.folder.isEmpty()) {
        lblSearch->setText(search.text.isEmpty()      ? tr("Type a text and press Enter.")
                           : sources.folder.isEmpty() ? tr("Open a theme first.")
                                                      : tr("Open a window first."));
        return;
    }
    m_search = search;
    m_found = {};
    m_rows.assign({});
    barSearch->setValue(0);
    barSearch->show();
    cmdSearchStop->show();
    lblSearch->setText(tr("Searching..."));
    start(true);
}

void frmSearch::start(bool isFirst)
{
    m_stop.request_stop();
    m_stop = std::stop_source();
    m_openThen = m_index.openFile();
    m_isSearching = true;
    m_again = false;
    const int run = ++m_run;
    const auto tellDone = [this, run](int percent) {
        QMetaObject::invokeMethod(this, [this, run, percent] {
            if (run == m_run)
                barSearch->setValue(percent);
        });
    };
    m_worker.start([this, run, isFirst, tellDone, search = m_search, sources = m_index.sources(),
                    index = m_index.sharedIndex(), stop = m_stop.get_token()] {
        int shown = 0;
        const auto progress = [&](qsizetype done, qsizetype all) {
            const int percent = int(done * kPercent / std::max<qsizetype>(all, 1));
            if (std::exchange(shown, percent) != percent && isFirst)
                tellDone(percent);
        };
        // A theme that has only just been opened has no index yet.
        const auto own = index ? std::nullopt : ThemeIndex::build(sources, stop);
        const ThemeIndex *files = index ? index.get() : own ? &*own : nullptr;
        auto found = files ? searchTexts(search, *files, sources, stop, progress) : std::nullopt;
        QMetaObject::invokeMethod(this, [this, run, isFirst, found = std::move(found)] {
            if (run != m_run)
                return;
            m_isSearching = false;
            if (isFirst)
                finish(found);
            else
                renew(found);
        });
    });
}

void frmSearch::cmdSearchStop_Click()
{
    stop();
    finish(std::nullopt);
}

void frmSearch::stop()
{
    m_stop.request_stop();
    ++m_run;
    m_isSearching = m_isListed = false;
}

void frmSearch::finish(std::optional<FoundPlaces> found)
{
    barSearch->hide();
    cmdSearchStop->hide();
    const bool isStopped = !found;
    m_isListed = found.has_value();
    m_found = std::move(found).value_or(FoundPlaces());
    showFound();
    if (isStopped)
        lblSearch->setText(tr("Stopped."));
    else if (m_again)
        lookAgain();
}

// After an edit.
void frmSearch::lookAgain()
{
    m_again = m_isSearching;
    if (isVisible() && m_isListed && !m_isSearching && m_index.index())
        start(false);
}

void frmSearch::renew(const std::optional<FoundPlaces> &found)
{
    if (!found)
        return;
    renewRows(*lvUses, m_rows, m_found, *found, m_index.folder());
    m_found = *found;
    say();
    showTicked();
    if (m_again)
        lookAgain();
}

void frmSearch::showFound()
{
    m_rows.assign(rowsOf(m_found, m_index.folder()));
    say();
    if (!m_rows.isEmpty() && isActiveWindow()) {
        lvUses->setCurrentIndex(m_rows.index(0, 0));
        lvUses->setFocus();
    }
    showTicked();
}

void frmSearch::say()
{
    const qsizetype listed = m_found.places.size();
    if (listed == 0)
        lblSearch->setText(tr("Nothing found."));
    else if (m_found.more > 0)
        lblSearch->setText(tr("%1 places. Only the first %2 are listed and can be replaced.")
                               .arg(listed + m_found.more)
                               .arg(listed));
    else
        lblSearch->setText(placesInFiles(m_found) + u'.');
}

void frmSearch::showTicked()
{
    const auto &rows = m_rows.rows();
    cmdSearchReplace->setEnabled(
        std::any_of(rows.begin(), rows.end(), [](const ListRows::Row &row) { return row.checked; }));
    cmdSearchAll->setEnabled(!rows.isEmpty());
    cmdSearchNone->setEnabled(!rows.isEmpty());
}

void frmSearch::tickAll(bool ticked)
{
    QList<ListRows::Row> rows = m_rows.rows();
    for (ListRows::Row &row : rows)
        row.checked = ticked;
    m_rows.edit(std::move(rows));
    showTicked();
}

bool frmSearch::renewPlaces()
{
    const ThemeSources sources = m_index.sources();
    for (const QString &file : {m_openThen, m_index.openFile()}) {
        const auto mark = m_found.marks.constFind(file);
        if (mark == m_found.marks.constEnd())
            continue;
        const auto text = textOf(sources, {file, findFile(file)});
        if (text && ThemeEdit::markOf(*text) != *mark &&
            !m_found.renew(file, placesIn(m_search, file, *text)))
            return false;
    }
    return true;
}

void frmSearch::cmdSearchReplace_Click()
{
    if (!renewPlaces())
        throw RunTimeError(tr("A window has changed since the search. Search again, then replace."));
    QList<bool> isTaken;
    for (const ListRows::Row &row : m_rows.rows())
        isTaken.append(row.checked);
    const ThemeEdit edit = editOf(m_found, isTaken, txtSearchReplace->text());
    const qsizetype files = edit.paths().size(), places = isTaken.count(true);
    if (!m_change(edit))
        return;
    stop();
    m_found = {};
    m_rows.assign({});
    showTicked();
    lblSearch->setText(
        tr("Replaced %1 in %2.")
            .arg(counted(places, tr("place"), tr("places")), counted(files, tr("file"), tr("files"))));
}

} // namespace quillmere
