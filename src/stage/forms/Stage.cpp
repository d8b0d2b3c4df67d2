#include "stage/forms/Stage.h"

#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/BlockPlaces.h"
#include "stage/RectChanges.h"
#include "theme/forms/LiveIndex.h"
#include "widgets/forms/SourceTab.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {
constexpr int kLarge = 300'000; // units of a text whose outline takes longer than a frame
constexpr int kPainting = 40;   // ms from a page that is written to one that is on the screen
} // namespace

Stage::Stage(SourceTab &tab, PreviewFrame &frame, LiveIndex &index, QObject *parent)
    : QObject(parent), m_tab(tab), m_frame(frame), m_index(index)
{
    connect(&tab, &SourceTab::pageReady, this, &Stage::onPageReady);
    connect(tab.txtSnippet, &SourceBox::changed, this, &Stage::onTextChanged);
    connect(frame.wb, &WebBrowser::written, this, &Stage::onWritten);
    connect(&index, &LiveIndex::outlined, this, &Stage::onOutlined);
    connect(frame.wb, &WebBrowser::failed, this, [this] { m_drawing = false; });
    m_painted.setSingleShot(true);
    m_painted.setInterval(kPainting);
    connect(&m_painted, &QTimer::timeout, this, &Stage::askForSelected);
}

const Outline &Stage::outline() const
{
    return m_index.outline();
}

qint64 Stage::revision() const
{
    return m_tab.txtSnippet->revision();
}

const QList<int> &Stage::selection()
{
    followText();
    return m_selection;
}

void Stage::select(const QList<int> &blocks, By by)
{
    QList<int> next;
    const int count = int(outline().blocks().size());
    for (const int block : blocks) {
        if (block >= 0 && block < count && !next.contains(block))
            next.append(block);
    }
    followText();
    if (next == m_selection)
        return;
    take(next);
    emit selectionChanged(by);
}

// The rows of an older text are no rows of this one.
void Stage::followText()
{
    if (m_selection.isEmpty())
        return;
    const bool isSameText = m_document == m_tab.txtSnippet->document();
    const QList<int> now = isSameText ? m_followed.rows(outline()) : QList<int>();
    if (now == m_selection)
        return;
    take(now);
    emit selectionChanged(By::Text);
}

void Stage::take(const QList<int> &blocks)
{
    m_selection = blocks;
    m_followed.set(blocks, outline());
    m_document = m_tab.txtSnippet->document();
}

bool Stage::isOutlineSlow() const
{
    return m_tab.txtSnippet->document()->characterCount() > kLarge && !m_index.isOutlined();
}

bool Stage::isOutlineLate() const
{
    return isOutlineSlow() && m_index.isOutlineComing();
}

void Stage::onOutlined()
{
    askForSelected();
    emit outlined();
}

void Stage::askForSelected()
{
    if (!m_trying && !isOutlineSlow() && (m_wanted || !selection().isEmpty()))
        askPlaces();
}

const QList<Place> *Stage::places()
{
    if (m_placesOf == revision() && !m_trying)
        return &m_places;
    if (!m_trying && havePlacesOfText())
        return &m_places; // who waits is told later all the same
    m_wanted = true;
    askPlaces();
    return nullptr;
}

std::optional<Place> Stage::placeOf(int block)
{
    const QList<Place> *known = places();
    if (!known)
        return {};
    const auto found = std::lower_bound(known->begin(), known->end(), block,
                                        [](const Place &place, int row) { return place.block < row; });
    return found != known->end() && found->block == block ? std::optional(*found) : std::nullopt;
}

void Stage::askPlaces()
{
    m_painted.stop();
    if (m_asked || !m_pageThere || m_pageOf != revision())
        return;
    if (havePlacesOfText()) {
        tellPlaces();
        return;
    }
    m_asked = true;
    m_frame.wb->findPlaces([self = QPointer(this), of = m_pageOf](const QList<PagePlace> &divs) {
        if (!self)
            return;
        self->m_asked = false;
        if (of != self->m_pageOf || of != self->revision() || !self->m_pageThere)
            return; // the page that came in between asks again
        self->m_places = placesOfBlocks(self->outline(), divs);
        self->m_placesOf = of;
        self->tellPlaces();
    });
}

bool Stage::havePlacesOfText()
{
    if (!m_known || !m_pageThere || m_pageOf != revision())
        return false;
    std::optional<QList<Place>> known = m_known(outline());
    if (!known)
        return false;
    m_places = std::move(*known);
    m_placesOf = m_pageOf;
    return true;
}

void Stage::tellPlaces()
{
    m_wanted = false;
    emit placesChanged();
}

bool Stage::write(const QList<TextChange> &changes, qint64 revision, const QList<int> &selected,
                  SourceBox::Step step)
{
    if (revision != this->revision())
        return false;
    const QList<int> next = selected; // it may be the present selection itself
    if (changes.isEmpty()) {
        endTrying();
    } else {
        SourceBox &source = *m_tab.txtSnippet;
        source.rewrite(withChanges(source.text(), changes), SourceBox::Keyboard::Stays, step);
        // The rows before say nothing of those after.
        if (!std::exchange(m_selection, {}).isEmpty() && next.isEmpty())
            emit selectionChanged(By::Picture);
    }
    select(next, By::Picture);
    return true;
}

bool Stage::tryOut(const QList<BlockBox> &boxes, qint64 revision)
{
    if (revision != this->revision())
        return false;
    m_trying = true;
    m_next = boxes;
    if (!m_drawing)
        drawNext();
    return true;
}

void Stage::drawNext()
{
    if (!m_next)
        return;
    const QList<BlockBox> boxes = *std::exchange(m_next, {});
    const QList<TextChange> changes = rectChanges(outline(), boxes);
    if (m_way == Way::Unknown)
        m_way = beginSteps(boxes) ? Way::Steps : Way::Pages;
    m_drawing = true;
    if (m_way == Way::Steps && step(changes))
        return;
    m_way = Way::Pages; // what has come in between has been written over what the steps go on from
    m_tab.tryOut(withChanges(outline().text(), changes));
}

// The page is drawn once with marks for all the numbers that may change.
bool Stage::beginSteps(const QList<BlockBox> &boxes)
{
    const QString &text = outline().text();
    if (!m_pageThere || m_pageOf != revision() || m_frame.wb->isBusy() || !PageForm::isFree(text))
        return false;
    m_numbers = rectNumbers(outline(), boxes);
    QList<TextChange> marks;
    for (const Range number : std::as_const(m_numbers))
        marks.append({number.start, number.size(), PageForm::mark(marks.size())});
    const std::optional<QStringList> values = textsAfter(text, m_numbers, {});
    const QString page = m_tab.triedPage(withChanges(text, marks));
    return !page.isEmpty() && values && m_frame.wb->beginSteps(page, *values);
}

bool Stage::step(const QList<TextChange> &changes)
{
    const std::optional<QStringList> values = textsAfter(outline().text(), m_numbers, changes);
    if (!values || !m_frame.wb->step(*values))
        return false;
    pageGoes(-1);
    return true;
}

void Stage::endTrying()
{
    if (!std::exchange(m_trying, false))
        return;
    m_next.reset();
    m_way = Way::Unknown;
    m_tab.tryOut(m_tab.txtSnippet->text());
}

void Stage::onPageReady()
{
    pageGoes(m_tab.pageRevision());
}

void Stage::pageGoes(qint64 revision)
{
    m_pageOf = revision;
    m_pageThere = false;
    m_placesOf = -1;
}

void Stage::onWritten()
{
    m_pageThere = true;
    m_drawing = false;
    if (m_trying) {
        drawNext();
        return;
    }
    m_painted.start();
}

// The page of the new text is drawn by whoever draws pages.
void Stage::onTextChanged()
{
    m_trying = m_drawing = false;
    m_next.reset();
    m_way = Way::Unknown;
    emit textChanged();
}

} // namespace quillmere
